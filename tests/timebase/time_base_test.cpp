#include "timebase/time_base.h"

#include <gtest/gtest.h>

#include <cmath>

#include "steady_clock.h"

namespace tarvolt {
namespace {

constexpr double kSecond = 1.0 / 86400;

/// Greenwich mean sidereal time in hours by the usual linear expression in days from noon of 1 January 2000.
long double LinearGmst(double ut) {
  const long double days = static_cast<long double>(ut) + 2415018.5L - 2451545.0L;
  const long double hours = 18.697374558L + 24.06570982441908L * days;
  return hours - 24 * std::floor(hours / 24);
}

/// The same from the polynomial, in long double and in one expression.
long double PolynomialGmst(double ut) {
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

TEST(CalcLMST, AgreesWithIndependentExpressionsOverTheYears) {
  for (double ut = 15000.123; ut < 70000; ut += 37.377) {
    const double hours = HoursOf(CalcLMST(ut, 0));
    ASSERT_NEAR(SecondsApart(hours, PolynomialGmst(ut)), 0, 0.001) << ut;
    ASSERT_NEAR(SecondsApart(hours, LinearGmst(ut)), 0, 0.3) << ut;
  }
}

TEST(CalcLMST, LongitudeCountsWestward) {
  const TimeStamp ut = StampOf({2026, 11, 22, 20, 0, 0, 0});
  EXPECT_NEAR(SecondsApart(HoursOf(CalcLMST(ut, 90)), LinearGmst(ut) - 6), 0, 0.3);
  EXPECT_NEAR(SecondsApart(HoursOf(CalcLMST(ut, 345)), LinearGmst(ut) + 1), 0, 0.3);
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

TEST(CalcTime, SiderealStampsRunFromTheStartAtTheirOwnRate) {
  const WallTime start{2026, 11, 22, 12, 0, 0, 0};
  TimeBase base;
  base.tz = 1;
  base.logLMST = true;
  base.utOffset = 77;  // plays no part
  base.firstStamp = StampOf(start) - base.tz / 24;
  base.startLMST = CalcLMST(base.firstStamp, 15);
  SteadyClock atStart(start);
  EXPECT_NEAR(CalcTime(atStart, base), base.startLMST, 1e-10);
  SteadyClock anHourOn({2026, 11, 22, 13, 0, 0, 0});
  EXPECT_NEAR(CalcTime(anHourOn, base) - base.startLMST, 3609.8564688 * kSecond, 1e-3 * kSecond);
  EXPECT_NEAR(CalcTimeNotSidereal(anHourOn, base), StampOf({2026, 11, 22, 13, 0, 0, 0}) + 77, 1e-10);
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

TEST(WaitForSecondBoundary, EndsInTheFirstReadingOfANewSecond) {
  SteadyClock clock({2026, 1, 1, 0, 0, 0, 120}, 7);
  WaitForSecondBoundary(clock);
  const WallTime next = clock.LocalNow();
  EXPECT_EQ(next.second, 1);
  EXPECT_LT(next.millisecond, 2 * 7);
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
