// SPDX-License-Identifier: GPL-3.0-or-later
#include "timebase/time_base.h"

#include <gtest/gtest.h>

#include <cmath>

#include "steady_clock.h"

namespace tarvolt {
namespace {

constexpr double kSecond = 1.0 / 86400;

/// Greenwich mean sidereal time in hours from the polynomial, in long double and in one expression.
long double Gmst(double ut) {
  const long double day = std::floor(ut);
  const long double t = (day - 36526.5L) / 36525;
  const long double seconds = 24110.54841L + 8640184.812866L * t + 0.093104L * t * t - 6.2e-6L * t * t * t +
                              1.002737908L * (static_cast<long double>(ut) - day) * 86400;
  const long double hours = seconds / 3600;
  return hours - 24 * std::floor(hours / 24);
}

double HoursOf(TimeStamp lmst) {
  return (lmst - WholeDay(lmst)) * 24;
}

/// The shorter way round the clock, in seconds.
double SecondsApart(double hours, long double otherHours) {
  const auto apart = static_cast<double>(hours - otherHours);
  return (apart - 24 * std::round(apart / 24)) * 3600;
}

TEST(CalcLMST, AgreesWithPublishedSiderealTimes) {
  const double at0h = HoursOf(CalcLMST(StampOf({1987, 4, 10, 0, 0, 0, 0}), 0));
  EXPECT_NEAR(SecondsApart(at0h, 13 + 10 / 60.0L + 46.3668L / 3600), 0, 0.001);
  const double later = HoursOf(CalcLMST(StampOf({1987, 4, 10, 19, 21, 0, 0}), 0));
  EXPECT_NEAR(SecondsApart(later, 8 + 34 / 60.0L + 57.0896L / 3600), 0, 0.001);
}

TEST(CalcLMST, AgreesWithThePolynomialOverTheYears) {
  for (double ut = 15000.123; ut < 70000; ut += 37.377) {
    ASSERT_NEAR(SecondsApart(HoursOf(CalcLMST(ut, 0)), Gmst(ut)), 0, 0.001) << ut;
  }
}

TEST(CalcLMST, LongitudeCountsWestward) {
  const TimeStamp ut = StampOf({2026, 11, 22, 20, 0, 0, 0});
  EXPECT_NEAR(SecondsApart(HoursOf(CalcLMST(ut, 90)), Gmst(ut) - 6), 0, 0.001);
  EXPECT_NEAR(SecondsApart(HoursOf(CalcLMST(ut, 345)), Gmst(ut) + 1), 0, 0.001);
}

TEST(CalcLMST, TheDateIsThatOfUt) {
  for (int hour = 0; hour < 24; ++hour) {
    const TimeStamp ut = StampOf({2026, 6, 1, hour, 30, 0, 0});
    EXPECT_EQ(WholeDay(CalcLMST(ut, 100)), WholeDay(ut)) << hour;
  }
}

TEST(CalcTime, AddsTheOffsetsOfTheRun) {
  SteadyClock clock({2026, 11, 22, 13, 20, 30, 250});
  TimeBase base;
  EXPECT_EQ(CalcTime(clock, base), StampOf({2026, 11, 22, 13, 20, 30, 250}));
  base.utOffset = -2.0 / 24;
  base.wavChartOffset = -1;
  EXPECT_NEAR(CalcTime(clock, base), StampOf({2026, 11, 21, 11, 20, 30, 250}), 1e-9);
}

TEST(DetectTimeZoneHours, AddsTheCorrectionInForce) {
  SteadyClock clock({2026, 1, 1, 0, 0, 0, 0});
  clock.zone = {ZoneState::Standard, 300, 15, -60};
  EXPECT_EQ(DetectTimeZoneHours(clock), -5.25);
  clock.zone.state = ZoneState::NoDaylightInformation;
  EXPECT_EQ(DetectTimeZoneHours(clock), -5.25);
  clock.zone.state = ZoneState::Daylight;
  EXPECT_EQ(DetectTimeZoneHours(clock), -4);
  clock.zone.state = ZoneState::Unknown;
  EXPECT_EQ(DetectTimeZoneHours(clock), 0);
  clock.zone = {ZoneState::Daylight, -330, 0, 0};
  EXPECT_EQ(DetectTimeZoneHours(clock), 5.5);
}

TEST(WaitForSecondBoundary, DoesNotWaitOnTheBoundaryNorForEver) {
  SteadyClock onTheBoundary({2026, 1, 1, 0, 0, 0, 0}, 7);
  WaitForSecondBoundary(onTheBoundary);
  EXPECT_EQ(onTheBoundary.readings, 1);
  SteadyClock standing({2026, 1, 1, 0, 0, 0, 500});
  WaitForSecondBoundary(standing);
  EXPECT_LT(standing.readings, 1000);
}

}  // namespace
}  // namespace tarvolt
