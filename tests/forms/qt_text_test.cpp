// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/qt_text.h"

#include <gtest/gtest.h>

namespace tarvolt {
namespace {

TEST(QtText, KeepsTheLettersOfTheCodePageAndMarksOthers) {
  const std::string all = "10 \xB5V \x80 \xE9";
  EXPECT_EQ(ToQString(all), QString::fromUtf8("10 \xC2\xB5V \xE2\x82\xAC \xC3\xA9"));
  EXPECT_EQ(FromQString(ToQString(all)), all);
  EXPECT_EQ(FromQString(QString::fromUtf8("\xE2\x98\x89 Sun")), "? Sun");
}

}  // namespace
}  // namespace tarvolt
