// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/chart/load_commands.h"

#include <gtest/gtest.h>

#include "core/chart/review_window.h"
#include "files/raw_file.h"
#include "station/station.h"
#include "timebase/time_text.h"

namespace tarvolt {
namespace {

using namespace std::chrono_literals;

constexpr const char* kFile = "/station/Data/old/two.tvd";

// Somebody who looks at the panel, changes it, and presses OK.
struct PanelPerson : Person {
  bool ChooseLoadOptions(Session& /*session*/, LoadOptions& options) override {
    panels.push_back(options);
    if (change) change(options);
    return true;
  }
  std::function<void(LoadOptions&)> change;
  std::vector<LoadOptions> panels;
};

struct Loads : testing::Test {
  Loads() {
    RawFile raw;
    raw.Front(
        40000, 40002, 2,
        Block("", {"Logged In LMST", "CHL0Power", "CHL1Noise", "CHO010", "CHO120", NotationItem("0", "1", "event")}));
    for (int i = 0; i < 4; ++i) raw.Add(40000.0 + i).Add(1.0 * i).Add(-1.0 * i);
    station.host.disk.Put(kFile, raw.Bytes());
    station.Set("Channel0Offset", "0.5").For(person).Boot();
  }

  void Panel(std::function<void(LoadOptions&)> change) {
    person.change = std::move(change);
    station.host.dialogs.ChooseFileNext(file);
  }
  LoadCommands& Commands() { return station.Form().Loads(); }
  const ChartWindow& Window() { return station.Form().Window(); }
  bool Shown(const char* words) { return station.host.dialogs.HasShown(words); }

