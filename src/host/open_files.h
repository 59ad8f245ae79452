// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tarvolt {

/// Files and sockets that a program of ours may have open, as far as the system allows. Without asking it is a
/// thousand or so.
inline constexpr std::uint64_t kMostOpenFiles = 65'536;

/// Lets this program have so many open. Called once at its start; the programs that it starts inherit it.
void RaiseOpenFileLimit();

}  // namespace tarvolt
