// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/format/notes_block.h"

#include <gtest/gtest.h>

#include "files/raw_file.h"

namespace tarvolt {
namespace {

TEST(ParseNotes, TakesEveryKindOfItem) {
  const NotesBlock notes = ParseNotes(
      Block("my notes", {"Logged Using UT", "Logged In LMST", "No Time Stamps", "Time Ref Zero", "CHL0Total power",
                         "CHL8ninth", "CHO0-12.5", "CHO11E+21", "Integer Save", "XALABELtime", "YALABEL counts ",
                         "MetaData_Antenna\xC8"
                         "2 x 3 m",
                         "MetaData_Empty\xC8", NotationItem("2", "17", "event")}));
  EXPECT_EQ(notes.freeText, "my notes");
  EXPECT_TRUE(notes.usingUT && notes.lmst && notes.noTimeStamps && notes.timeRefZero && notes.integers);
  EXPECT_EQ(notes.labels[0], "Total power");
  EXPECT_EQ(notes.labels[8], "ninth");
  EXPECT_EQ(notes.offsets[0], "-12.5");
  EXPECT_EQ(notes.offsets[1], "1E+21");
  EXPECT_EQ(notes.xAxisLabel, "time");
  EXPECT_EQ(notes.yAxisLabel, " counts ");
  ASSERT_EQ(notes.metadata.Records().size(), 2u);
  EXPECT_EQ(notes.metadata.Records()[0].name, "Antenna");
  EXPECT_EQ(notes.metadata.Records()[0].value, "2 x 3 m");
  EXPECT_EQ(notes.metadata.Records()[1].value, "");
  ASSERT_EQ(notes.notations.count, 1);
  EXPECT_EQ(notes.notations.slots[0].channel, 2);
  EXPECT_EQ(notes.notations.slots[0].index, 17);
  EXPECT_EQ(notes.notations.slots[0].text, "event");
}

TEST(ParseNotes, WhereTheMarksStandDecidesWhatIsFreeText) {
  EXPECT_EQ(ParseNotes("a*[[*CHL0label\xFF*]]*b").freeText, "ab");
  EXPECT_EQ(ParseNotes("*[[*CHL0label\xFF*]]*b").freeText, "");  // nothing in front drops what is behind
  EXPECT_EQ(ParseNotes("a*]]*b*[[*c").freeText, "a*]]*b*[[*c");
  EXPECT_EQ(ParseNotes("a*[[*Integer Save").freeText, "a*[[*Integer Save");
  EXPECT_FALSE(ParseNotes("a*[[*Integer Save").integers);
  EXPECT_EQ(ParseNotes("a*[[*]]*b").freeText, "ab");  // the marks share a character
  EXPECT_EQ(ParseNotes("*[[*CHL0lab\xFF*]]*").labels[0], "lab");
}

TEST(ParseNotes, AnEmptyItemEndsTheBlock) {
  const NotesBlock notes = ParseNotes(
      "*[[*CHL0first\xFF\xFF"
      "CHL1second\xFF*]]*");
  EXPECT_EQ(notes.labels[0], "first");
  EXPECT_EQ(notes.labels[1], "");
  EXPECT_TRUE(ParseNotes("*[[*Integer Save*]]*").integers) << "the last item needs no end";
}

TEST(ParseNotes, TestsGoByContainmentInTheirOrder) {
  const NotesBlock notes = ParseNotes(Block("", {"MetaData_CHL gain\xC8"
                                                 "12",
                                                 "CHL1No Time Stamps"}));
  EXPECT_EQ(notes.metadata.Records().size(), 0u) << "the name holds the token of a label";
  EXPECT_EQ(notes.labels[0],
            "Data_CHL gain\xC8"
            "12");  // character 4 is no digit and counts as 0
  EXPECT_TRUE(notes.noTimeStamps);
  EXPECT_EQ(notes.labels[1], "");
}

TEST(ParseNotes, LabelsUnderThreeCharactersAreNotReadBack) {
  const NotesBlock notes = ParseNotes(Block("", {"CHL0ab", "CHL1abc", "CHL9nine", "CHO0", "CHO05"}));
  EXPECT_EQ(notes.labels[0], "");
  EXPECT_EQ(notes.labels[1], "abc");
  EXPECT_EQ(notes.offsets[0], "5");
}

TEST(ParseNotes, NotationsWithBadFieldsAreDropped) {
  const NotesBlock notes = ParseNotes(Block(
      "", {NotationItem("10", "5", "channel"), NotationItem("-1", "5", "channel"), NotationItem("1", "-5", "index"),
           NotationItem("", "555", "none"), NotationItem("1", "5", ""), NotationItem("9", "0", "good"),
           "LBL^|^1\xFE"
           "22222"}));
  ASSERT_EQ(notes.notations.count, 1);
  EXPECT_EQ(notes.notations.slots[0].text, "good");
  EXPECT_EQ(notes.notations.slots[0].channel, 9);
}

TEST(ParseNotes, NotationsBeyondTheTableOverwriteItsLastSlot) {
  std::vector<std::string> items;
  for (int i = 0; i < 105; ++i) items.push_back(NotationItem("1", "7", "number " + std::string(1, ' ' + i)));
  items.push_back(NotationItem("77", "7", "bad channel"));
  const NotesBlock notes = ParseNotes(Block("", items));
  EXPECT_EQ(notes.notations.count, 100);
  EXPECT_EQ(notes.notations.slots[99].text, std::string("number ") + static_cast<char>(' ' + 99));
  EXPECT_EQ(notes.notations.slots[100].text, std::string("number ") + static_cast<char>(' ' + 104));
  EXPECT_EQ(notes.notations.slots[100].channel, 0) << "a bad channel is put to 0 in the slot at hand";
}

TEST(BuildNotes, WritesTheItemsInTheirOrder) {
  NotesBlock notes;
  notes.freeText = "free";
  notes.usingUT = notes.lmst = notes.noTimeStamps = notes.timeRefZero = notes.integers = true;
  notes.labels = {"Total power", "B", "of no channel"};
  notes.offsets = {"0", "-0.25"};
  notes.xAxisLabel = "  ";
  notes.yAxisLabel = " volts";
  notes.metadata.Append({"Antenna", "dish", "", ""});
  notes.metadata.Append({"", "after the end", "", ""});
  notes.metadata.Append({"Hidden", "x", "", ""});
  const char* const texts[] = {"first", "", "DELETED ITEM", "second"};
  for (int i = 0; i < 4; ++i) notes.notations.slots[i] = {0, 10 * i, texts[i], 1};
  notes.notations.count = 4;
  EXPECT_EQ(BuildNotes(notes, 2),
            Block("free", {"Logged Using UT", "Logged In LMST", "No Time Stamps", "Time Ref Zero", "CHL0Total power",
                           "CHL1B", "CHO00", "CHO1-0.25", "Integer Save", "YALABEL volts",
                           "MetaData_Antenna\xC8"
                           "dish",
                           NotationItem("1", "0", "first"), NotationItem("1", "30", "second")}));
}

TEST(BuildNotes, OldFramingIsReplacedOnlyWhenItsMarksAreApart) {
  EXPECT_EQ(WithoutFraming("a*[[*old\xFF*]]*b"), "ab");
  EXPECT_EQ(WithoutFraming("a*[[**]]*b"), "a*[[**]]*b");
  EXPECT_EQ(WithoutFraming("a*]]*b*[[*c"), "a*]]*b*[[*c");
  EXPECT_EQ(WithoutFraming("a*[[*b"), "a*[[*b");
}

TEST(BuildNotes, AFullTableOfNotationsIsWrittenWithItsLastSlot) {
  NotesBlock notes;
  for (int i = 0; i < Notations::kSlots; ++i) notes.notations.slots[i] = {0, i, "x", 0};
  notes.notations.count = 100;
  const NotesBlock read = ParseNotes(BuildNotes(notes, 1));
  EXPECT_EQ(read.notations.slots[100].index, 100);
}

}  // namespace
}  // namespace tarvolt
