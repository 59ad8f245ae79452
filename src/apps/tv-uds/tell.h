// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace tarvolt::uds {

/// A line on standard error with the program's name in front.
void Tell(const std::string& text);

}  // namespace tarvolt::uds
