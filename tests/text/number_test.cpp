// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/number.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace tarvolt {
namespace {

TEST(Val, ReadsTheFormsOfSettingsAndTheWire) {
  EXPECT_EQ(Val("12.5"), 12.5);
  EXPECT_EQ(Val("  -.5"), -0.5);
  EXPECT_EQ(Val("+7."), 7);
  EXPECT_EQ(Val("0 40512.25"), 40512.25);
  EXPECT_EQ(Val(" 1\t2 .5"), 12.5);
  EXPECT_EQ(Val("&H20"), 32);
  EXPECT_EQ(Val("&h378"), 888);
  EXPECT_EQ(Val("&HFFFFFF"), 16777215);
  EXPECT_EQ(Val("&HFFFFFFFF"), 4294967295.0);
  EXPECT_EQ(Val("1.5e3"), 1500);
  EXPECT_EQ(Val("1.5D-2"), 0.015);
}

TEST(Val, StopsAtTheFirstBadCharacter) {
  EXPECT_EQ(Val("12abc"), 12);
  EXPECT_EQ(Val("1,5"), 1);
  EXPECT_EQ(Val("1.2.3"), 1.2);
  EXPECT_EQ(Val("3E"), 3);
  EXPECT_EQ(Val("3E+x"), 3);
  EXPECT_EQ(Val("5-3"), 5);
  EXPECT_EQ(Val("&H2G"), 2);
}

TEST(Val, UnreadableTextIsZeroAndNothingIsInfinite) {
  for (const char* text : {"", "   ", "-", ".", "&", "&H", "&O7", "inf", "nan", "x1", "E5", "--1", "1E999", "-1E999"}) {
    EXPECT_EQ(Val(text), 0) << text;
  }
  EXPECT_EQ(Val("&H" + std::string(400, 'F')), 0);
}

TEST(Val, LongsAreRoundedTiesToEvenAndHeld) {
  EXPECT_EQ(ValLong("2.5"), 2);
  EXPECT_EQ(ValLong("3.5"), 4);
  EXPECT_EQ(ValLong("-2.5"), -2);
  EXPECT_EQ(ValLong("9999999999"), std::numeric_limits<std::int32_t>::max());
  EXPECT_EQ(ValLong("-9999999999"), std::numeric_limits<std::int32_t>::min());
}

TEST(Round, IsHeldInsideTheType) {
  EXPECT_EQ(RoundToInt16(0.5), 0);
  EXPECT_EQ(RoundToInt16(1.5), 2);
  EXPECT_EQ(RoundToInt16(32767.5), 32767);
  EXPECT_EQ(RoundToInt16(-40000), -32768);
  EXPECT_EQ(RoundToInt16(std::nan("")), 0);
  EXPECT_EQ(RoundToInt32(-std::numeric_limits<double>::infinity()), std::numeric_limits<std::int32_t>::min());
}

TEST(NumberText, IsPlainInTheRangeOfMeasurements) {
  EXPECT_EQ(NumberText(0.0), "0");
  EXPECT_EQ(NumberText(-0.0), "0");
  EXPECT_EQ(NumberText(12.5), "12.5");
  EXPECT_EQ(NumberText(-0.1), "-0.1");
  EXPECT_EQ(NumberText(100000.0), "100000");
  EXPECT_EQ(NumberText(0.00001), "0.00001");
  EXPECT_EQ(NumberText(0.000001), "1E-06");
  EXPECT_EQ(NumberText(1E+21), "1E+21");
  EXPECT_EQ(NumberText(-1.5E+300), "-1.5E+300");
  EXPECT_EQ(NumberText(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
}

TEST(NumberText, ReadsBackAsTheSameNumber) {
  std::mt19937_64 random(7);
  std::uniform_real_distribution<double> exponent(-300, 300);
  for (int i = 0; i < 20000; ++i) {
    const double value = std::pow(10, exponent(random)) * (i % 2 == 0 ? 1 : -1);
    ASSERT_EQ(Val(NumberText(value)), value) << NumberText(value);
  }
}

TEST(WireNumber, HasOneFixedForm) {
  EXPECT_EQ(WireNumber(0), " 0");
  EXPECT_EQ(WireNumber(3), " 3");
  EXPECT_EQ(WireNumber(-12.5), "-12.5");
  EXPECT_EQ(WireNumber(0.5), " .5");
  EXPECT_EQ(WireNumber(-0.5), "-.5");
  EXPECT_EQ(WireNumber(2147483647), " 2147483647");
  EXPECT_EQ(WireNumber(1.0 / 3), " .333333333333333");
  EXPECT_EQ(WireNumber(0.1 + 0.2), " .3");
  EXPECT_EQ(WireNumber(123456789012345), " 123456789012345");
  EXPECT_EQ(WireNumber(1E+15), " 1E+15");
  EXPECT_EQ(WireNumber(-1.25E-20), "-1.25E-20");
  EXPECT_NEAR(Val(WireNumber(46348.123456789)), 46348.123456789, 1e-9);
}

TEST(FormatNumber, FollowsThePicturesInUse) {
  EXPECT_EQ(FormatNumber(5, "##0.0##"), "5.0");
  EXPECT_EQ(FormatNumber(0.12345, "##0.0##"), "0.123");
  EXPECT_EQ(FormatNumber(12345.6, "##0.0##"), "12345.6");
  EXPECT_EQ(FormatNumber(2, "###.##"), "2.");
  EXPECT_EQ(FormatNumber(0.1, "###.##"), ".1");
  EXPECT_EQ(FormatNumber(7, "00"), "07");
  EXPECT_EQ(FormatNumber(9.996, "00.00"), "10.00");
  EXPECT_EQ(FormatNumber(1234567, "###,###,###,###"), "1,234,567");
  EXPECT_EQ(FormatNumber(999, "###,###"), "999");
  EXPECT_EQ(FormatNumber(12, "0,000"), "0,012");
  EXPECT_EQ(FormatNumber(-0.5, "#0.0"), "-0.5");
  EXPECT_EQ(FormatNumber(1.5, "about 0.00 V"), "about 1.50 V");
}

TEST(FormatNumber, RoundsTheDecimalTextHalfAwayFromZero) {
  EXPECT_EQ(FormatNumber(1.005, "0.00"), "1.01");
  EXPECT_EQ(FormatNumber(-2.5, "0"), "-3");
  EXPECT_EQ(FormatNumber(0.5, "0"), "1");
  EXPECT_EQ(FormatNumber(0.04, "0.0"), "0.0");
  EXPECT_EQ(FormatNumber(-0.04, "0.0"), "0.0");
  EXPECT_EQ(FormatNumber(0.000999, "0.000"), "0.001");
  EXPECT_EQ(FormatNumber(999.95, "0.0"), "1000.0");
}

TEST(FormatNumber, WithstandsAnyPicture) {
  EXPECT_EQ(FormatNumber(5, ""), "");
  EXPECT_EQ(FormatNumber(5, "volts"), "volts");
  EXPECT_EQ(FormatNumber(5.25, "0.0.0"), "5.3.0");
  EXPECT_EQ(FormatNumber(5, ",.,"), ",.,");
  EXPECT_EQ(FormatNumber(1E+308, "0").size(), 309u);
  EXPECT_EQ(FormatNumber(std::nan(""), "0.0"), "NaN");
  EXPECT_EQ(FormatNumber(1, "0." + std::string(1000, '0')).size(), 1002u);
}

}  // namespace
}  // namespace tarvolt
