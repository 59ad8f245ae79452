// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "display/strip_chart.h"

namespace tarvolt {

/// The mean pace of a chart; both are 0 with two samples or fewer.
struct AverageRate {
  double secondsPerSample = 0;
  double samplesPerSecond = 0;
};

/// The pace of the first `totalSamples` samples of the chart. In a sidereal chart the span of the stamps is multiplied
/// by 1.002737908 to get solar seconds.
AverageRate CalcAvgRate(const StripChart& chart, std::int32_t totalSamples, bool sidereal);

}  // namespace tarvolt
