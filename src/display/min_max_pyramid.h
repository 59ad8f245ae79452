#pragma once

#include <cstddef>
#include <functional>
#include <vector>

namespace tarvolt {

/// Lowest and highest of some values. `lowest > highest` when there were none; values that are not numbers do not
/// count.
struct MinMax {
  double lowest = 1e300 * 1e10;
  double highest = -1e300 * 1e10;
};

}  // namespace tarvolt
