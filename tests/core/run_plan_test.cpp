// SPDX-License-Identifier: GPL-3.0-or-later
// What changes the settings in a run changes the next log or the next run, and never the samples under way.
#include <gtest/gtest.h>

#include "station/on_a_station.h"

namespace tarvolt {
namespace {

using namespace std::chrono_literals;

using RunPlan = OnAStation;
using RunEvents = OnAStation;

// Even stamps a tenth of a second apart, from the first on.
void ExpectEvenStamps(const std::vector<Sample>& samples, std::size_t count) {
  ASSERT_EQ(samples.size(), count);
  for (std::size_t i = 1; i < count; ++i) {
    ASSERT_NEAR((samples[i].stamp - samples[i - 1].stamp) * 86400, 0.1, 0.01) << i;
  }
}

TEST_F(RunPlan, NoSettingMovesTheTimeBaseOrTheSamplesOfALog) {
  SimZone three;
  three.biasMinutes = -180;
  for (const auto& [key, value] : {std::pair("DetectTZ", "True"),
                                   {"LogLMST", "True"},
                                   {"LogUsingUT", "False"},
                                   {"TimeRefZero", "True"},
                                   {"NoTimeStamps", "True"},
                                   {"SaveAsIntegers", "True"},
                                   {"Dsrc0", "27"},
                                   {"Dsrc1", "0"},
                                   {"vAvg", "10"},
                                   {"SampleRate", "5000"},
                                   {"UDSpush", "False"}}) {
    Station other;
    other.host.clock.SetZone(three);
    other.Set("DetectTZ", false).Set("TZ", 0).StartChart().RunForSets(30);
    other.Set(key, value).Set("TZ", 5).RunForSets(60).StopChart();
    ExpectEvenStamps(other.SamplesIn(other.FilesSaved().at(0)), 60);
    EXPECT_EQ(other.OnlySaved(), Ramp(60)) << key;
  }
}

TEST_F(RunPlan, ASiderealLogAfterOneFromMidnightHasSiderealStamps) {
  Station other(1, {2010, 1, 2, 13, 20, 0, 0});
  other.Set("TimeRefZero", true).Set("MaxArrayCount", 50).StartChart().RunForSets(20);
  other.Set("LogLMST", true).RunForSets(90);
  EXPECT_TRUE(other.Run().ChartIsLMST);
  EXPECT_FALSE(other.Run().log.TimeRefZero);
  EXPECT_GE(other.Chart().GetTime(0), other.Run().time.startLMST);
  EXPECT_EQ(other.FirstChannelInFilesAndStore(), Ramp(90));
}

TEST_F(RunPlan, AChangeWhileTheSourceConnectsDoesNotSplitTheTimeBase) {
  for (const bool lmst : {true, false}) {
    Station other;
    other.host.sound.Plug("USB,0: Receiver, Line", [](std::int64_t) { return std::pair(1000, 1000); });
    other.Set("Dsrc0", 1).Set("Dsrc1", 20).Set("sWavFormat", 8).Set("TimerType", 1).Set("UDSpush", false);
    other.Set("LogLMST", !lmst);
    other.uds.AnswersAfter(2s);
    other.host.loop.After(1s, [&] { other.Set("LogLMST", lmst); });
    other.StartChart();
    other.uds.AnswersAfter(0ms);
    other.RunFor(5s);
    EXPECT_TRUE(other.Running());
    EXPECT_EQ(other.Run().ChartIsLMST, !lmst);
    EXPECT_GT(other.Chart().Count(), 40);
  }
}

TEST_F(RunPlan, WhatIsSavedAtTheStopIsSettledWhenTheLogBegins) {
  station.Set("AutoSaveStandAlone", true).StartChart().RunForSets(20);
  station.Set("SaveIF", 1).Set("SaveIFVal", 1000).Set("AutoSaveStandAlone", false);
  station.RunForSets(30).StopChart();
  EXPECT_EQ(station.OnlySaved(), Ramp(30));
}

TEST_F(RunPlan, ABackupSwitchedOffInARunStillHoldsTheLog) {
  station.Set("MaxArrayCount", 50).StartChart().RunForSets(20);
  station.Set("DiskBackUp", false).RunForSets(40);
  const auto& keeping = station.Form().Window().save.keeping;
  EXPECT_EQ(station.FirstChannelIn(keeping.LocalBackupFile.string()), Ramp(40));
  station.RunForSets(70);
  EXPECT_FALSE(keeping.BackupActive) << "the next log takes the change up";
}

TEST_F(RunPlan, ARestartComesAtItsTimeAlsoFromMidnightStamps) {
  Station other(1, {2010, 1, 2, 13, 20, 0, 0});
  other.Set("TimeRefZero", true).Set("UseRestartTime", true).Set("RestartTime", "13:21:00").StartChart().RunFor(2min);
  EXPECT_FALSE(other.Running()) << "it ends the run, as stamps from midnight cannot go on";
  ASSERT_EQ(other.FilesSaved().size(), 1u);
  EXPECT_NEAR(static_cast<double>(other.FirstChannelIn(other.FilesSaved()[0]).size()), 600, 2);
}

TEST_F(RunPlan, AChangedRestartTimeCountsFromTheNextLogOn) {
  Station other(1, {2010, 1, 2, 12, 0, 0, 0});
  other.Set("UseRestartTime", true).Set("RestartTime", "12:01:00").Set("LogLMST", false).StartChart().RunFor(10s);
  other.Set("RestartTime", "12:02:00").RunFor(170s).StopChart();
  ASSERT_EQ(other.FilesSaved().size(), 3u);
  EXPECT_NEAR(static_cast<double>(other.FirstChannelIn(other.FilesSaved()[1]).size()), 600, 2);
}

TEST_F(RunPlan, ARestartChangedInTheOptionsOfASiderealRunDoesNotFireAtOnce) {
  Station other(1, {2010, 1, 2, 12, 0, 0, 0});
  other.Set("UseRestartTime", true).Set("LogLMST", true).Set("UserLng", 0).StartChart().RunFor(10s);
  for (const char* time : {"12:05:00", "18:55:00"}) {
    EXPECT_FALSE(other.Form().Options().Confirm({{"RestartTime", time}}, {}));
    other.RunFor(20s);
    EXPECT_TRUE(other.FilesSaved().empty()) << time;
  }
  EXPECT_TRUE(other.Logged("The restart time counts from the next log on."));
}

TEST_F(RunPlan, LaterLogsNameTheSourcesAndEquationsOfTheRun) {
  station.Set("MetaDataActive", 1).Set("MaxArrayCount", 20).StartChart().RunForSets(10);
  station.Set("Dsrc0", 22).Set("ApplyToIncoming", true).Set("Equ0", "X*2").Set("ApplyToCH0", 1);
  station.RunForSets(50).StopChart();
  EXPECT_TRUE(station.LastFileHolds("UDS CH1"));
  EXPECT_FALSE(station.LastFileHolds("UDS CH3") || station.LastFileHolds("Equation Applied"));
}

TEST_F(RunPlan, AFactorOfTheCardChangesWithTheNextRun) {
  station.host.sound.Plug("USB,0: Receiver, Line", [](std::int64_t) { return std::pair(1000, 1000); });
  station.Set("Dsrc0", 1).Set("Dsrc1", 0).Set("Detection0", 3).Set("sWavFormat", 8).Set("Pbuffer", 800);
  station.Set("MaxArrayCount", 50).Set("PwrMultiL", 2000).Set("LCHbkgnd0", 0).StartChart().RunFor(2s);
  station.Set("PwrMultiL", 1000).Set("LCHbkgnd0", 900).RunFor(6s).StopChart();
  const std::vector<double> values = station.FirstChannelInFilesAndStore();
  ASSERT_GT(values.size(), 60u);
  for (const double value : values) ASSERT_EQ(value, 500);
}

TEST_F(RunPlan, ASourceThatDeclaresMoreChannelsThanTheTableHasRowsIsRecordedWhole) {
  station.Set("Dsrc0", 21).Set("Dsrc1", 20);
  station.uds.Channels(4).Measures([](std::int64_t set) {
    const auto n = static_cast<double>(set);
    return std::vector<double>{n, -n, 100 + n, 200 + n};
  });
  station.StartChart().RunForSets(20).StopChart();
  const std::string file = station.FilesSaved().at(0);
  EXPECT_EQ(station.SamplesIn(file).at(7).values, (std::vector<double>{-7, 7, 107, 207}));
  EXPECT_TRUE(station.Logged("Recorded as well: UDS CH3, UDS CH4."));
  EXPECT_TRUE(station.LastFileHolds("UDS CH4")) << "in the metadata too";
}

class Failing final : public RunListener {
 public:
  void SampleFinished(const FinishedSample&) override { throw std::runtime_error("out of order"); }
};

TEST_F(RunEvents, AListenerThatFailsIsNamedOncePerLogAndCostsNoSample) {
  Failing failing;
  station.Boot();
  station.Form().Events().Add(failing, "broken listener");
  station.StartChart().RunForSets(30).StopChart();
  EXPECT_EQ(station.FirstChannelInFilesAndStore(), Ramp(30));
  EXPECT_EQ(station.LogLines("The broken listener failed: out of order"), 1);
}

}  // namespace
}  // namespace tarvolt
