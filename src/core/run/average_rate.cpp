// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/run/average_rate.h"

#include <algorithm>

#include "timebase/time_base.h"

namespace tarvolt {

AverageRate CalcAvgRate(const StripChart& chart, std::int32_t totalSamples, bool sidereal) {
  AverageRate rate;
  const std::int32_t samples = std::min(totalSamples, chart.Count());
  if (samples <= 2) return rate;
  double span = (chart.GetTime(samples - 1) - chart.GetTime(0)) * 86400;
  if (sidereal) span *= kSiderealRate;
  if (!(span > 0)) return rate;
  rate.secondsPerSample = span / (samples - 1);
  rate.samplesPerSecond = 1 / rate.secondsPerSample;
  return rate;
}

}  // namespace tarvolt
