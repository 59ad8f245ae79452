// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>

#include "files/format/data_file_reader.h"
#include "files/raw_file.h"
#include "station/on_a_station.h"

namespace tarvolt {
namespace {

using namespace std::chrono_literals;

using EquationsOnARun = OnAStation;

TEST_F(EquationsOnARun, RewriteEachSampleBeforeItIsStoredAndTheFileTellsOfThem) {
  station.Set("ApplyToIncoming", true).Set("Equ0", "X*2+1").Set("ApplyToCH1", 0).Set("Equ1", "X*100");
  station.Set("UseOffsets", true).Set("Channel0Offset", 1000).StartChart();
  station.TheSession().settings.channels.Equ[0] = "0";  // a profile that is loaded meanwhile does not change the run
  station.RunForSets(6);
  EXPECT_EQ(station.Stored()[5].values, (std::vector<double>{1011, -5})) << "the second is not ticked";
  station.StopChart();
  EXPECT_EQ(station.OnlySaved(), (std::vector<double>{1001, 1003, 1005, 1007, 1009, 1011}));
  EXPECT_TRUE(
      station.LastFileHolds("Equation Applied When Collected CH 1\xC8"
                            "CH: 1  Equation: X*2+1"));
  EXPECT_FALSE(station.LastFileHolds("Equation Applied When Collected CH 2"));
}

TEST_F(EquationsOnARun, MakeChannelsOfTheirOwnBesideThoseOfTheSource) {
  station.Set("Dsrc2", 42).Set("ApplyToIncoming", true).Set("Equ2", "IF{[Z1]>[2]};THEN{Z1-Z1[-1]};ELSE{7}");
  station.StartChart().RunForSets(6);
  EXPECT_EQ(station.Stored().at(1).values, (std::vector<double>{1, -1, 7}));
  EXPECT_EQ(station.Stored().at(5).values, (std::vector<double>{5, -5, 1}));
}

TEST_F(EquationsOnARun, AFaultIsLoggedOnce) {
  station.Set("ApplyToIncoming", true).Set("Equ0", "sqrt(X)").StartChart().RunForSets(6);
  EXPECT_EQ(station.LogLines("Equation of channel 1, statement 1 \"sqrt(X)\": Undefined Function: sqrt()"), 1);
}

TEST_F(EquationsOnARun, NeedNoSource) {
  station.Set("Dsrc0", 40).Set("Dsrc1", 0).Set("ApplyToIncoming", true).Set("Equ0", "n=n0+1;Snum*10").StartChart();
  station.RunFor(1050ms);
  ASSERT_EQ(station.Stored().size(), 10u) << station.Log();
  EXPECT_EQ(station.Stored()[9].values, std::vector<double>{90});
  EXPECT_FALSE(station.Logged("UDS"));
}

/// A recorded and loaded chart of two channels, and a person who edits equations.
class EquationsOnAChart : public testing::Test, protected Person {
 protected:
  EquationsOnAChart() {
    station.For(*this).StartChart();
    station.RunForSets(1200).StopChart();
    original = station.FilesSaved().at(0);
    edited.ApplyToCH = {1, 0, 1};
    edited.EquString = {"X*2", "nothing", "Z1+Z2[-1]"};
  }

  bool EditEquations(const EquationsRequest& request, EquationSet& set) override {
    asked.push_back(request);
    offered.push_back(set.EquString[0]);
    if (whileEditing) whileEditing();
    set = edited;
    return accepts;
  }

  const ChartWindow& Window() { return station.Form().Window(); }
  void Apply() { station.Form().Equations().mnuApplyFunction(); }

