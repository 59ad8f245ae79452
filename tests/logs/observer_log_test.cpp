// SPDX-License-Identifier: GPL-3.0-or-later
#include "logs/observer_log.h"

#include <gtest/gtest.h>

#include "logs/log_words.h"
#include "logs/observer_macros.h"
#include "sim/sim_clock.h"

namespace tarvolt {
namespace {

class ObserverLogTest : public ::testing::Test {
 protected:
  ObserverLogTest() {
    SimZone zone;
    zone.biasMinutes = -120;
    clock.SetZone(zone);  // local time is 00:30:05 of 1 January 2027
    settings.place.TZ = 2;
  }

  std::string Stamp(const char* format, bool ut) {
    settings.observerLog.oDateFormat = format;
    settings.observerLog.OLogUT = ut;
    return GetTimeStamp(clock, settings);
  }

  SimClock clock{{2026, 12, 31, 22, 30, 5, 900}};
  Settings settings;
};

TEST_F(ObserverLogTest, StampsTakeTheirBaseAndTheirDateFormat) {
  EXPECT_EQ(Stamp("", true), "<22:30:05  UT>\r\n");
  EXPECT_EQ(Stamp("MM/DD/YYYY", true), "<22:30:05 12/31/2026 UT>\r\n");
  EXPECT_EQ(Stamp("DD/MM/YYYY", false), "<00:30:05 01/01/2027>\r\n");
  EXPECT_EQ(Stamp("VERBOSE", true), "<Time: 22:30:05  Year: 2026   Month: 12  Day: 31 UT>\r\n");
}

TEST_F(ObserverLogTest, FilesAreNamedInTheBaseOfTheStamps) {
  settings.observerLog.OLogUT = true;
  EXPECT_EQ(NameOLogFile(clock, settings), "2612312230Log.txt");
  settings.observerLog.OLogUT = false;
  EXPECT_EQ(NameOLogFile(clock, settings), "2701010030Log.txt");
}

TEST(ObserverLogRules, OnlyTheThreeDateFormatsAreLegal) {
  EXPECT_EQ(OLogDateFormat(" dd/mm/yyyy"), "DD/MM/YYYY");
  EXPECT_EQ(OLogDateFormat("Verbose"), "VERBOSE");
  for (const char* bad : {"", "YYYY/MM/DD", "MM/DD/YY", "VERBOSE!"}) EXPECT_FALSE(OLogDateFormat(bad)) << bad;
}

TEST(ObserverLogRules, AnEntryBeginsALineOfItsOwn) {
  EXPECT_EQ(OnNewLine("", "x"), "x");
  EXPECT_EQ(OnNewLine("a", "x"), "x") << "a single character is not worth a line";
  EXPECT_EQ(OnNewLine("ab", "x"), "\r\nx");
  EXPECT_EQ(OnNewLine("\r\n", "x"), "x");
  EXPECT_EQ(OnNewLine("\nb", "x"), "\r\nx");
}

TEST(ObserverLogRules, AnEntryForAClosedLogIsDropped) {
  ObserverLog log;
  log.AddEntry("dropped");
  log.Open();
  std::string text;
  log.OnEntry([&text](const std::string& entry, bool stamped) { text += entry + (stamped ? "!" : "."); });
  log.AddEntry("one");
  log.AddEntry("two", true);
  log.OnEntry({});
  log.AddEntry("dropped");
  EXPECT_EQ(text, "one.two!");
}

TEST(LogWords, RunFromBlankToBlankAndFileReferencesToTheEndOfTheLine) {
  const std::string line = "see http://a.org/x and b";
  EXPECT_EQ(WordAt(line, 4), "http://a.org/x");
  EXPECT_EQ(WordAt(line, 12), "http://a.org/x");
  EXPECT_EQ(WordAt(line, line.size() + 50), "b");
  EXPECT_EQ(WordAt("a  b", 2), "");
  EXPECT_EQ(WordAt("File Reference: /my data/sun 1.jpg ", 24), "/my data/sun 1.jpg");
  EXPECT_EQ(WordAt("File Reference: /my data/sun 1.jpg", 3), "File");
}

TEST(LogWords, AreOpenedByWhatTheyBeginOrEndWith) {
  EXPECT_EQ(KindOfWord("http://a.org"), WordKind::WebAddress);
  EXPECT_EQ(KindOfWord("http://.org"), WordKind::None) << "the first point stands at 8";
  EXPECT_EQ(KindOfWord("HTTP://localhost"), WordKind::None);
  EXPECT_EQ(KindOfWord("http://a b.org"), WordKind::None);
  EXPECT_EQ(KindOfWord("/data/Sun.Jpg"), WordKind::Picture);
  EXPECT_EQ(KindOfWord("c:\\x.WAV"), WordKind::Sound);
  EXPECT_EQ(KindOfWord("notes.txt"), WordKind::Text);
  for (const char* none : {"", ".tx", "sun.jpeg", "a.txt,"}) EXPECT_EQ(KindOfWord(none), WordKind::None) << none;
}

TEST(ObserverMacros, MarksStandAmongTheLastTwoCharacters) {
  EXPECT_FALSE(ReadOMacro(""));
  EXPECT_FALSE(ReadOMacro("~"));
  struct Case {
    const char* macro;
    const char* text;
    bool stamped;
    bool marked;
  };
  for (const Case& c : {Case{"Calibration", "Calibration", false, false}, Case{"Clouds~", "Clouds", true, false},
                        Case{"Clouds~ ", "Clouds ", true, false}, Case{"Burst*~", "Burst", true, true},
                        Case{"Burst~*", "Burst", true, true}, Case{"3~5 K*", "3~5 K", false, true}}) {
    const auto action = ReadOMacro(c.macro);
    ASSERT_TRUE(action);
    EXPECT_EQ(action->text, c.text);
    EXPECT_EQ(action->stamped, c.stamped) << c.macro;
    EXPECT_EQ(action->marked, c.marked) << c.macro;
  }
}

TEST(ObserverMacros, AFileGivesBackWhatWasWritten) {
  OMacroSet macros;
  macros[0] = {"Start", "Antenna at 45\xB0~"};
  macros[9] = {"Two\r\nlines", "a\tb"};
  const auto read = ParseOMacros(WriteOMacros(macros));
  ASSERT_TRUE(read);
  EXPECT_EQ((*read)[0].caption, "Start");
  EXPECT_EQ((*read)[0].text, "Antenna at 45\xB0~");
  EXPECT_EQ((*read)[9].caption, "Two  lines") << "a line end would shift the lines behind it";
  EXPECT_EQ((*read)[9].text, "a b");
}

TEST(ObserverMacros, AFileFromElsewhereIsHeldToTheLimits) {
  EXPECT_FALSE(ParseOMacros(""));
  EXPECT_FALSE(ParseOMacros("Some other file\r\na\r\n"));
  std::string contents = "Tarvolt Observer Log Macros\n";
  for (int i = 0; i < 100; ++i) contents.append(5000, static_cast<char>('a' + i % 20)).append("\n");
  const auto read = ParseOMacros(contents);
  ASSERT_TRUE(read);
  EXPECT_EQ((*read)[1].caption, std::string(OMacro::kLongestCaption, 'c'));
  EXPECT_EQ((*read)[1].text, std::string(OMacro::kLongestText, 'd'));
  const auto cut = ParseOMacros("Tarvolt Observer Log Macros\nonly");
  ASSERT_TRUE(cut);
  EXPECT_EQ((*cut)[0].caption, "only");
  EXPECT_EQ((*cut)[9].text, "");
}

}  // namespace
}  // namespace tarvolt
