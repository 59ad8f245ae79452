// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cmath>

#include "station/on_a_station.h"
#include "timebase/time_stamp.h"

namespace tarvolt {
namespace {

using namespace std::chrono_literals;

using RunOfAStation = OnAStation;

TEST_F(RunOfAStation, PushedSetsBecomeSamplesOfTheirChannels) {
  station.StartChart();
  EXPECT_EQ(station.Run().chartState(), ChartState::Armed);
  station.RunForSets(50);
  EXPECT_EQ(station.Run().chartState(), ChartState::Running);
  EXPECT_EQ(station.States().StartCaption, "&Stop Chart");
  const std::vector<Sample> samples = station.Stored();
  ASSERT_EQ(samples.size(), 50u);
  for (int i = 0; i < 50; ++i) EXPECT_EQ(samples[i].values, (std::vector<double>{1.0 * i, -1.0 * i}));
  station.StopChart();
  EXPECT_EQ(station.States().StartCaption, "&Start Chart");
  EXPECT_EQ(station.OnlySaved(), Ramp(50));
  EXPECT_TRUE(station.Logged(" Chart Stopped (Avg Rate .1)")) << station.Log();
}

TEST_F(RunOfAStation, APolledSourceIsAskedOnceATickAndNeverWhileItAnswers) {
  station.uds.AnswersAfter(30ms);
  station.Set("UDSpush", false).Set("SampleRate", 70).StartChart().RunFor(10s).StopChart();
  EXPECT_EQ(station.uds.SetsSent(), 100);  // the period is the interval and the length of the tick
  ASSERT_EQ(station.FilesSaved().size(), 1u);
  const std::vector<double> values = station.FirstChannelIn(station.FilesSaved()[0]);
  EXPECT_GE(values.size(), 99u);
  EXPECT_EQ(values, Ramp(static_cast<int>(values.size())));
}

TEST_F(RunOfAStation, AveragesAreTheMeanOfTheReadsAndOnlyWholeOnesAreStored) {
  station.Set("vAvg", 4).StartChart().RunForSets(43);
  const std::vector<Sample> samples = station.Stored();
  ASSERT_EQ(samples.size(), 10u);
  for (int i = 0; i < 10; ++i) EXPECT_EQ(samples[i].values[0], 4 * i + 1.5);
}

TEST_F(RunOfAStation, OffsetsAreInTheStoreOnlyWhenTheyAreAskedFor) {
  Station plain;
  plain.Set("Channel0Offset", 1000).StartChart().RunForSets(3);
  EXPECT_EQ(plain.Stored()[1].values[0], 1);
  Station moved;
  moved.Set("Channel0Offset", 1000).Set("UseOffsets", true).StartChart().RunForSets(3);
  EXPECT_EQ(moved.Stored()[1].values[0], 1001);
  EXPECT_EQ(moved.Stored()[1].values[1], -1);
}

// UT is the simulated machine's wall clock; the zone is two hours east.
class StampTest : public ::testing::Test {
 protected:
  StampTest() {
    SimZone zone;
    zone.biasMinutes = -120;
    station_.host.clock.SetZone(zone);
  }

  // The stamp of each sample beside the UT moment at which its set was sent.
  std::vector<std::pair<TimeStamp, TimeStamp>> Record() {
    std::vector<TimeStamp> moments;
    station_.uds.Measures([&](std::int64_t set) {
      moments.push_back(StampOf(station_.host.clock.UtNow()));
      return std::vector<double>{1.0 * set, 0};
    });
    station_.StartChart().RunForSets(station_.uds.SetsSent() + 300);
    std::vector<std::pair<TimeStamp, TimeStamp>> pairs;
    const std::vector<Sample> samples = station_.Stored();
    EXPECT_EQ(samples.size(), 300u);
    for (std::size_t i = 0; i < samples.size(); ++i) pairs.emplace_back(samples[i].stamp, moments[i]);
    return pairs;
  }

