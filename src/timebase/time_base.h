// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/clock.h"
#include "timebase/time_stamp.h"

namespace tarvolt {

/// Sidereal seconds in a solar second.
inline constexpr double kSiderealRate = 1.002737908;

/// What turns the machine's clock into a window's log time.
struct TimeBase {
  double tz = 0;              ///< hours, local time minus UT, positive east
  bool logLMST = false;       ///< stamps are local mean sidereal time
  double utOffset = 0;        ///< days added to the computer's date to get log time
  double wavChartOffset = 0;  ///< days, shift of the clock while a WAV file is charted
  TimeStamp firstStamp = 0;   ///< start of the run in the UT or local base, never sidereal
  TimeStamp startLMST = 0;    ///< sidereal time at firstStamp
};

/// The machine's local time to the millisecond, from one clock reading.
TimeStamp NowPrecise(Clock& clock);

/// The stamp of a sample taken now. With logLMST the sidereal clock runs from the start of the run at a constant
/// rate: (NowPrecise - tz/24 - firstStamp) x 1.002737908 + startLMST. Otherwise NowPrecise + utOffset + wavChartOffset.
/// It is for the caller to see that firstStamp is a UT stamp in a sidereal run.
TimeStamp CalcTime(Clock& clock, const TimeBase& base);

/// CalcTime with logLMST switched off for the call.
TimeStamp CalcTimeNotSidereal(Clock& clock, TimeBase base);

/// Local mean sidereal time at `ut` for an observer at `userLng` degrees west, as the date of `ut` + hours/24.
/// Greenwich mean sidereal time at 0h UT from the polynomial of the IAU 1982 system.
/// Hours above 24 are not reduced after the longitude; the date has no sidereal meaning.
TimeStamp CalcLMST(TimeStamp ut, double userLng);

/// The system's offset from UT in hours, east positive; 0 when the system gives no usable report.
double DetectTimeZoneHours(Clock& clock);

/// Returns at the next transition of the clock's second, at once in its first millisecond. Spins on purpose: the
/// accuracy of the start is the point. Does not yield. Gives up after two seconds, which only a clock being set can
/// bring about.
void WaitForSecondBoundary(Clock& clock);

}  // namespace tarvolt
