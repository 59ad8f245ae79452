// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tarvolt {

/// Major, minor and revision of the program, as settings and people see it.
inline constexpr const char* kProgramVersion = TARVOLT_VERSION;

}  // namespace tarvolt
