// No chart is thrown away by one key, and what waits for a disk is not given up.
#include <gtest/gtest.h>

#include "station/station.h"

namespace tarvolt {
namespace {

using namespace std::chrono_literals;

std::string Marker(Station& station) {
  return station.TheSession().store.GetSetting(Section::Settings, "LocalRun");
}

// A run of 40 samples that ended without a save, since nobody asked for one.
void RecordUnsaved(Station& station) {
  station.Set("AutoSaveStandAlone", false).StartChart();
  station.RunForSets(40);
  station.StopChart();
  ASSERT_TRUE(station.FilesSaved().empty());
}

TEST(Unsaved, AnAnswerDecidesAboutTheLastChartAndEscapeEndsTheStart) {
  struct Case {
    Answer answer;
    bool starts;
    std::size_t saved;
    std::size_t rescued;
  };
  for (const Case& expected :
       {Case{Answer::Cancel, false, 0, 0}, Case{Answer::No, true, 0, 1}, Case{Answer::Yes, true, 1, 0}}) {
    Station station;
    RecordUnsaved(station);
    station.host.dialogs.AnswerNext(expected.answer);
    station.StartChart();
    EXPECT_EQ(station.Running(), expected.starts);
    ASSERT_EQ(station.FilesSaved().size(), expected.saved);
    ASSERT_EQ(station.FilesRescued().size(), expected.rescued);
    for (const std::string& file : station.FilesSaved()) EXPECT_EQ(station.FirstChannelIn(file), Ramp(40));
    for (const std::string& file : station.FilesRescued()) EXPECT_EQ(station.FirstChannelIn(file), Ramp(40));
    EXPECT_EQ(station.Logged("Kept in: "), expected.rescued > 0);
    EXPECT_EQ(station.Form().Window().chart.Count(), expected.starts ? 0 : 40);
  }
}

TEST(Unsaved, WithNobodyToAskItGoesToTheRecoveryFolder) {
  for (const bool ends : {false, true}) {
    Station station;
    station.Set("ShowMsgBox", false).Set("DiskBackUp", ends);
    RecordUnsaved(station);
    ends ? station.ShutDown() : (void)station.StartChart();
    ASSERT_EQ(station.FilesRescued().size(), 1u);
    EXPECT_EQ(station.FirstChannelIn(station.FilesRescued()[0]), Ramp(40));
  }
}

TEST(Unsaved, ACrashAfterTheStopFindsTheBackup) {
  Station station;
  RecordUnsaved(station);
  EXPECT_EQ(Marker(station), "Running");
  station.Kill();
  station.Boot();
  ASSERT_EQ(station.FilesRescued().size(), 1u);
  EXPECT_EQ(station.FirstChannelIn(station.FilesRescued()[0]), Ramp(40));
}

TEST(Unsaved, ACalledOffSaveGivesNothingUpThatTheDiskRefused) {
  Station station;
  station.StartChart();
  station.RunForSets(40);
  station.host.disk.SetCapacity(station.host.disk.Used() + 100);
  station.StopChart();
  station.Set("AutoSaveStandAlone", false).Set("PromptBeforeSaving", true);
  station.host.dialogs.ChooseFileNext(std::nullopt);
  station.Form().mnuSave();
  EXPECT_EQ(Marker(station), "Running");
  EXPECT_TRUE(station.Form().HasUnsavedSamples());
  station.host.disk.SetCapacity(SimDisk::kUnlimited);
  station.RunFor(60s);
  ASSERT_EQ(station.FilesSaved().size(), 1u);
  EXPECT_EQ(station.FirstChannelIn(station.FilesSaved()[0]), Ramp(40));
  EXPECT_EQ(Marker(station), "OK");
}

TEST(Unsaved, AMiniRunOfIntegersKeepsValuesThatAreTooLargeForThem) {
  Station station;
  station.uds.Measures([](std::int64_t set) {
    const double value = set == 50 ? 40000.5 : static_cast<double>(set);
    return std::vector<double>{value, -value};
  });
  station.Set("MiniServer", true).Set("SaveAsIntegers", true).Set("ChartWidth", 3).StartChart();
  station.RunForSets(120);
  station.StopChart();
  ASSERT_EQ(station.FilesSaved().size(), 1u);
  const std::vector<double> values = station.FirstChannelIn(station.FilesSaved()[0]);
  ASSERT_EQ(values.size(), 120u);
  EXPECT_EQ(values[50], 40000.5);
  EXPECT_EQ(values[119], 119);
  EXPECT_TRUE(station.Logged("exceed the limits of integers"));
}

TEST(Unsaved, ARunThatIsNotKeptWritesNoFragments) {
  Station station;
  station.Set("MiniServer", true).Set("DiskBackUp", false).Set("MaxArrayCount", 20).StartChart();
  station.RunFor(3s);
  EXPECT_NE(station.View().LeftStatus.find("NOT SAVING "), std::string::npos);
  station.RunForSets(70);
  station.StopChart();
  EXPECT_TRUE(station.FilesSaved().empty());
}

TEST(Unsaved, TheThresholdOfAMiniRunCountsWhatMemoryHasLetGo) {
  Station station;
  station.uds.Measures([](std::int64_t set) {
    return std::vector<double>{set == 20 ? 5000.0 : static_cast<double>(set), 0};
  });
  station.Set("MiniServer", true).Set("ChartWidth", 1).Set("SaveIF", 1).Set("SaveIFVal", 1000).StartChart();
  station.RunForSets(120);
  station.StopChart();
  ASSERT_EQ(station.FilesSaved().size(), 1u);
  EXPECT_EQ(station.FirstChannelIn(station.FilesSaved()[0]).size(), 120u);
}

TEST(Unsaved, AMiniRunWhoseBackupHasNoPlaceIsSavedFromMemory) {
  Station station;
  station.StartChart();
  station.RunForSets(40);
  station.Kill();
  station.host.disk.SetReadOnly("/station/Data/recovery", true);
  station.Set("MiniServer", true).Set("ChartWidth", 1).Set("MaxArrayCount", 60).StartChart();
  station.RunForSets(80);
  EXPECT_FALSE(station.Form().Window().save.keeping.BackupActive) << "what the crash left is in its place";
  station.RunForSets(140);
  station.StopChart();
  const std::vector<double> values = station.FirstChannelInFilesAndStore();
  ASSERT_EQ(values.size(), 100u);
  EXPECT_EQ(values.back() - values.front(), 99);
}

TEST(Unsaved, AChartThatARuleRefusedIsSavedByAYesAndLetGoWithoutIt) {
  for (const bool wanted : {false, true}) {
    Station station;
    station.Set("SaveIF", 1).Set("SaveIFVal", 1000).StartChart();
    station.RunForSets(40);
    station.StopChart();
    if (wanted) station.host.dialogs.AnswerNext(Answer::Yes);
    station.StartChart();
    EXPECT_TRUE(station.Running());
    EXPECT_EQ(station.FilesSaved().size(), wanted ? 1u : 0u);
    EXPECT_TRUE(station.FilesRescued().empty());
  }
  Station station;
  RecordUnsaved(station);
  station.StartChart();
  EXPECT_EQ(station.FilesSaved().size(), 1u) << "else Yes is the default";
}

TEST(Unsaved, AStartThatItsSourceRefusesLeavesTheOldChart) {
  for (const bool sound : {false, true}) {
    Station station;
    station.StartChart();
    station.RunForSets(40);
    station.StopChart();
    const std::string title = station.View().Title;
    if (sound) station.Set("Dsrc0", 1).Set("Dsrc1", 0).Set("SoundCardName", "loop:/nowhere.wav");
    station.Set("UDSport", 9).StartChart();
    EXPECT_FALSE(station.Running());
    EXPECT_TRUE(station.States().ToolCommands && station.States().InfoCommands) << "what can be done with it stays";
    EXPECT_EQ(station.Form().Window().chart.Count(), 40);
    EXPECT_EQ(station.View().Title, title);
    station.Form().mnuSave();
    EXPECT_EQ(station.FirstChannelIn(station.FilesSaved().back()), Ramp(40));
  }
}

}  // namespace
}  // namespace tarvolt