  PanelPerson person;
  std::vector<LoadOptions>& panels = person.panels;
  Station station;
  std::string file = kFile;
};

TEST_F(Loads, EachCommandBringsItsOptionsAndLeavesNoneBehind) {
  const auto last = [this] { return Window().chart.GetValue(0, 3); };
  Panel({});
  Commands().mnuLoadWithOffsets();
  EXPECT_EQ(last(), 3.5);
  Panel({});
  Commands().mnuLoadWithFileOffsets();
  EXPECT_EQ(last(), 13);
  Panel([](LoadOptions& options) { options.LoadFileOffsets = true; });
  Commands().MnuLoadDataFile();
  EXPECT_EQ(last(), 13);
  ASSERT_EQ(panels.size(), 3u);
  EXPECT_FALSE(panels[2].LoadFileOffsets || panels[2].LoadLocalOffsets);
  Commands().mnuRecentLoaded(0);
  EXPECT_EQ(last(), 3) << "a plain load again";
  for (const int emptyPlace : {4, -1}) Commands().mnuRecentLoaded(emptyPlace);
  EXPECT_EQ(Window().chart.Count(), 4);
}

TEST_F(Loads, ThePanelBeginsWithWhatWasStoredAndIsLeftOutWhenNotWanted) {
  LoadOptions stored;
  stored.LoadFileOffsets = true;
  StoreLoadOptions(station.TheSession(), stored, true);
  Panel([](LoadOptions& options) { options.LoadSelectedChannels = false; });
  Commands().mnuLoadSelectedChannels();
  ASSERT_EQ(panels.size(), 1u);
  EXPECT_TRUE(panels[0].LoadFileOffsets && panels[0].LoadSelectedChannels);
  EXPECT_EQ(Window().chart.GetValue(0, 3), 13);
  StoreLoadOptions(station.TheSession(), stored, false);
  Panel({});
  Commands().MnuLoadDataFile();
  EXPECT_EQ(panels.size(), 1u);
  EXPECT_EQ(Window().chart.GetValue(0, 3), 3) << "nothing is added that nobody saw";
  EXPECT_EQ(station.Setting("LastLoadDir"), "/station/Data/old");
}

TEST_F(Loads, TheWindowShowsTheWholeChartAndItsNotations) {
  station.Set("AutoScale", true);
  ASSERT_TRUE(station.Form().Loads().LoadDataFile(kFile));
  const ChartWindow& window = Window();
  EXPECT_EQ(window.chart.XAxisMin, 40000);
  EXPECT_EQ(window.chart.XAxisMax, 40003);
  EXPECT_EQ(window.chart.YAxisMin, -3);
  EXPECT_EQ(window.view.Legend[1], "Noise");
  EXPECT_EQ(window.view.LeftStatus, "Data Sec/Sample 86636.555");
  EXPECT_FALSE(window.view.mnuRecallXY);
  EXPECT_TRUE(window.chart.NotationsShown);
  station.Form().Chart().look.mnuShowChartNotations();
  EXPECT_FALSE(window.chart.NotationsShown);
  Commands().mnuRecentLoaded(0);
  EXPECT_TRUE(window.chart.NotationsShown) << "each load shows them";
}

TEST_F(Loads, ALoadedSiderealChartStaysOneWhateverTheSettings) {
  ASSERT_TRUE(station.Form().Loads().LoadDataFile(kFile));
  station.Form().Options().UpdateAfterOptionsChange();
  EXPECT_TRUE(Window().run.ChartIsLMST);
  EXPECT_EQ(AxisPicture(false, Window().run.ChartIsLMST), "hh:nn:ss' LMST'");
  station.StartChart();
  EXPECT_FALSE(Window().run.ChartIsLMST) << "a new run has the base of the settings";
}

TEST_F(Loads, ADropIsRefusedInWordsOutsideStandAloneMode) {
  station.Set("ShowMsgBox", true);
  station.Form().EnterMode(SessionMode::Server);
  EXPECT_TRUE(Commands().CanLoad()) << "by the menu, while no chart runs";
  Commands().DropFile(kFile);
  EXPECT_TRUE(Shown("Must be in Stand Alone Mode or using review window to load file."));
  EXPECT_EQ(Window().chart.Count(), 0);
  FrmReview review(station.TheSession(), 2, person);
  review.Loads().DropFile(kFile);
  EXPECT_EQ(review.Window().chart.Count(), 4);
  EXPECT_EQ(review.Window().view.Title, "two  File : Review 2");
  EXPECT_FALSE(review.LoadDataFile("/station/none.tvd"));
  EXPECT_EQ(review.Window().view.Title, "two  File : Review 2");
}

TEST_F(Loads, ARunAndAnOpenPanelHoldLoadsOff) {
  station.StartChart().RunFor(2s);
  const std::int32_t count = Window().chart.Count();
  ASSERT_GT(count, 0);
  Commands().DropFile(kFile);
  Commands().mnuRecentLoaded(0);
  EXPECT_FALSE(station.Form().Loads().LoadDataFile(kFile));
  EXPECT_EQ(Window().chart.Count(), count);
  station.StopChart();
  bool nested = true;
  Panel([&](LoadOptions&) {
    Commands().DropFile(kFile);
    Commands().MnuLoadDataFile();
    nested = station.Form().Loads().LoadDataFile(kFile);
  });
  Commands().mnuLoadWithOffsets();
  EXPECT_FALSE(nested);
  EXPECT_EQ(panels.size(), 1u);
  EXPECT_EQ(Window().chart.GetValue(0, 3), 3.5);
}

TEST_F(Loads, AnOptionsChangeInTheMiddleOfALoadLeavesItsChannels) {
  RawFile raw;
  raw.Front(1, 2, 3, "");
  for (int i = 0; i < 12000; ++i) raw.Add(40000.0 + i).Add(1.0).Add(2.0).Add(3.0);
  station.host.disk.Put(kFile, raw.Bytes());
  std::function<void()> change = [&] {
    if (!Window().save.Loading) return;
    station.Form().Options().UpdateAfterOptionsChange();
    station.host.loop.Post(change);
  };
  FrmReview review(station.TheSession(), 1, person);
  station.host.loop.Post([&] {
    review.Chart().look.UpdateAfterOptionsChange();
    station.host.loop.Post([&] { review.Chart().look.UpdateAfterOptionsChange(); });
  });
  ASSERT_TRUE(review.LoadDataFile(kFile));
  station.host.loop.Post(change);
  ASSERT_TRUE(station.Form().Loads().LoadDataFile(kFile));
  for (const ChartWindow* window : {&review.Window(), &Window()}) {
    EXPECT_EQ(window->chart.ChannelCount(), 3);
    EXPECT_EQ(window->chart.GetValue(2, 11999), 3);
  }
}

TEST_F(Loads, ChartsGetTheirTitleAtStartAndSave) {
  station.Set("AutoTitle", true).Set("LocalName", "Home").Set("AutoTitleFormat", "%name %date").StartChart();
  EXPECT_EQ(Window().chart.Title, "Home 2010/01/02");
  station.RunFor(2s);
  station.Set("AutoTitleFormat", "%name saved").StopChart();
  EXPECT_EQ(Window().chart.Title, "Home saved");
}

}  // namespace
}  // namespace tarvolt
