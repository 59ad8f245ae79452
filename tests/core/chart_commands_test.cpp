// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/chart/chart_commands.h"

#include <gtest/gtest.h>

#include "core/chart/chart_view_entry.h"
#include "station/on_a_station.h"

namespace tarvolt {
namespace {

using namespace std::chrono_literals;

using Chart = OnAStation;

// A run of 100 seconds of which the chart shows ten.
class LookingBack : public testing::Test {
 protected:
  LookingBack() { station.Set("ChartWidth", 10).StartChart().RunForSets(1000); }

  const StripChart& Chart() { return station.Chart(); }
  ChartCommands& Commands() { return station.Form().Chart(); }
  double Newest() { return Chart().GetTime(Chart().Count() - 1); }
  double Width() { return (Chart().XAxisMax - Chart().XAxisMin) * 86400; }

  Station station;
};

TEST_F(LookingBack, NeverHoldsTheRecordingUpAndOneClickFollowsAgain) {
  EXPECT_NEAR(Chart().XAxisMax, Newest(), 0.2 / 86400);
  EXPECT_NEAR(Width(), 10, 1e-3);
  Commands().view.ScrollLeft();
  const double left = Chart().XAxisMin;
  EXPECT_EQ(station.View().Status.Text(), "Drag Mode - Plot Button Resumes");
  EXPECT_EQ(Chart().Mode, ChartMode::Browsing);
  EXPECT_EQ(station.States().AutoScrollTip, "Auto-Scroll Disabled - Click to Enable");
  station.RunForSets(1300);
  EXPECT_EQ(Chart().XAxisMin, left) << "the view stays";
  EXPECT_EQ(Chart().Count(), 1300) << "the recording goes on";
  EXPECT_EQ(station.View().Status.Text(), "Press Plot Button to Re-enable");
  Commands().view.IncX();
  Commands().view.cmdAutoScrollEnable();
  EXPECT_EQ(Chart().XAxisMax, Newest());
  EXPECT_NEAR(Width(), 10, 1e-3) << "over the chart's width again";
  EXPECT_EQ(Chart().Mode, ChartMode::Tracking);
  EXPECT_TRUE(station.Logged("Auto-Scrolling Enabled"));
  station.RunForSets(1400);
  EXPECT_NEAR(Chart().XAxisMax, Newest(), 0.2 / 86400);
  station.StopChart();
  EXPECT_EQ(station.FirstChannelIn(station.FilesSaved().at(0)), Ramp(1400));
}

TEST_F(LookingBack, FullViewIsAllSamplesAndCanBeLeftAgain) {
  const double left = Chart().XAxisMin;
  Commands().view.cmdFullView();
  EXPECT_EQ(Chart().XAxisMin, Chart().GetTime(0));
  EXPECT_EQ(Chart().YAxisMin, -999);
  EXPECT_EQ(Chart().YAxisMax, 999);
  EXPECT_EQ(station.Form().Window().views.fvMaxX, Newest());
  Commands().view.RestoreFullView();
  EXPECT_EQ(Chart().XAxisMin, left);
  station.StopChart();
  EXPECT_EQ(Chart().XAxisMin, Chart().GetTime(0)) << "a stop goes to the full view";
  EXPECT_TRUE(station.View().mnuRecallXY);
}

TEST_F(LookingBack, ScalingByHandEndsAutoScaleAndComesBack) {
  Commands().view.IncY();
  EXPECT_FALSE(Chart().AutoScale);
  EXPECT_EQ(station.States().AutoScaleTip, "Auto-Scale Disabled - Click to Enable");
  const double top = Chart().YAxisMax;
  station.RunForSets(1100);
  EXPECT_EQ(Chart().YAxisMax, top);
  Commands().view.cmdAutoScale();
  EXPECT_EQ(Chart().YAxisMax, 1099);
  Commands().view.mnuSetYminToZero();
  EXPECT_EQ(Chart().YAxisMin, 0);
  Commands().view.mnuRestoreXYtoDefaults();
  EXPECT_EQ(Chart().YAxisMax, 10000);
}

TEST_F(LookingBack, TheCursorReadsTheNearestSampleOfTheNearestChannel) {
  Commands().cursor.cmdCursor();
  const double time = Chart().GetTime(950);
  Commands().cursor.MoveCursor(time + 0.01 / 86400, -900);
  EXPECT_EQ(Chart().CursorChannel, 1);
  EXPECT_EQ(Chart().CursorY, -950);
  EXPECT_NE(station.View().Status.Text().find("    Y : -950.000    Sample: 950"), std::string::npos)
      << station.View().Status.Text();
  Commands().cursor.mnuSetTimeMarker();
  Commands().cursor.MoveCursor(Chart().GetTime(940), 900);
  EXPECT_NE(station.View().Status.Text().find("    From Time Marker: -00:00:01.000"), std::string::npos)
      << station.View().Status.Text();
  Commands().look.mnuVisCH(0);
  Commands().cursor.MoveCursor(time, 900);
  EXPECT_EQ(Chart().CursorChannel, 1) << "a hidden channel is not read";
  Commands().cursor.cmdCursor();
  EXPECT_EQ(Chart().Mode, ChartMode::Tracking) << "a chart that follows its run goes on with it";
}

TEST_F(LookingBack, AViewByNumbersIsCheckedBeforeItIsShown) {
  ChartViewEntry entry = DescribeView(station.Form().Window(), 10);
  const auto problem = [&] { return ApplyChartView(entry, station.Form().Window(), Commands().view); };
  entry.from = "12:00:30.25";
  entry.byWidth = true;
  entry.width = "20";
  EXPECT_EQ(problem(), "");
  EXPECT_NEAR(Width(), 20, 1e-3);
  EXPECT_EQ(FormatDate(Chart().XAxisMin, "hh:nn:ss.zzz"), "12:00:30.250");
  EXPECT_EQ(Chart().Mode, ChartMode::Browsing);
  for (const char* width : {"", "0", "-3", "1e400", "ten"}) {
    entry.width = width;
    EXPECT_EQ(problem(), "The width must be a number of seconds above 0.");
  }
  entry.byWidth = false;
  entry.to = "12:00:10";
  EXPECT_EQ(problem(), "The chart view must end after it starts.");
  for (const char* to : {"noon", "12:00:59.", "12:00:59.1x", "2100-01-01.5"}) {
    entry.to = to;
    EXPECT_NE(problem(), "") << to;
  }
  EXPECT_NEAR(Width(), 20, 1e-3) << "a wrong entry changes nothing";
  entry.to = ChartViewEntry::kEndOfData;
  entry.from = ChartViewEntry::kStartOfData;
  entry.specifyY = true;
  entry.yLow = "5";
  entry.yHigh = "1";
  EXPECT_EQ(problem(), "The top of the chart view must be above its bottom.");
  entry.yHigh = "50";
  station.StopChart();
  EXPECT_EQ(problem(), "");
  EXPECT_EQ(Chart().XAxisMin, WholeDay(Chart().GetTime(0))) << "the start of the data is the start of its day";
  EXPECT_EQ(Chart().YAxisMax, 50);
  station.StartChart().RunForSets(1004);
  EXPECT_EQ(problem(), "Not enough data loaded for Manual Chart View entry.");
  station.RunForSets(1005);
  entry = ChartViewEntry();
  EXPECT_EQ(problem(), "");
  EXPECT_TRUE(Chart().AutoScale);
}

TEST_F(Chart, AnOffsetButtonHeldDownGoesEverFasterAndCountsForLaterSamplesAlone) {
  station.StartChart().RunForSets(10);
  ChannelOffsets& offsets = station.Form().Offsets();
  offsets.cmdOffset();
  ASSERT_TRUE(station.View().OffsetFrameShown);
  offsets.cmdChUp();
  offsets.cmdChUp();
  EXPECT_EQ(station.View().OffsetChannel, 1) << "there are two channels";
  offsets.ButtonDown(1);
  station.RunFor(200ms * (6 * 10 + 3));  // six firings of each step 1, 2, 4 ... 512, and three more of 512
  offsets.ButtonUp();
  double expected = 1 + 3 * 512;
  for (int step = 1; step <= 512; step *= 2) expected += 6 * step;
  EXPECT_EQ(station.Run().ChannelOffset[1], expected);
  EXPECT_TRUE(station.Run().OffsetsChanged);
  station.RunFor(1s);
  EXPECT_EQ(station.Run().ChannelOffset[1], expected) << "a button let go adds nothing";
  const StripChart& chart = station.Chart();
  EXPECT_EQ(chart.GetValue(1, 9), -9) << "stored samples stay";
  const std::int32_t newest = chart.Count() - 1;
  EXPECT_EQ(chart.GetValue(1, newest), -newest + expected);
  offsets.TxtOffset("-2.5");
  EXPECT_EQ(station.Run().ChannelOffset[1], -2.5);
  station.StopChart();
  EXPECT_FALSE(station.View().OffsetFrameShown);
}

TEST_F(Chart, AnOffsetChangedDuringARunLeavesItsTraceAndNonsenseIsRefused) {
  station.Set("Channel1Offset", "1E+300").Set("UseOffsets", true).Set("MetaDataActive", 1).Set("ShowMsgBox", true);
  station.StartChart();
  EXPECT_EQ(station.Run().ChannelOffset[1], 0);
  station.RunForSets(10);
  ChannelOffsets& offsets = station.Form().Offsets();
  for (const char* text : {"1E+308", "-2E+15", "nan", "abc", ""}) offsets.TxtOffset(text);
  EXPECT_EQ(station.Run().ChannelOffset[0], 0);
  EXPECT_TRUE(station.host.dialogs.HasShown("\"1E+308\" is no number that can be an offset."));
  offsets.TxtOffset("2.5");
  offsets.TxtOffset("3");
  EXPECT_TRUE(station.Logged("Offset of CH 1 changed from 2.5 to 3")) << station.Log();
  offsets.ButtonDown(1);
  station.RunFor(1s).StopChart();
  for (const char* row : {"Offset Changed 2010-01-02 12:00:01 CH 1\xC8"
                          "from 0 to 2.5",
                          "from 2.5 to 3", "from 3 to 9, moving since 2010-01-02 12:00:01"}) {
    EXPECT_TRUE(station.LastFileHolds(row)) << row;
  }
}

TEST_F(Chart, AnAverageOfAChannelIsShownWhenItsTimeIsOverAndHeld) {
  station.Set("AvgSamplingPeriod", 2).StartChart().RunForSets(10);
  station.Form().Average().StartChannelAvg(1);
  EXPECT_EQ(station.View().Status.Text(), "Getting Average for CH1");
  station.RunFor(4s);
  EXPECT_TRUE(station.View().Status.Text().starts_with("Average for CH1 = ")) << station.View().Status.Text();
  const std::string shown = station.View().Status.Text();
  station.RunFor(25s);
  EXPECT_EQ(station.View().Status.Text(), shown) << "held for thirty firings";
  station.RunFor(10s);
  EXPECT_NE(station.View().Status.Text(), shown);
  station.Form().Average().StartChannelAvg(3);
  EXPECT_FALSE(station.Form().Average().Running()) << "there is no channel three";
}

TEST_F(Chart, ASaveDuringARunSavesTheLogAndBeginsANewOne) {
  station.Set("Continuous", false).Set("AutoSaveStandAlone", false).StartChart().RunForSets(20);
  station.Form().mnuSave();
  EXPECT_TRUE(station.Running()) << "whatever Continuous says";
  EXPECT_TRUE(station.States().InfoCommands) << "there is a file to tell of";
  EXPECT_EQ(station.Chart().Count(), 0);
  EXPECT_EQ(station.OnlySaved(), Ramp(20));
  station.RunForSets(30).StopChart();
  EXPECT_EQ(station.FilesSaved().size(), 1u) << "the force was for that save alone";
}

TEST_F(Chart, ARunIsNotStartedFromInsideTheQuestionOfItsStop) {
  station.Set("UseOffsets", true).StartChart().RunForSets(10);
  station.Form().Offsets().cmdOffset();
  station.Form().Offsets().TxtOffset("3");
  bool asked = false;
  station.host.dialogs.whileAsking = [&](const SimDialogs::Box& box) {
    asked = asked || box.title == "Offsets Changed";
    EXPECT_FALSE(station.States().cmdStart) << box.title;
    station.Form().StartChart("");
    station.Form().mnuSave();
  };
  station.host.dialogs.AnswerNext(Answer::Yes);
  station.StopChart();
  EXPECT_TRUE(asked);
  EXPECT_FALSE(station.Running());
  EXPECT_EQ(station.TheSession().settings.channels.DefaultChannelOffset[0], 3);
  EXPECT_EQ(station.FilesSaved().size(), 1u);
}

}  // namespace
}  // namespace tarvolt
