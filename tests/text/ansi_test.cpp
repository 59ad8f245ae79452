// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/ansi.h"

#include <gtest/gtest.h>

namespace tarvolt {
namespace {

TEST(Ansi, UpperKnowsTheUpperHalfOfTheCodePage) {
  EXPECT_EQ(Upper("abz{`"), "ABZ{`");
  EXPECT_EQ(Upper("\xE4\xF6\xFC\x9A\x9C\x9E\xFF"), "\xC4\xD6\xDC\x8A\x8C\x8E\x9F");
  EXPECT_EQ(Upper("\xDF\xF7\xB5\x83"), "\xDF\xF7\xB5\x83") << "no letter of the page is their capital";
  EXPECT_TRUE(EqualNoCase("Zo\xEB", "ZO\xCB"));
  EXPECT_FALSE(EqualNoCase("ab", "abc"));
}

TEST(Ansi, LowerTakesBackWhatUpperDid) {
  EXPECT_EQ(Lower("AbZ[@_"), "abz[@_");
  EXPECT_EQ(Lower("\xD7\xDF\xDD"), "\xD7\xDF\xFD") << "the times sign is no letter";
  for (int byte = 0; byte < 256; ++byte) {
    const std::string text(1, static_cast<char>(byte));
    if (Upper(text) != text) {
      EXPECT_EQ(Lower(Upper(text)), text) << byte;
    }
  }
}

TEST(Ansi, TrimTakesBlanksAlone) {
  EXPECT_EQ(Trim("  a b  "), "a b");
  EXPECT_EQ(Trim("\ta\r\n"), "\ta\r\n");
  EXPECT_EQ(Trim("   "), "");
}

TEST(Ansi, PadToCutsAndFills) {
  EXPECT_EQ(PadTo("abc", 5), "abc  ");
  EXPECT_EQ(PadTo("abcdef", 5), "abcde");
}

TEST(Ansi, ReplaceAllDoesNotLookAtWhatItPutIn) {
  EXPECT_EQ(ReplaceAll("aXbX", "X", "XX"), "aXXbXX");
  EXPECT_EQ(ReplaceAll("abc", "", "x"), "abc");
  EXPECT_EQ(ReplaceAll("aaa", "aa", ""), "a");
}

TEST(Ansi, EveryByteSurvivesTheWayToUtf8AndBack) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
  EXPECT_EQ(AnsiFromUtf8(Utf8FromAnsi(all)), all);
  EXPECT_EQ(Utf8FromAnsi("\x80\xE9"), "\xE2\x82\xAC\xC3\xA9");
}

TEST(Ansi, WhatHasNoByteBecomesAQuestionMark) {
  EXPECT_EQ(AnsiFromUtf8("\xCE\xB1"), "?") << "Greek alpha";
  EXPECT_EQ(AnsiFromUtf8("a\xF0\x9F\x98\x80z"), "a?z");
  EXPECT_EQ(AnsiFromUtf8("\xC3"), "?") << "cut short";
  EXPECT_EQ(AnsiFromUtf8("\xC0\xAF"), "??") << "overlong";
  EXPECT_EQ(AnsiFromUtf8("\xE9z"), "?z") << "not UTF-8 at all";
}

}  // namespace
}  // namespace tarvolt
