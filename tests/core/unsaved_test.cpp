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

TEST_F(Unsaved, AStartThatSoundRefusesLeavesTheOldChart) {
  station.StartChart().RunForSets(40).StopChart();
  station.Set("Dsrc0", 1).Set("Dsrc1", 0).Set("SoundCardName", "loop:/nowhere.wav").StartChart();
  EXPECT_FALSE(station.Running());
  EXPECT_TRUE(station.States().ToolCommands && station.States().InfoCommands) << "what can be done with it stays";
  EXPECT_EQ(station.Chart().Count(), 40);
}

}  // namespace
}  // namespace tarvolt
