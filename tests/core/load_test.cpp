// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "core/chart/load_data.h"
#include "files/desk.h"
#include "files/format/data_file_reader.h"
#include "files/raw_file.h"
#include "files/saving.h"
#include "text/number.h"

namespace tarvolt {
namespace {

constexpr const char* kFile = "/station/Data/UT100102120000.tvd";

bool Load(Desk& desk, const RawFile& raw) {
  desk.host.disk.Put(kFile, raw.Bytes());
  return LoadData(desk.session, desk.window, kFile) == LoadOutcome::Loaded;
}

LoadOutcome LoadAgain(Desk& desk) {
  return LoadData(desk.session, desk.window, kFile);
}

struct Loading : testing::Test {
  Loading() { desk.session.settings.program.ShowMsgBox = true; }
  Desk desk;
  RawFile raw;
};

TEST_F(Loading, StampsAndDoublesWithEverythingTheNotesSay) {
  raw.Front(1, 2, 2,
            Block("free", {"Logged Using UT", "CHL0Power", "CHL1Noise", "CHO12.5", "XALABELtime", "YALABELvolts",
                           "MetaData_Antenna\xC8"
                           "dish",
                           NotationItem("1", "2", "event")}));
  for (int i = 0; i < 4; ++i) raw.Add(40000.0 + i).Add(i + 0.5).Add(-1.0 * i);
  desk.window.save.PendingNotes = "of an earlier run";
  desk.window.run.DataNeedsSave = true;
  ASSERT_TRUE(Load(desk, raw));
  const ChartWindow& window = desk.window;
  ASSERT_EQ(window.chart.Count(), 4);
  EXPECT_EQ(window.chart.GetTime(3), 40003);
  EXPECT_EQ(window.chart.GetValue(0, 3), 3.5);
  EXPECT_EQ(window.chart.GetValue(1, 3), -3) << "the file's offset is not added";
  EXPECT_EQ(window.run.ChannelOffset[1], 2.5);
  EXPECT_EQ(window.header.start, 40000);
  EXPECT_EQ(window.header.end, 40002) << "the sample before the last";
  EXPECT_EQ(window.header.author, "A. Observer         ");
  EXPECT_EQ(window.notes, "free");
  EXPECT_EQ(window.save.PendingNotes, "");
  EXPECT_EQ(window.channelLabels[1], "Noise");
  EXPECT_EQ(window.chart.ChannelName[0], "Power");
  EXPECT_EQ(window.chart.YAxisLabel, "volts");
  EXPECT_EQ(window.metadata.Records().at(0).value, "dish");
  EXPECT_EQ(window.notations.slots[0].text, "event");
  EXPECT_TRUE(window.run.ChartIsUT);
  EXPECT_FALSE(window.run.ChartIsLMST);
  EXPECT_FALSE(window.run.DataNeedsSave);
  EXPECT_TRUE(window.save.keeping.LoadedFromFile);
  EXPECT_EQ(window.view.Title, "UT100102120000  File:   Stand Alone ");
  EXPECT_EQ(window.view.Status.Text(),
            "File Size : " + NumberText(static_cast<std::int64_t>(raw.Bytes().size())) + " bytes    Samples Loaded: 4");
  EXPECT_TRUE(desk.Logged(std::string(kFile) + " Loaded from disk. "));
  EXPECT_EQ(desk.session.recent.loaded[0], kFile);
}

TEST_F(Loading, EveryLayoutOfAFile) {
  struct Case {
    std::int16_t channels;
    bool stamps, integers;
    int samples;
    const char* torn;  // behind the last sample
    int loaded;
  };
  // Doubles without stamps give one sample more than the file has, unless a single channel ends with it. The step of
  // the times divides by one less than the last index, as the writers' short end has it.
  for (const Case& c : {Case{1, true, true, 3, "torn", 3}, Case{2, false, true, 5, "", 5},
                        Case{2, false, false, 5, "", 6}, Case{1, false, false, 5, "", 5}}) {
    SCOPED_TRACE(c.loaded);
    raw = RawFile();
    const int last = c.integers ? c.samples - 2 : c.samples - 1;
    std::vector<std::string> items;
    if (c.integers) items.emplace_back("Integer Save");
    if (!c.stamps) items.emplace_back("No Time Stamps");
    raw.Front(40000, 40000 + last, c.channels, Block("", items));
    for (int i = 0; i < c.samples; ++i) {
      if (c.stamps) raw.Add(40000.0 + i);
      for (int channel = 0; channel < c.channels; ++channel) {
        const int value = (channel == 0 ? 1 : -1) * 100 * i;
        c.integers ? raw.Add(static_cast<std::int16_t>(value)) : raw.Add(value + 0.5);
      }
    }
    ASSERT_TRUE(Load(desk, raw.Text(c.torn)));
    const StripChart& chart = desk.window.chart;
    ASSERT_EQ(chart.Count(), c.loaded);
    for (int i = 0; i < c.loaded; ++i) EXPECT_DOUBLE_EQ(chart.GetTime(i), 40000 + i);
    EXPECT_EQ(chart.GetValue(c.channels - 1, c.loaded - 1),
              (c.channels == 1 ? 1 : -1) * 100 * (c.samples - 1) + (c.integers ? 0 : 0.5))
        << "the sample too many repeats the last one";
    if (!c.integers) {
      EXPECT_DOUBLE_EQ(desk.window.header.end, 40004);
    }
  }
}

TEST_F(Loading, AFileWithoutFramingIsReadWithStampsAndDoubles) {
  raw.Front(1, 2, 9, "only text, as in a backup");
  for (int i = 0; i < 3; ++i) {
    raw.Add(40000.0 + i);
    for (int channel = 0; channel < 9; ++channel) raw.Add(channel + i / 4.0);
  }
  ASSERT_TRUE(Load(desk, raw));
  EXPECT_EQ(desk.window.chart.GetValue(8, 2), 8.5);
}

TEST_F(Loading, RefusesInWords) {
  EXPECT_EQ(LoadData(desk.session, desk.window, "/station/none.tvd"), LoadOutcome::Refused);
  EXPECT_TRUE(desk.host.dialogs.HasShown("Cannot Find the file: /station/none.tvd"));

  const auto notValid = [this](const RawFile& file) {
    return !Load(desk, file) && desk.host.dialogs.Boxes().back().title == "File Load Aborted" &&
           desk.host.dialogs.Boxes().back().text.find("Is corrupted or not a valid data file.") != std::string::npos;
  };
  for (const char* text : {"A letter", "12.5;13.75\n"}) EXPECT_TRUE(notValid(RawFile().Text(text))) << text;
  for (const std::int16_t channels : {0, 10, -1})
    EXPECT_TRUE(notValid(RawFile().Front(1, 2, channels, ""))) << channels;

  EXPECT_FALSE(Load(desk, RawFile().Front(1, 2, 1, "")));
  EXPECT_EQ(desk.host.dialogs.Boxes().back().title, "File Load Warning!");
  EXPECT_FALSE(Load(desk, RawFile().Front(1, 2, 1, "").Add(40000.0).Add(1.0).Add(40001.0).Add(1.0)));
  EXPECT_EQ(desk.window.chart.Count(), 0);
  EXPECT_FALSE(desk.window.save.Loading);

  desk.window.run.phase = RunPhase::Running;
  EXPECT_EQ(LoadAgain(desk), LoadOutcome::Refused);
}

TEST_F(Loading, LengthsInTheFileAreNotTrusted) {
  for (const std::int32_t length : {-1, 5, kNotesLimit, kNotesLimit + 1, 0x7FFFFFFF}) {
    std::string bytes = RawFile().Front(1, 2, 1, "note").Bytes();
    std::memcpy(bytes.data() + 152, &length, sizeof length);
    desk.host.disk.Put(kFile, bytes);
    EXPECT_EQ(LoadAgain(desk), length > kNotesLimit ? LoadOutcome::Refused : LoadOutcome::NoData);
    EXPECT_EQ(desk.window.chart.Count(), 0);
    const bool refused =
        desk.host.dialogs.Boxes().back().text.find("Is corrupted or not a valid data file.") != std::string::npos;
    EXPECT_EQ(refused, length > kNotesLimit) << length;
  }
}

TEST_F(Loading, OtherLoadsAreHeldOffAndARunThatBeginsEndsIt) {
  raw.Front(1, 2, 1, "");
  for (int i = 0; i < 12000; ++i) raw.Add(40000.0 + i).Add(1.0);
  LoadOutcome nested = LoadOutcome::Loaded;
  desk.host.loop.At(0, [&] { nested = LoadAgain(desk); });
  EXPECT_TRUE(Load(desk, raw));
  EXPECT_EQ(nested, LoadOutcome::Refused);
  EXPECT_EQ(desk.window.chart.Count(), 12000);

  desk.host.loop.Post([&] { desk.window.run.phase = RunPhase::Running; });
  EXPECT_EQ(LoadAgain(desk), LoadOutcome::Refused);
}

TEST_F(Loading, WhatWasSavedComesBackWithItsIdentity) {
  raw.Front(1, 2, 1,
            Block("free", {"CHL0Power", "CHO0-3",
                           "MetaData_A\xC8"
                           "b"}));
  for (int i = 0; i < 4; ++i) raw.Add(40000.0 + i).Add(0.1 * i);
  desk.window.save.SavedAs = kFile;
  ASSERT_TRUE(Load(desk, raw));
  EXPECT_TRUE(desk.window.save.SavedAs.empty()) << "a save of this chart takes no file's place";
  ASSERT_EQ(SaveDataFile(desk.session, desk.window, "/station/again.tvd", false), SaveOutcome::Saved);
  const std::string again = desk.Bytes("/station/again.tvd");
  EXPECT_EQ(again.substr(70, 80), raw.Bytes().substr(70, 80)) << "author, names and place are the file's own";
  const std::size_t notesAndSamples = raw.Bytes().size() - 156;
  EXPECT_EQ(again.substr(156), raw.Bytes().substr(156, notesAndSamples));
}

TEST_F(Loading, StampsThatStepBackAreSaidAndSaved) {
  raw.Front(1, 2, 1, "");
  for (int i = 0; i < 6000; ++i) raw.Add(40000.0 + (i < 2400 ? i : i - 2000)).Add(1.0 * i);
  ASSERT_TRUE(Load(desk, raw));
  EXPECT_TRUE(desk.Logged(std::string(kFile) + ": Times step back, first at sample 2400"));
  EXPECT_TRUE(desk.window.view.Status.Text().ends_with("    Times step back, first at sample 2400"));
  const StripChart& chart = desk.window.chart;
  EXPECT_EQ(chart.XAxisMax, 43999) << "all of them are in view";
  EXPECT_EQ(SaveView(desk.session, desk.window), SaveOutcome::Saved);
  ASSERT_TRUE(LoadData(desk.session, desk.window, desk.session.recent.saved[0]) == LoadOutcome::Loaded);
  EXPECT_EQ(chart.Count(), 6000);
}

TEST(DataFileReader, ReadsAnySampleInAnyOrder) {
  Desk desk;
  RawFile raw;
  raw.Front(1, 2, 1, "");
  const int count = 100000;  // several buffers
  for (int i = 0; i < count; ++i) raw.Add(40000.0 + i).Add(i * 0.5);
  desk.host.disk.Put(kFile, raw.Bytes());
  DataFileReader reader(desk.host.disk);
  ASSERT_EQ(reader.Open(kFile), OpenResult::Ok);
  EXPECT_EQ(reader.LastIndex(), count - 1);
  FileSample sample;
  for (const int index : {0, count - 1, 40000, 39999, 1}) {
    ASSERT_TRUE(reader.ReadSample(index, sample));
    EXPECT_EQ(sample.time, 40000.0 + index);
    EXPECT_EQ(sample.values[0], index * 0.5);
  }
  EXPECT_FALSE(reader.ReadSample(count, sample));
  EXPECT_FALSE(reader.ReadSample(-1, sample));
}

}  // namespace
}  // namespace tarvolt
