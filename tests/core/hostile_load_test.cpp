// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "core/chart/command_states.h"
#include "core/chart/load_data.h"
#include "display/column_reduction.h"
#include "files/desk.h"
#include "files/raw_file.h"

namespace tarvolt {
namespace {

constexpr const char* kFile = "/station/Data/hostile.tvd";

struct HostileLoads : testing::Test {
  HostileLoads() { desk.session.settings.program.ShowMsgBox = true; }

  LoadOutcome Load(const std::string& bytes) {
    desk.host.disk.Put(kFile, bytes);
    return LoadData(desk.session, desk.window, kFile);
  }

  /// A window is intact when its parts agree with one another and no load is under way.
  void ExpectIntact() {
    const ChartWindow& window = desk.window;
    EXPECT_FALSE(window.save.Loading);
    EXPECT_EQ(window.run.ChannelCount, window.chart.ChannelCount());
    EXPECT_EQ(window.run.Dcount, window.chart.Count());
    EXPECT_EQ(StatesOf(window).SaveView, window.chart.Count() > 0);
    EXPECT_LE(window.notations.count, Notations::kSlots - 1);
    for (int channel = 0; channel < window.chart.ChannelCount(); ++channel)
      ReduceToColumns(window.chart, channel,
                      FindColumnEdges(window.chart, window.chart.XAxisMin, window.chart.XAxisMax, 100));
  }

  const std::string& LastBox() const { return desk.host.dialogs.Boxes().back().text; }
  bool LastBoxSays(const std::string& words) const { return LastBox().find(words) != std::string::npos; }

