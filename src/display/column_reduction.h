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

/// Which samples lie in the columns of pixels from 0 to `width` - 1 over the times xMin to xMax: column x holds those
/// from begins[x] up to, but not including, begins[x + 1]. A sample on the right edge belongs to the last column. The
/// same for all channels of a chart. Steps grow with `width` and the logarithm of the samples. Where a column holds
/// many bins of the pyramid an edge between two of them is moved back to the begin of its bin, by a sixteenth of a
/// column at most: then no sample needs to be read to find the extremes.
struct ColumnEdges {
  std::vector<std::int32_t> begins;  ///< one more than there are columns; empty for a range of no width
};
ColumnEdges FindColumnEdges(const StripChart& chart, double xMin, double xMax, int width);

/// The columns that hold samples of a channel, from left to right. Steps grow with their number. The edges must be
/// those of the chart as it is now.
std::vector<PixelColumn> ReduceToColumns(const StripChart& chart, int channel, const ColumnEdges& edges);

}  // namespace tarvolt
