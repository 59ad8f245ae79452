// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace tarvolt {

/// Text inside the recorder is single bytes in Windows-1252. These work on such text and never fail.

/// Upper case, with the letters of the upper half of the code page.
std::string Upper(std::string_view text);

/// Lower case, with the letters of the upper half of the code page.
std::string Lower(std::string_view text);
char LowerByte(char c);

/// Without leading and trailing blanks (the blank alone, not tabs or line ends).
std::string Trim(std::string_view text);

/// Cut or padded with blanks on the right to `width` characters.
std::string PadTo(std::string_view text, std::size_t width);

/// Equal when case is not looked at.
bool EqualNoCase(std::string_view a, std::string_view b);

/// `text` with every occurrence of `from` replaced. An empty `from` changes nothing.
std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to);

/// For the edges of the program (screens, JSON): UTF-8 from our bytes, and back with "?" for what has no byte.
std::string Utf8FromAnsi(std::string_view text);
std::string AnsiFromUtf8(std::string_view text);

}  // namespace tarvolt
