// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace tarvolt {

/// True for well-formed UTF-8, and so for all plain ASCII.
bool IsUtf8(std::string_view text);

/// The name of a file or folder inside the recorder: single bytes where each of its characters has one, else the UTF-8
/// itself, which leads to the file as well. Nothing becomes a "?".
std::string PathTextFromUtf8(std::string_view utf8);

/// Such a name for a screen, in UTF-8.
std::string Utf8FromPathText(std::string_view path);

/// True when each character has a byte of its own in text that is no path.
bool HasAnsiForm(std::string_view utf8);

}  // namespace tarvolt
