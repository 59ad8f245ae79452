// SPDX-License-Identifier: GPL-3.0-or-later
// No chart is thrown away by one key, and what waits for a disk is not given up.
#include <gtest/gtest.h>

#include "station/on_a_station.h"

namespace tarvolt {
namespace {

using namespace std::chrono_literals;

using Unsaved = OnAStation;

std::string Marker(Station& station) {
  return station.Setting("LocalRun");
}

// A run of 40 samples that ended without a save, since nobody asked for one.
void RecordUnsaved(Station& station) {
  station.Set("AutoSaveStandAlone", false).StartChart().RunForSets(40).StopChart();
  ASSERT_TRUE(station.FilesSaved().empty());
}

TEST_F(Unsaved, AnAnswerDecidesAboutTheLastChartAndEscapeEndsTheStart) {
  struct Case {
    Answer answer;
    bool starts;
    std::size_t saved;
    std::size_t rescued;
  };
  for (const Case& expected :
       {Case{Answer::Cancel, false, 0, 0}, Case{Answer::No, true, 0, 1}, Case{Answer::Yes, true, 1, 0}}) {
    Station other;
    RecordUnsaved(other);
    other.host.dialogs.AnswerNext(expected.answer);
    other.StartChart();
    EXPECT_EQ(other.Running(), expected.starts);
    ASSERT_EQ(other.FilesSaved().size(), expected.saved);
    ASSERT_EQ(other.FilesRescued().size(), expected.rescued);
    for (const std::string& file : other.FilesSaved()) EXPECT_EQ(other.FirstChannelIn(file), Ramp(40));
    for (const std::string& file : other.FilesRescued()) EXPECT_EQ(other.FirstChannelIn(file), Ramp(40));
    EXPECT_EQ(other.Logged("Kept in: "), expected.rescued > 0);
    EXPECT_EQ(other.Chart().Count(), expected.starts ? 0 : 40);
  }
}

TEST_F(Unsaved, WithNobodyToAskItGoesToTheRecoveryFolder) {
  for (const bool ends : {false, true}) {
    Station other;
    other.Set("ShowMsgBox", false).Set("DiskBackUp", ends);
    RecordUnsaved(other);
    ends ? other.ShutDown() : other.StartChart();
    EXPECT_EQ(other.OnlyRescued(), Ramp(40));
  }
}

TEST_F(Unsaved, ACrashAfterTheStopFindsTheBackup) {
  RecordUnsaved(station);
  EXPECT_EQ(Marker(station), "Running");
  station.Kill().Boot();
  EXPECT_EQ(station.OnlyRescued(), Ramp(40));
}

TEST_F(Unsaved, ACalledOffSaveGivesNothingUpThatTheDiskRefused) {
  station.StartChart().RunForSets(40);
  station.host.disk.SetCapacity(station.host.disk.Used() + 100);
  station.StopChart();
  station.Set("AutoSaveStandAlone", false).Set("PromptBeforeSaving", true);
  station.host.dialogs.ChooseFileNext(std::nullopt);
  station.Form().mnuSave();
  EXPECT_EQ(Marker(station), "Running");
  EXPECT_TRUE(station.Form().HasUnsavedSamples());
  station.host.disk.SetCapacity(SimDisk::kUnlimited);
  station.RunFor(60s);
  EXPECT_EQ(station.OnlySaved(), Ramp(40));
  EXPECT_EQ(Marker(station), "OK");
}

TEST_F(Unsaved, AMiniRunOfIntegersKeepsValuesThatAreTooLargeForThem) {
  station.uds.Measures([](std::int64_t set) {
    const double value = set == 50 ? 40000.5 : static_cast<double>(set);
    return std::vector<double>{value, -value};
  });
  station.Set("MiniServer", true).Set("SaveAsIntegers", true).Set("ChartWidth", 3).StartChart();
  station.RunForSets(120).StopChart();
  ASSERT_EQ(station.FilesSaved().size(), 1u);
  const std::vector<double> values = station.FirstChannelIn(station.FilesSaved()[0]);
  ASSERT_EQ(values.size(), 120u);
  EXPECT_EQ(values[50], 40000.5);
  EXPECT_EQ(values[119], 119);
  EXPECT_TRUE(station.Logged("exceed the limits of integers"));
}

TEST_F(Unsaved, ARunThatIsNotKeptWritesNoFragments) {
  station.Set("MiniServer", true).Set("DiskBackUp", false).Set("MaxArrayCount", 20).StartChart().RunFor(3s);
  EXPECT_NE(station.View().LeftStatus.find("NOT SAVING "), std::string::npos);
  station.RunForSets(70).StopChart();
  EXPECT_TRUE(station.FilesSaved().empty());
}

TEST_F(Unsaved, TheThresholdOfAMiniRunCountsWhatMemoryHasLetGo) {
  station.uds.Measures([](std::int64_t set) {
    return std::vector<double>{set == 20 ? 5000.0 : static_cast<double>(set), 0};
  });
  station.Set("MiniServer", true).Set("ChartWidth", 1).Set("SaveIF", 1).Set("SaveIFVal", 1000).StartChart();
  station.RunForSets(120).StopChart();
  EXPECT_EQ(station.OnlySaved().size(), 120u);
}

TEST_F(Unsaved, AMiniRunWhoseBackupHasNoPlaceIsSavedFromMemory) {
  station.StartChart().RunForSets(40).Kill();
  station.host.disk.SetReadOnly("/station/Data/recovery", true);
  station.Set("MiniServer", true).Set("ChartWidth", 1).Set("MaxArrayCount", 60).StartChart();
  station.RunForSets(80);
  EXPECT_FALSE(station.Form().Window().save.keeping.BackupActive) << "what the crash left is in its place";
  station.RunForSets(140).StopChart();
  const std::vector<double> values = station.FirstChannelInFilesAndStore();
  ASSERT_EQ(values.size(), 100u);
  EXPECT_EQ(values.back() - values.front(), 99);
}

TEST_F(Unsaved, AChartThatARuleRefusedIsSavedByAYesAndLetGoWithoutIt) {
  for (const bool wanted : {false, true}) {
    Station other;
    other.Set("SaveIF", 1).Set("SaveIFVal", 1000).StartChart().RunForSets(40).StopChart();
    if (wanted) other.host.dialogs.AnswerNext(Answer::Yes);
    other.StartChart();
    EXPECT_TRUE(other.Running());
    EXPECT_EQ(other.FilesSaved().size(), wanted ? 1u : 0u);
    EXPECT_TRUE(other.FilesRescued().empty());
  }
  RecordUnsaved(station);
  station.StartChart();
  EXPECT_EQ(station.FilesSaved().size(), 1u) << "else Yes is the default";
}

TEST_F(Unsaved, AStartThatItsSourceRefusesLeavesTheOldChart) {
  for (const bool sound : {false, true}) {
    Station other;
    other.StartChart().RunForSets(40).StopChart();
    const std::string title = other.View().Title;
    if (sound) other.Set("Dsrc0", 1).Set("Dsrc1", 0).Set("SoundCardName", "loop:/nowhere.wav");
    other.Set("UDSport", 9).StartChart();
    EXPECT_FALSE(other.Running());
    EXPECT_TRUE(other.States().ToolCommands && other.States().InfoCommands) << "what can be done with it stays";
    EXPECT_EQ(other.Form().Window().chart.Count(), 40);
    EXPECT_EQ(other.View().Title, title);
    other.Form().mnuSave();
    EXPECT_EQ(other.FirstChannelIn(other.FilesSaved().back()), Ramp(40));
  }
}

}  // namespace
}  // namespace tarvolt
