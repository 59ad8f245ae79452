// SPDX-License-Identifier: GPL-3.0-or-later
#include "timebase/time_text.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tarvolt {
namespace {

TEST(ParseHMS, TakesEightCharactersThatAreATime) {
  EXPECT_EQ(ParseHMS("00:00:00"), 0.0);
  EXPECT_EQ(ParseHMS("12:00:00"), 0.5);
  EXPECT_NEAR(*ParseHMS("23:59:59"), 1 - 1 / 86400.0, 1e-12);
  for (const char* text : {"", "1:00:00", "12:00:000", "12-00-00", "24:00:00", "12:60:00", "12:00:6x", "+1:00:00"}) {
    EXPECT_FALSE(ParseHMS(text)) << text;
  }
}

TEST(FormatElapsedHMS, ShowsTheFractionOfTheDay) {
  EXPECT_EQ(FormatElapsedHMS(40000.5), "12:00:00.000");
  EXPECT_EQ(FormatElapsedHMS(1.2345 / 86400), "00:00:01.235");
  EXPECT_EQ(FormatElapsedHMS(59.9996 / 86400), "00:01:00.000") << "never 60 seconds";
}

TEST(FormatDuration, TakesHoursOfAnyWidth) {
  EXPECT_EQ(FormatDuration(0), "00:00:00");
  EXPECT_EQ(FormatDuration(1.5), "01:30:00");
  EXPECT_EQ(FormatDuration(2 + 59 / 60.0 + 59 / 3600.0), "02:59:59");
  EXPECT_EQ(FormatDuration(12345.25), "12345:15:00");
  EXPECT_EQ(FormatDuration(1 / 3.0), "00:20:00") << "whole minutes do not fall short";
  EXPECT_EQ(FormatDuration(0.99999), "00:59:00") << "minutes are held at 59, not carried";
  EXPECT_EQ(FormatDuration(-1.5), "-01:30:00");
  EXPECT_EQ(FormatDuration(std::nan("")), "NaN");
}

TEST(FormatChartTime, IsTheCursorReadOut) {
  const TimeStamp stamp = StampOf({2010, 1, 2, 3, 4, 5, 999});
  EXPECT_EQ(FormatChartTime(stamp), "Time: 03:04:05  Year: 2010   Month: 01  Day: 02");
  EXPECT_EQ(FormatChartTime(stamp, AxisPicture(true, true)), "03:04:05.999 LMST");
  EXPECT_EQ(FormatChartTime(stamp, AxisPicture(false, false)), "03:04:05");
}

TEST(DateFromFileName, ReadsTheNamesOfDataFiles) {
  const TimeStamp stamp = StampOf({2010, 1, 2, 3, 4, 5, 0});
  for (const char* name : {"100102030405.tvd", "UT100102030405.tvd", "ST100102030405.tvd", "100102030405",
                           "C:\\Data\\North Station\\1001\\UT100102030405.tvd", "/data/9/UT100102030405.tvd",
                           "UT100102030405SessionLog.txt"}) {
    EXPECT_EQ(DateFromFileName(name), stamp) << name;
  }
  EXPECT_EQ(DateFromFileName("290228000000"), StampOf({2029, 2, 28, 0, 0, 0, 0}));
  EXPECT_EQ(DateFromFileName("300228000000"), StampOf({1930, 2, 28, 0, 0, 0, 0}));
  EXPECT_EQ(DateFromFileName("260630240000"), StampOf({2026, 7, 1, 0, 0, 0, 0})) << "hour 24 runs on";
}

TEST(DateFromFileName, RefusesWhatHoldsNone) {
  for (const char* name :
       {"", "UT.tvd", "backup of last night.tvd", "10010203040.tvd", "101302030405", "100132030405", "100102250405",
        "100102036005", "100102030460", "100002030405", "1001-2030405", "folder of long name\\a"}) {
    EXPECT_FALSE(DateFromFileName(name)) << name;
  }
}

TEST(ParseDate, ReadsWhatAPersonTypes) {
  const TimeStamp noon = StampOf({2026, 11, 22, 12, 0, 0, 0});
  EXPECT_EQ(ParseDate("11/22/26 12:00:00"), noon);
  EXPECT_EQ(ParseDate("  11/22/2026   12:00:00 "), noon);
  EXPECT_EQ(ParseDate("2026-11-22 12:00:00"), noon);
  EXPECT_EQ(ParseDate("26-11-22 12:00:00"), noon);
  EXPECT_EQ(ParseDate("11/22/26"), noon - 0.5);
  EXPECT_EQ(ParseDate("2/29/2028"), StampOf({2028, 2, 29, 0, 0, 0, 0}));
  EXPECT_EQ(ParseDate("1/1/30"), StampOf({1930, 1, 1, 0, 0, 0, 0}));
}

TEST(ParseDate, RefusesWhatIsNoMoment) {
  for (const char* text :
       {"", "soon", "12:00:00", "2/29/2026", "13/1/26", "0/1/26", "1/0/26", "1/1/026", "1/1/26 24:00:00",
        "1/1/26 12:00:60", "1/1/26 12:00:00 PM", "1/1/26x", "1/1/99999999999", "-1/1/26", "1/1"}) {
    EXPECT_FALSE(ParseDate(text)) << text;
  }
}

}  // namespace
}  // namespace tarvolt
