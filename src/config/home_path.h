// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace tarvolt {

/// The path that a stored text stands for: one leading backslash means the station's home, and the backslashes of the
/// rest are then separators. Any other text, and any text without a home, stays as it is.
std::string PathFromStored(std::string_view text, const std::string& home);

/// The stored text of a path, relative where it lies under the home, so that a home can be moved.
std::string StoredFromPath(std::string_view path, const std::string& home);

}  // namespace tarvolt
