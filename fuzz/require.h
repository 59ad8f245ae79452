// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdlib>

namespace tarvolt {

/// What the fuzzer takes for a finding, when it does not hold.
inline void Require(bool holds) {
  if (!holds) std::abort();
}

}  // namespace tarvolt
