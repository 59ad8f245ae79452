// SPDX-License-Identifier: GPL-3.0-or-later
#include "timebase/time_base.h"

#include <cmath>

namespace tarvolt {
namespace {

/// `value` with as many periods added as bring it to 0 or above.
double LiftedToZero(double value, double period) {
  return value < 0 ? value + period * std::ceil(-value / period) : value;
}

/// Greenwich sidereal time in hours, 0 to 24, at `seconds` of the UT day `day`.
double GreenwichHours(double day, double seconds) {
  const double julianDay = day + 2415018.5;
  const double t = (julianDay - 2451545.0) / 36525;
  double g = 8640184.812866 * t + 0.093104 * t * t - 6.2e-6 * t * t * t;
  g = LiftedToZero(g, 86400.0) + 24110.54841;
  double hours = (kSiderealRate * seconds + g) / 3600.0;
  if (hours > 24) hours -= 24 * std::ceil((hours - 24) / 24);
  return LiftedToZero(hours, 24);
}

}  // namespace

TimeStamp NowPrecise(Clock& clock) {
  return StampOf(clock.LocalNow());
}

TimeStamp CalcTime(Clock& clock, const TimeBase& base) {
  // The sidereal clock is carried on from the start of the run and never computed anew from the date (meant).
  if (base.logLMST) return (NowPrecise(clock) - base.tz / 24 - base.firstStamp) * kSiderealRate + base.startLMST;
  return NowPrecise(clock) + base.utOffset + base.wavChartOffset;
}

TimeStamp CalcTimeNotSidereal(Clock& clock, TimeBase base) {
  base.logLMST = false;
  return CalcTime(clock, base);
}

TimeStamp CalcLMST(TimeStamp ut, double userLng) {
  const double day = WholeDay(ut);
  const double seconds = (ut - day) * 86400.0;
  // West-positive, hence the subtraction. Hours above 24 stay as they are (meant).
  const double hours = LiftedToZero(GreenwichHours(day, seconds) - userLng / 15, 24);
  return day + hours / 24;
}

double DetectTimeZoneHours(Clock& clock) {
  const ZoneInfo zone = clock.Zone();
  switch (zone.state) {
    case ZoneState::Standard:
    case ZoneState::NoDaylightInformation:
      return (0 - zone.biasMinutes - zone.standardBiasMinutes) / 60.0;
    case ZoneState::Daylight:
      return (0 - zone.biasMinutes - zone.daylightBiasMinutes) / 60.0;
    case ZoneState::Unknown:
      break;
  }
  return 0;
}

void WaitForSecondBoundary(Clock& clock) {
  constexpr double kLongestWait =
      2000;  // ms: a clock that is being set under the wait must not hold the start for ever
  const int first = clock.LocalNow().millisecond;
  if (first == 0) return;
  const double begin = clock.MonotonicMilliseconds();
  const auto waiting = [&] { return clock.MonotonicMilliseconds() - begin < kLongestWait; };
  while (clock.LocalNow().millisecond == first && waiting()) {
  }
  while (clock.LocalNow().millisecond > first && waiting()) {
  }
}

}  // namespace tarvolt