  Station station_;
};

TEST_F(StampTest, StampsAreTheClockOrItLessItsZone) {
  for (const bool ut : {true, false}) {
    station_.Set("LogUsingUT", ut);
    for (const auto& [stamp, moment] : Record()) EXPECT_NEAR(stamp, moment + (ut ? 0 : 2.0 / 24), kMillisecond);
    station_.StopChart();
  }
}

TEST_F(StampTest, SiderealStampsRunFromUtWhateverTheBaseOfOtherRuns) {
  for (const bool ut : {true, false}) {
    station_.Set("LogLMST", true).Set("LogUsingUT", ut).Set("UserLng", 83);
    for (const auto& [stamp, moment] : Record()) {
      // Greenwich mean sidereal time by the short expression of the almanacs, good to a hundredth of a second.
      const double days = moment + 2415018.5 - 2451545.0;
      const double hours = std::fmod(18.697374558 + 24.06570982441908 * days - 83.0 / 15, 24);
      const double sidereal = (hours < 0 ? hours + 24 : hours) / 24;
      EXPECT_NEAR(stamp - std::floor(stamp), sidereal, 20 * kMillisecond);
    }
    station_.StopChart();
  }
}

TEST_F(StampTest, ASourceThatStampsIsTheClock) {
  station_.uds.StampsWith([](std::int64_t set) { return 40180.25 + set / 86400.0; });
  const auto pairs = Record();
  ASSERT_EQ(pairs.size(), 300u);
  for (int i = 0; i < 300; ++i) EXPECT_EQ(pairs[i].first, 40180.25 + i / 86400.0);
}

TEST_F(RunOfAStation, WithTimeRefZeroTheFirstSampleStandsAtMidnightAndTheNameKeepsTheTime) {
  Station other(1, {2010, 1, 2, 13, 20, 0, 0});
  other.Set("TimeRefZero", true).StartChart().RunForSets(20).StopChart();
  ASSERT_EQ(other.FilesSaved().size(), 1u);
  EXPECT_NE(other.FilesSaved()[0].find("UT100102132000"), std::string::npos) << other.FilesSaved()[0];
  const std::vector<Sample> samples = other.SamplesIn(other.FilesSaved()[0]);
  const TimeStamp midnight = StampOf({2010, 1, 2, 0, 0, 0, 0});
  EXPECT_NEAR(samples[0].stamp, midnight + 0.1 / 86400, 2 * kMillisecond);
  EXPECT_NEAR(samples[10].stamp - samples[0].stamp, 1.0 / 86400, kMillisecond);
}

TEST_F(RunOfAStation, TheFirstTickWaitsForTheSecond) {
  Station other(1, {2010, 1, 2, 12, 0, 0, 137});
  other.Set("UDSpush", false).Set("StartOnSecondBoundary", true).Set("SampleRate", 250).StartChart().RunFor(3s);
  EXPECT_EQ(FieldsOf(other.Stored().at(0).stamp).millisecond, 0);
}

TEST_F(RunOfAStation, RefusalsAreToldAndLeaveTheProgramIdle) {
  const std::vector<std::tuple<std::string, std::string, std::string>> cases = {
      {"Dsrc0", "0",
       "You must select a data source for channel one.\n\nGo to Options / Data Source and select a source."},
      {"Dsrc1", "1", "no sound card is available"},
      {"Dsrc1", "3", "MAX187 ADC"},
      {"vAvg", "0", "Must have greater than zero samples to average."},
      {"SampleRate", "9.9", "Sample Rate must be 10 milliseconds or greater."},
      {"TimerType", "1", "The sound card is set as the timing method but no sound card is available."},
      {"ChartWidth", "0.5", "Chart Width must be 1 or more seconds."},
      {"UDSport", "9", "UDS Connection Canceled - Chart Canceled"}};
  for (const auto& [key, value, words] : cases) {
    Station other;
    other.Set("UDSpush", false).Set(key, value).StartChart();
    EXPECT_TRUE(other.host.dialogs.HasShown(words)) << key;
    EXPECT_FALSE(other.Running()) << key;
    EXPECT_TRUE(other.States().cmdStart && other.States().ModeMenus) << key;
    EXPECT_EQ(other.Setting("LocalRun"), "OK") << key;
    other.RunFor(60s);
    EXPECT_TRUE(other.FilesSaved().empty()) << key;
  }
}

TEST_F(RunOfAStation, WithMessagesOffNothingAsksAndTheLogStillTells) {
  station.Set("ShowMsgBox", false).Set("PromptBeforeSaving", true).Set("vAvg", 0).StartChart();
  EXPECT_TRUE(station.Logged("Must have greater than zero samples to average."));
  station.Set("vAvg", 1).StartChart().RunForSets(30).StopChart();
  EXPECT_EQ(station.FilesSaved().size(), 1u);
  EXPECT_TRUE(station.host.dialogs.Boxes().empty());
}

TEST_F(RunOfAStation, ALinkThatBreaksEndsTheRunWithItsDataSaved) {
  station.StartChart().RunForSets(40);
  station.uds.BreakLink();
  station.RunFor(1s);
  EXPECT_FALSE(station.Running());
  EXPECT_TRUE(station.Logged("Lost UDS Connection Stopping Chart."));
  EXPECT_EQ(station.OnlySaved(), Ramp(40));
}

TEST_F(RunOfAStation, APolledSourceThatFallsSilentHoldsTheReadUntilTheEndIsAskedFor) {
  station.uds.FallsSilentAt(20);
  station.Set("UDSpush", false).StartChart();
  station.host.loop.After(1min, [&] { station.Form().RequestEnd(); });
  station.host.loop.RunUntil([&] { return station.Run().EndRequested; }, 5min);
  station.RunFor(1s);
  EXPECT_FALSE(station.Running());
  EXPECT_EQ(station.OnlySaved(), Ramp(20));
}

TEST_F(RunOfAStation, AProfileLoadedMeanwhileLeavesTheRunAsItIs) {
  station.host.disk.Put("/station/other.tvp",
                        "vAvg = 5;\r\nDsrc0 = 22;\r\nUDSpush = False;\r\nDataDirectory = /station/Data;\r\n");
  station.StartChart().RunForSets(30);
  station.TheSession().overrides.clear();
  station.uds.Send("^^1002/PF |station|other.tvp");
  station.RunForSets(60);
  EXPECT_TRUE(station.Logged("Loaded Profile other.tvp"));
  EXPECT_EQ(station.TheSession().settings.timing.vAvg, 5);
  station.StopChart();
  EXPECT_EQ(station.FirstChannelInFilesAndStore(), Ramp(60));
}

TEST_F(RunOfAStation, WordsFromTheSourceCannotForgeALineOfTheLog) {
  station.StartChart();
  station.uds.Send("^^1002/BAD\r\n12:00:00 Saved\x1b[2J");
  station.RunForSets(5);
  EXPECT_EQ(station.Log().find("\n12:00:00 Saved"), std::string::npos);
  EXPECT_EQ(station.Log().find('\x1b'), std::string::npos);
  EXPECT_TRUE(station.Running());
}

TEST_F(RunOfAStation, TheEndIsObeyedWhileTheSourceIsAwaited) {
  station.Set("StartUDS", true).Set("UDSexe", "/opt/receiver").Boot();
  station.host.loop.After(10s, [&] { station.Form().RequestEnd(); });
  station.host.loop.After(20s, [&] { station.host.processes.OpenWindow("User Data Source"); });
  const double before = station.host.clock.MonotonicMilliseconds();
  station.StartChart();
  EXPECT_FALSE(station.Running());
  EXPECT_LT(station.host.clock.MonotonicMilliseconds() - before, 11000);
}

TEST_F(RunOfAStation, AFolderGivenForThisRunAloneIsNotStoredWhenItIsMissing) {
  station.Boot();
  const std::string stored = station.Setting("DataDirectory");
  station.Set("DataDirectory", "/nowhere/at/all").StartChart();
  EXPECT_TRUE(station.Running());
  EXPECT_TRUE(station.host.dialogs.HasShown("Your specified Data Directory:"));
  EXPECT_EQ(station.Setting("DataDirectory"), stored);
}

TEST_F(RunOfAStation, TheRateIsShownEachSecond) {
  station.StartChart().RunFor(10500ms);
  EXPECT_EQ(station.View().LeftStatus, "Data Samp/Sec 10.0   Samples: 99");
  EXPECT_EQ(station.View().RightStatus, "12:00:10 UT");
  Station slow;
  slow.uds.PushesEvery(5s);
  slow.Set("SampleRate", 5000).StartChart().RunFor(110s);
  EXPECT_EQ(slow.View().LeftStatus, "Data Sec/Sample 5.000   Samples: 21");
}

TEST_F(RunOfAStation, TheFileTellsHowItWasRecorded) {
  station.Set("ServerEmail", "me@observatory.org").Set("LocalName", "Hill").StartChart().RunForSets(10).StopChart();
  for (const char* item : {"Logged Using UT", "CHL0CH 1", "CHO10",
                           "Requested Sample Period: \xC8"
                           "100",
                           "UDS Data: \xC8Pushed", "Email\xC8me@observatory.org", "UDS CH2"}) {
    EXPECT_TRUE(station.LastFileHolds(item)) << item;
  }
}

}  // namespace
}  // namespace tarvolt
