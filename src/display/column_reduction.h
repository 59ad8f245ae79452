// SPDX-License-Identifier: GPL-3.0-or-later
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

/// Samples that follow one another and lie in one column of pixels.
struct ColumnSpan {
  int x = 0;
  std::int32_t begin = 0;
  std::int32_t end = 0;  ///< one behind the last
};

/// Which samples lie in the columns of pixels from 0 to `width` - 1 over the times xMin to xMax; a sample on the right
/// edge belongs to the last column. The same for all channels of a chart. Empty for a range of no width.
/// While times rise a column has one span, and they go from left to right. Steps grow with `width` and the logarithm of
/// the samples. Where a column holds many bins of the pyramid an edge between two of them is moved back to the begin of
/// its bin, by a sixteenth of a column at most: then no sample needs to be read to find the extremes.
/// Where times step back all stamps are walked. The spans follow the samples, from right to left at each step back;
/// when that makes very many, they are put in the order of the columns.
struct ColumnEdges {
  std::vector<ColumnSpan> spans;
};
ColumnEdges FindColumnEdges(const StripChart& chart, double xMin, double xMax, int width);

/// What the columns show of a channel, in the order of the spans; neighbouring spans of one column are one. Steps grow
/// with their number. The edges must be those of the chart as it is now.
std::vector<PixelColumn> ReduceToColumns(const StripChart& chart, int channel, const ColumnEdges& edges);

}  // namespace tarvolt
