// SPDX-License-Identifier: GPL-3.0-or-later
#include "timebase/time_stamp.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <tuple>

namespace tarvolt {

bool operator==(const WallTime& a, const WallTime& b) {
  return std::tie(a.year, a.month, a.day, a.hour, a.minute, a.second, a.millisecond) ==
         std::tie(b.year, b.month, b.day, b.hour, b.minute, b.second, b.millisecond);
}

std::ostream& operator<<(std::ostream& out, const WallTime& fields) {
  return out << FormatDate(StampOf(fields), "yyyy-mm-dd hh:nn:ss.zzz");
}

namespace {

TEST(TimeStamp, EveryDayOfEightThousandYearsHasItsDate) {
  const int lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  double stamp = 2;
  for (int year = 1900; year <= 9999; ++year) {
    const bool leap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
    for (int month = 1; month <= 12; ++month) {
      const int days = lengths[month - 1] + (month == 2 && leap ? 1 : 0);
      for (int day = 1; day <= days; ++day, ++stamp) {
        const DateFields fields{year, month, day, 0, 0, 0, 0};
        ASSERT_EQ(FieldsOf(stamp), fields) << stamp;
        ASSERT_EQ(StampOf(fields), stamp);
      }
    }
  }
}

TEST(TimeStamp, EveryMillisecondComesBack) {
  std::mt19937 random(11);
  for (int i = 0; i < 200000; ++i) {
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    const DateFields fields{1700 + below(8300), 1 + below(12), 1 + below(28), below(24),
                            below(60),          below(60),     below(1000)};
    ASSERT_EQ(FieldsOf(StampOf(fields)), fields);
  }
  EXPECT_EQ(StampOf({1899, 12, 28, 18, 0, 0, 0}), -1.25)
      << "the fraction of a day before the epoch counts down as well";
  const DateFields pastTheSecondsOf32Bits{2038, 1, 19, 3, 14, 8, 1};
  EXPECT_EQ(FieldsOf(StampOf(pastTheSecondsOf32Bits)), pastTheSecondsOf32Bits);
}

TEST(TimeStamp, RoundingCarriesIntoTheNextYear) {
  const double justBeforeMidnight = StampOf({2025, 12, 31, 23, 59, 59, 999}) + 0.6 / 86400000;
  EXPECT_EQ(FieldsOf(justBeforeMidnight), (DateFields{2026, 1, 1, 0, 0, 0, 0}));
}

TEST(TimeStamp, WhatIsNoDateGivesDayZero) {
  const DateFields zero{1899, 12, 30, 0, 0, 0, 0};
  for (const double stamp : {std::nan(""), std::numeric_limits<double>::infinity(), -1e300, 1e18, 2958466.0, -657435.0,
                             2958465.9999999998}) {
    EXPECT_EQ(FieldsOf(stamp), zero) << stamp;
  }
  EXPECT_EQ(FieldsOf(-657434), (DateFields{100, 1, 1, 0, 0, 0, 0}));
}

TEST(FormatDate, FollowsThePicture) {
  const TimeStamp stamp = StampOf({2007, 3, 4, 5, 6, 59, 999});
  EXPECT_EQ(FormatDate(stamp, "YYMMDDHHnnSS"), "070304050659");
  EXPECT_EQ(FileNameFromDate(stamp), "070304050659");
  EXPECT_EQ(FormatDate(stamp, "hh:nn:ss.zzz"), "05:06:59.999");
  EXPECT_EQ(FormatDate(stamp, "Hh:Nn:sS"), "05:06:59") << "cut as a clock shows it";
  EXPECT_EQ(FormatDate(stamp, "MM/DD/YYYY"), "03/04/2007");
  EXPECT_EQ(FormatDate(stamp, "hh:nn:ss' LMST'"), "05:06:59 LMST");
  EXPECT_EQ(FormatDate(stamp, "'day 'dd'"), "day 04");
  EXPECT_EQ(FormatDate(stamp, "h yyy z q"), "h 07y z q");
  EXPECT_EQ(FormatDate(stamp, "hh'unclosed hh"), "05unclosed hh");
}

}  // namespace
}  // namespace tarvolt