  Desk desk;
};

TEST_F(HostileLoads, AFileCutAtAnyLengthIsToldOfInTheRightWords) {
  const std::string notes = Block("free", {"Logged Using UT", "CHL0Power", "CHO01.5"});
  const int channels = 2;
  const std::size_t stride = 8 * channels + 8;
  RawFile raw;
  raw.Front(40000, 40004, channels, notes);
  for (int i = 0; i < 6; ++i) raw.Add(40000.0 + i).Add(1.0 * i).Add(-1.0 * i);
  for (std::size_t length = 0; length <= raw.Bytes().size(); ++length) {
    SCOPED_TRACE(length);
    const std::size_t boxes = desk.host.dialogs.Boxes().size();
    const LoadOutcome outcome = Load(raw.Bytes().substr(0, length));
    const std::size_t front = 156 + notes.size();
    const std::size_t whole = length < front ? 0 : (length - front) / stride;
    ExpectIntact();
    if (length < 156) {
      EXPECT_EQ(outcome, LoadOutcome::Refused);
      EXPECT_TRUE(LastBoxSays("Appears to have no data.")) << LastBox();
    } else if (whole < 3) {
      EXPECT_EQ(outcome, LoadOutcome::NoData);
      EXPECT_TRUE(LastBoxSays("does not appear to have any data")) << LastBox();
      EXPECT_EQ(desk.window.chart.Count(), 0);
    } else {
      EXPECT_EQ(outcome, LoadOutcome::Loaded);
      EXPECT_EQ(desk.window.chart.Count(), static_cast<int>(whole));
    }
    const bool looksWhole = whole >= 5 && (length - front) % stride == 0;  // the header's end is the last but one
    EXPECT_EQ(desk.host.dialogs.Boxes().size(), boxes + (looksWhole ? 0 : 1)) << "told once";
    if (whole == 4) {
      EXPECT_TRUE(LastBoxSays("about 2 samples are missing")) << LastBox();
    }
  }
}

TEST_F(HostileLoads, ARefusedFileLeavesTheChartAsItWas) {
  RawFile good;
  good.Front(1, 2, 1, Block("of the chart", {"CHL0Power"}));
  for (int i = 0; i < 4; ++i) good.Add(40000.0 + i).Add(1.0);
  ASSERT_EQ(Load(good.Bytes()), LoadOutcome::Loaded);
  const ChartWindow& window = desk.window;
  desk.window.chart.TimeMarker = 40001;
  desk.window.run.DataNeedsSave = true;
  const std::string title = window.view.Title;
  const std::string status = window.view.Status.Text();
  int asked = 0;
  LoadRange all;
  const auto makeRoom = [&asked] { return ++asked == 0; };
  for (const std::string& bytes : {std::string(), std::string("no data file"), std::string(500, 'x'), good.Bytes()}) {
    desk.host.disk.Put(kFile, bytes);
    EXPECT_EQ(LoadData(desk.session, desk.window, kFile, all, {}, makeRoom), LoadOutcome::Refused);
    ExpectIntact();
    EXPECT_EQ(window.chart.Count(), 4);
    EXPECT_EQ(window.chart.TimeMarker, 40001);
    EXPECT_EQ(window.channelLabels[0], "Power");
    EXPECT_EQ(window.notes, "of the chart");
    EXPECT_TRUE(window.run.DataNeedsSave && window.save.keeping.LoadedFromFile && StatesOf(window).ToolCommands);
    EXPECT_EQ(window.view.Title, title);
    EXPECT_EQ(window.view.Status.Text(), status);
  }
  EXPECT_EQ(asked, 1) << "nobody is asked about the chart for a file that is none";
}

TEST_F(HostileLoads, NotesThatClaimAnythingChangeNothingButWhatTheySay) {
  std::vector<std::string> items = {"CHL9beyond",
                                    "CHLxno digit",
                                    "CHO81E+999",
                                    "CHO",
                                    "MetaData_\xC8",
                                    "MetaData_CHL0Name\xC8value",
                                    "XALABEL",
                                    "LBL^|^\xFE\xFE\xFE\xFE\xFE\xFE",
                                    std::string(100000, 'x')};
  for (const auto& [channel, index] : {std::pair("0", "2000000000"), {"9", "-1"}, {"77", "1"}, {"7", "1"}}) {
    items.push_back(NotationItem(channel, index, "text"));
  }
  RawFile raw;
  raw.Front(40000, 40004, 1, Block("*[[", items) + "*]]**[[*");
  for (int i = 0; i < 4; ++i) raw.Add(40000.0 + i).Add(1.0);
  for (const bool withOffsets : {false, true}) {
    desk.window.loadOptions.LoadFileOffsets = withOffsets;
    ASSERT_EQ(Load(raw.Bytes()), LoadOutcome::Loaded);
    ExpectIntact();
    EXPECT_EQ(desk.window.chart.GetValue(0, 3), 1);
  }
  for (const Notation& notation : desk.window.notations.slots) {
    EXPECT_GE(notation.index, 0);
    EXPECT_TRUE(notation.channel >= 0 && notation.channel <= 9);
  }
}

TEST_F(HostileLoads, StampsAndValuesThatAreNoNumbersLeaveAChartThatCanBeDrawn) {
  const double nan = std::nan("");
  const double infinite = std::numeric_limits<double>::infinity();
  for (const double hostile : {nan, infinite, -infinite, 1e308, -1e308, 5e-324}) {
    for (const bool stamps : {true, false}) {
      RawFile raw;
      raw.Front(hostile, -hostile, 2, stamps ? "" : Block("", {"No Time Stamps"}));
      for (int i = 0; i < 4; ++i) {
        if (stamps) raw.Add(i % 2 == 0 ? hostile : 40000.0);
        raw.Add(hostile).Add(i == 1 ? hostile : 2.0);
      }
      desk.session.settings.chart.AutoTitle = true;
      EXPECT_EQ(Load(raw.Bytes()), LoadOutcome::Loaded);
      ExpectIntact();
      EXPECT_EQ(desk.window.chart.Count(), stamps ? 4 : 5);
    }
  }
}

}  // namespace
}  // namespace tarvolt
