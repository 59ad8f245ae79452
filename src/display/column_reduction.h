#pragma once

#include <cstdint>
#include <vector>

#include "display/strip_chart.h"

namespace tarvolt {

/// What one column of pixels shows of a channel.
struct PixelColumn {
  int x = 0;                ///< column, 0 at the left edge
  double first = 0;         ///< value of its first sample; may be not a number
  double lowest = 0;        ///< over its samples that are numbers; above `highest` when there is none
  double highest = 0;       ///< as above
  double last = 0;          ///< value of its last sample; may be not a number
  TimeStamp firstTime = 0;  ///< of that first sample
  TimeStamp lastTime = 0;   ///< of that last sample
};

/// The columns of pixels from 0 to `width` - 1 over the times xMin to xMax that hold samples of a channel, from left to
/// right. A sample on the right edge belongs to the last column. Steps grow with `width` and the logarithm of the
/// samples. Empty for a range of no width.
std::vector<PixelColumn> ReduceToColumns(const StripChart& chart, int channel, double xMin, double xMax, int width);

}  // namespace tarvolt
