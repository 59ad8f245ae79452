// SPDX-License-Identifier: GPL-3.0-or-later
#include "timebase/position.h"

#include <gtest/gtest.h>

namespace tarvolt {
namespace {

TEST(ParseLatitude, ReadsTheThreeForms) {
  EXPECT_EQ(ParseLatitude("45.5"), 45.5);
  EXPECT_EQ(ParseLatitude(" -45,25 "), -45.25);
  EXPECT_EQ(ParseLatitude("45:30"), 45.5);
  EXPECT_EQ(ParseLatitude("45:7,5"), 45.125);
  EXPECT_EQ(ParseLatitude("-45:30:36"), -45.51);
  EXPECT_EQ(ParseLatitude("-0:30:00"), -0.5);
  EXPECT_EQ(ParseLatitude(""), 0);
}

TEST(ParseLatitude, TestsTheRangeOfTheFormsWithColonsAlone) {
  EXPECT_EQ(ParseLatitude("90:00:00"), 90);
  EXPECT_EQ(ParseLatitude("90:00:01"), kUnsetPosition);
  EXPECT_EQ(ParseLatitude("-90:01"), kUnsetPosition);
  EXPECT_EQ(ParseLatitude("123"), 123);
  EXPECT_EQ(CheckLatitude("90:00:01"), "");
  EXPECT_EQ(CheckLatitude(" 45:30"), " 45:30");
  EXPECT_EQ(CheckLatitude("-999"), "");
}

TEST(ParseLongitude, ReadsTheThreeForms) {
  EXPECT_EQ(ParseLongitude("+77.5"), 77.5);
  EXPECT_EQ(ParseLongitude("77:03:36"), 77.06);
  EXPECT_EQ(ParseLongitude("-10:30"), 349.5) << "with colons a negative one goes round";
  EXPECT_EQ(ParseLongitude("-10"), -10) << "without it does not";
  EXPECT_EQ(ParseLongitude("360:00"), 360);
  EXPECT_EQ(ParseLongitude("360:01"), kUnsetPosition);
  EXPECT_EQ(ParseLongitude("-361:00"), kUnsetPosition);
  EXPECT_EQ(ParseLongitude("400"), 400);
  EXPECT_EQ(CheckLongitude("360:01"), "");
  EXPECT_EQ(CheckLongitude("77"), "77");
}

TEST(Longitude, IsStoredWestAndShownEitherWay) {
  EXPECT_EQ(LongitudeFromEntry("77:30", true), 77.5);
  EXPECT_EQ(LongitudeFromEntry("77:30", false), 282.5);
  EXPECT_EQ(LongitudeFromEntry("0", false), 0) << "360 becomes 0";
  EXPECT_EQ(LongitudeFromEntry("-10", false), 370) << "not range-tested";
  EXPECT_EQ(LongitudeFromEntry("400:00", false), kUnsetPosition);
  EXPECT_EQ(LongitudeForDisplay(282.5, true), "282:30:00.0 W");
  EXPECT_EQ(LongitudeForDisplay(282.5, false), "77:30:00.0 E");
  EXPECT_EQ(LongitudeForDisplay(kUnsetPosition, false), "unknown");
}

TEST(FormatPosition, KeepsItsBiasUpwards) {
  EXPECT_EQ(FormatLatitude(45.5), "45:30:00.0");
  EXPECT_EQ(FormatLatitude(ParseLatitude("51:53:59.8")), "51:54:-00.2") << "the next whole minute, and back";
  EXPECT_EQ(FormatLongitude(ParseLongitude("123:47:10.1")), "123:47:10.1");
  EXPECT_EQ(FormatLatitude(45 + 59.96 / 3600), "45:01:00.0") << "seconds round up to a minute";
  EXPECT_EQ(FormatLongitude(0.5 + 50.049 / 3600), "0:30:50.0");
  EXPECT_EQ(FormatLongitude(0.0 + 59.9495 / 3600), "0:01:00.0") << "3600.05 where 3600 would give 59.9";
}

TEST(FormatPosition, RollsOverAtTheDegreeAndTheLimit) {
  EXPECT_EQ(FormatLatitude(44.99999), "45:00:00.0");
  EXPECT_EQ(FormatLatitude(-44.99999), "-45:00:00.0");
  EXPECT_EQ(FormatLatitude(89.99999), "0:00:00.0");
  EXPECT_EQ(FormatLatitude(90), "90:00:00.0");
  EXPECT_EQ(FormatLongitude(359.999999), "0:00:00.0");
  EXPECT_EQ(FormatLatitude(-0.5), "0:30:00.0") << "the sign of less than a degree is lost";
}

TEST(FormatPosition, ReadsBackWithinATenthOfASecond) {
  for (double degrees = 1; degrees < 89.9; degrees += 0.01237) {
    ASSERT_NEAR(ParseLatitude(FormatLatitude(degrees)), degrees, 0.14 / 3600) << FormatLatitude(degrees);
    ASSERT_NEAR(ParseLatitude(FormatLatitude(-degrees)), -degrees, 0.14 / 3600) << FormatLatitude(-degrees);
    ASSERT_NEAR(ParseLongitude(FormatLongitude(4 * degrees)), 4 * degrees, 0.14 / 3600) << FormatLongitude(4 * degrees);
  }
}

}  // namespace
}  // namespace tarvolt