  Station station;
  std::string original;
  EquationSet edited;
  bool accepts = true;
  std::vector<EquationsRequest> asked;
  std::vector<std::string> offered;  ///< the first channel's equation, each time
  std::function<void()> whileEditing;
};

TEST_F(EquationsOnAChart, AreAppliedToAllSamplesAndSavedAsANewFile) {
  ASSERT_TRUE(station.Form().Loads().LoadDataFile(original));
  station.host.dialogs.EnterNext("1");
  const double before = Window().chart.GetValue(0, 700);
  Apply();
  ASSERT_EQ(asked.size(), 1u);
  EXPECT_EQ(asked[0].channels, 3);
  EXPECT_EQ(Window().header.channels, 3);
  EXPECT_EQ(Window().chart.ChannelName[2], "EQ CH3");
  EXPECT_EQ(Window().chart.GetValue(0, 700), before * 2);
  EXPECT_EQ(Window().chart.YAxisMax, Window().chart.DataMax());
  EXPECT_TRUE(station.Logged("Equation Applied"));
  ASSERT_EQ(station.FilesSaved().size(), 2u);
  const auto was = station.SamplesIn(original);
  EXPECT_EQ(was.at(700).values, (std::vector<double>{700, -700})) << "the file that was loaded stays";
  const std::string fresh = station.FilesSaved()[0] == original ? station.FilesSaved()[1] : station.FilesSaved()[0];
  const auto now = station.SamplesIn(fresh);
  ASSERT_EQ(now.size(), was.size());
  EXPECT_EQ(now[700].values, (std::vector<double>{1400, -700, 1400 - 699}));
  EXPECT_EQ(now[0].values[2], 0) << "there is no sample before the first";
  EXPECT_EQ(now[700].stamp, was[700].stamp);
  DataFileReader reader(station.host.disk);
  ASSERT_EQ(reader.Open(fresh), OpenResult::Ok);
  EXPECT_EQ(reader.Notes().labels[2], "EQ CH3");
  std::vector<std::string> rows;
  for (const MetadataRecord& record : reader.Notes().metadata.Records()) {
    if (record.name.starts_with("Equation Applied:")) rows.push_back(record.name.back() + record.value);
  }
  EXPECT_EQ(rows, (std::vector<std::string>{"1CH: 1  Equation: X*2", "3CH: 3  Equation: Z1+Z2[-1]"}));
}

TEST_F(EquationsOnAChart, TheChartJustRecordedIsSavedAsItIsNowAndNotFromItsBackup) {
  Apply();
  ASSERT_EQ(station.FilesSaved().size(), 2u);
  std::vector<double> firsts;
  for (const std::string& file : station.FilesSaved()) firsts.push_back(station.FirstChannelIn(file).at(600));
  std::sort(firsts.begin(), firsts.end());
  EXPECT_EQ(firsts, (std::vector<double>{600, 1200}));
}

TEST_F(EquationsOnAChart, AreRefusedInWordsAndThenNothingHasChanged) {
  const auto expectUntouched = [&](const char* words) {
    EXPECT_TRUE(station.host.dialogs.HasShown(words)) << words;
    EXPECT_EQ(station.FilesSaved().size(), 1u);
    EXPECT_EQ(Window().chart.ChannelCount(), 2);
    EXPECT_EQ(Window().chart.GetValue(0, 3), 3);
  };
  station.host.dialogs.EnterNext("7");
  Apply();
  expectUntouched("You cannot add that many channels.");
  EXPECT_TRUE(asked.empty());
  edited.ApplyToCH = {0, 0, 1};
  Apply();
  expectUntouched("No Channels were selected for processing");
  edited.ApplyToCH = {1};
  edited.EquString[0] = "  ";
  Apply();
  expectUntouched("No Channels were selected for processing");
  EXPECT_NE(station.TheSession().settings.channels.Equ[2], edited.EquString[2]) << "and none of them waits for a run";
  edited.EquString[0] = "a=2; sqrt(X)";
  station.host.dialogs.EnterNext("1");
  Apply();
  expectUntouched("Equation of channel 1, statement 2 \"sqrt(X)\": Undefined Function: sqrt()");
  edited.EquString[0] = "X*2";
  accepts = false;
  Apply();
  expectUntouched("Channels for equation data.\nEnter 0 or press Cancel for no new channels.");
  accepts = true;
  whileEditing = [this] { station.Form().StartChart(""); };
  Apply();
  EXPECT_TRUE(station.Running());
  EXPECT_TRUE(station.host.dialogs.HasShown("The chart is in use now"));
  asked.clear();
  station.RunFor(3s);
  Apply();
  EXPECT_TRUE(asked.empty()) << "no run is rewritten";
}

TEST_F(EquationsOnAChart, NothingElseTakesTheChartWhileTheyWork) {
  bool tried = false;
  station.host.dialogs.EnterNext("1");
  station.host.loop.Post([&] {  // while the channel is added
    tried = true;
    station.Form().StartChart("");
    EXPECT_FALSE(station.Form().Loads().LoadDataFile(original));
    EXPECT_FALSE(station.Form().Equations().CanApplyFunction());
  });
  Apply();
  EXPECT_TRUE(tried);
  EXPECT_FALSE(station.Running());
  EXPECT_EQ(Window().chart.GetValue(0, 1100), 2200);
}

TEST_F(EquationsOnAChart, LeaveThoseOfIncomingSamplesInForceAndAreOfferedAgain) {
  const std::string inForce = station.TheSession().settings.channels.Equ[0] = "X+1";
  Apply();
  Apply();
  EXPECT_EQ(Window().chart.GetValue(0, 600), 2400);
  EXPECT_EQ(station.TheSession().settings.channels.Equ[0], inForce);
  EXPECT_EQ(offered, (std::vector<std::string>{inForce, "X*2"}));
}

TEST_F(EquationsOnAChart, TheEndOfTheProgramCutsThemShortAndAsksNothing) {
  station.host.loop.Post([&] { station.host.loop.Post([&] { station.Form().RequestEnd(); }); });
  const int questions = station.host.dialogs.Questions();
  Apply();
  EXPECT_EQ(Window().chart.GetValue(0, 499), 998);
  EXPECT_EQ(Window().chart.GetValue(0, 1199), 1199);
  EXPECT_TRUE(Window().run.DataNeedsSave);
  EXPECT_EQ(station.FilesSaved().size(), 1u);
  EXPECT_EQ(station.host.dialogs.Questions(), questions + 1) << "that for new channels";
  EXPECT_TRUE(station.Logged(" of 1200 samples: the program ends."));
}

TEST_F(EquationsOnAChart, TellWhenTheChangedChartIsNotSaved) {
  station.TheSession().settings.files.SaveIF = 1;
  station.TheSession().settings.files.SaveIFVal = 1e9;
  Apply();
  EXPECT_EQ(station.FilesSaved().size(), 1u);
  EXPECT_TRUE(station.host.dialogs.HasShown("the changed chart was not saved."));
}

TEST_F(EquationsOnAChart, ALoadedChartThatAStartSavesKeepsItsNotes) {
  RawFile raw;
  raw.Front(40000, 40008, 1, Block("seen by eye", {"CHL0Power"}));
  for (int i = 0; i < 10; ++i) raw.Add(40000.0 + i).Add(1.0 * i);
  station.host.disk.Put("/station/old.tvd", raw.Bytes());
  ASSERT_TRUE(station.Form().Loads().LoadDataFile("/station/old.tvd"));
  station.Set("AutoSaveStandAlone", false).Set("SaveIF", 1).Set("SaveIFVal", 1000);
  Apply();
  station.host.dialogs.AnswerNext(Answer::Yes);
  station.StartChart();
  DataFileReader reader(station.host.disk);
  const std::vector<std::string> files = station.FilesSaved();
  const bool found = std::any_of(files.begin(), files.end(), [&](const std::string& file) {
    return reader.Open(file) == OpenResult::Ok && reader.Notes().freeText.starts_with("seen by eye");
  });
  EXPECT_TRUE(found);
}

TEST_F(EquationsOnAChart, TheirStatusIsNotTakenOffWithAnOlderMessage) {
  station.Form().Chart().look.ShowStatus("an old message");
  Apply();
  const std::string shown = station.View().Status.Text();
  station.RunFor(130s);
  EXPECT_EQ(station.View().Status.Text(), shown);
}

TEST_F(EquationsOnARun, OnceItStopsNeedSixSamplesOfARunAndNoneOfAFile) {
  station.StartChart().RunForSets(5).StopChart();
  EXPECT_FALSE(station.Form().Equations().CanApplyFunction());
  ASSERT_TRUE(station.Form().Loads().LoadDataFile(station.FilesSaved().at(0)));
  EXPECT_TRUE(station.Form().Equations().CanApplyFunction());
}

TEST_F(EquationsOnARun, OfAMiniChartAreRefusedWhileTheRestOfItsLogIsNotSaved) {
  station.Set("MiniServer", true).Set("ChartWidth", "1").Set("DiskBackUp", true);
  station.Set("SaveIF", 1).Set("SaveIFVal", 1000000).StartChart().RunForSets(38).StopChart();
  ASSERT_TRUE(station.FilesSaved().empty());
  ASSERT_TRUE(station.Form().Equations().CanApplyFunction());
  station.Form().Equations().mnuApplyFunction();
  EXPECT_EQ(station.host.dialogs.Questions(), 0);
  EXPECT_TRUE(station.host.dialogs.HasShown("The chart shows only the end of its log"));
  station.TheSession().settings.files.SaveIF = 0;
  station.Form().mnuSave();
  EXPECT_EQ(station.OnlySaved(), Ramp(38));
}

TEST_F(EquationsOnAChart, TheEquationsOfRunsToComeSwitchApplyToIncoming) {
  station.TheSession().store.SaveSetting(Section::Settings, "Equ1", "kept");
  station.TheSession().Override("Equ1", "X*9");
  station.Form().Equations().mnuChannelEquations();
  EXPECT_TRUE(station.TheSession().settings.channels.ApplyToIncoming);
  const SettingsStore& store = station.TheSession().store;
  EXPECT_EQ(store.GetSetting(Section::Settings, "ApplyToIncoming"), "True");
  EXPECT_EQ(store.GetSetting(Section::Settings, "Equ2"), "Z1+Z2[-1]");
  EXPECT_EQ(store.GetSetting(Section::Settings, "ApplyToCH2"), "1");
  EXPECT_EQ(store.GetSetting(Section::Settings, "Equ1"), "kept") << "an override is of this run alone";
  station.StartChart().RunForSets(1210);
  EXPECT_EQ(Window().chart.GetValue(0, 2), 2 * (-Window().chart.GetValue(1, 2)));
  station.StopChart();
  edited.ApplyToCH = {};
  station.Form().Equations().mnuChannelEquations();
  EXPECT_FALSE(station.TheSession().settings.channels.ApplyToIncoming);
}

}  // namespace
}  // namespace tarvolt
