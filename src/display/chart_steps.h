// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "display/strip_chart.h"

namespace tarvolt {

/// The ranges of both axes.
struct ChartRange {
  double xMin = 0;
  double xMax = 1;
  double yMin = 0;
  double yMax = 1;
  bool operator==(const ChartRange&) const = default;
};

ChartRange RangeOf(const StripChart& chart);

/// Puts both axes to a range. Bounds that are not finite leave their axis as it is; the sides of a y range of no height
/// move 0.1 apart, so that a flat chart still has a range.
void SetRange(StripChart& chart, ChartRange range);

/// Widens the x range by `clickInc` / 2 per cent, the left side fixed; DecX narrows it by as much.
void IncX(StripChart& chart, int clickInc);
void DecX(StripChart& chart, int clickInc);

/// The same for the y range about its middle. A range that spans 0 has each side moved by itself, so that a bottom at
/// zero stays there.
void IncY(StripChart& chart, int clickInc);
void DecY(StripChart& chart, int clickInc);

/// Move the ranges by a quarter of their span. The x range is not moved past the first sample or the last.
void ScrollLeft(StripChart& chart);
void ScrollRight(StripChart& chart);
void ScrollUp(StripChart& chart);
void ScrollDown(StripChart& chart);

/// The range of all samples and of the extremes of the channels below `channels`; an axis without data keeps its range.
ChartRange FullRange(const StripChart& chart, int channels);

/// The x range to all samples; with one sample or samples of one time it has no width, which a drawing survives. Does
/// nothing without samples.
void FitX(StripChart& chart);

/// The y range to the extremes of the channels below `channels`. Does nothing without data.
void FitY(StripChart& chart, int channels);

/// With AutoScroll while tracking, shifts the x range so that the newest sample is inside, its width unchanged.
void FollowNewest(StripChart& chart);

/// Index of the first sample at or behind the left edge of the view, and of the last at or before the right edge. When
/// all lie outside the first is the newest one (0 without samples) and the last -1. Found by halving while times rise;
/// where they step back all are walked, and not every sample between the two lies in the view.
std::int32_t FindXaxisMinIndex(const StripChart& chart);
std::int32_t FindXaxisMaxIndex(const StripChart& chart);

/// The same for edges other than those of the view.
std::int32_t FindXaxisMinIndex(const StripChart& chart, double left);
std::int32_t FindXaxisMaxIndex(const StripChart& chart, double right);

/// Index of the sample whose time is nearest to `x`; -1 without samples.
std::int32_t NearestIndex(const StripChart& chart, double x);

}  // namespace tarvolt
