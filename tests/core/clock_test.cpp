// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "station/station.h"

namespace tarvolt {
namespace {

using namespace std::chrono_literals;

void ExpectRisingStamps(const std::vector<Sample>& samples) {
  for (std::size_t i = 1; i < samples.size(); ++i) ASSERT_GT(samples[i].stamp, samples[i - 1].stamp) << i;
}

TEST(Clock, AStepBackDropsSamplesUntilTheClockHasCaughtUp) {
  Station station;
  station.StartChart().RunForSets(100);
  station.host.clock.StepWall(-60s);
  station.RunForSets(800).StopChart();
  const std::vector<Sample> samples = station.SamplesIn(station.FilesSaved().at(0));
  ExpectRisingStamps(samples);
  EXPECT_NEAR(static_cast<double>(samples.size()), 200, 2);
  EXPECT_EQ(samples[99].values[0], 99);
  EXPECT_NEAR(samples[100].values[0], 700, 2);
}

TEST(Clock, AFileWithoutStampsMissesNoSampleOverAStepBack) {
  Station station;
  station.Set("NoTimeStamps", true).StartChart().RunForSets(100);
  station.host.clock.StepWall(-60s);
  station.RunForSets(300);
  EXPECT_GT(station.Run().StepBack, 0);
  station.StopChart();
  EXPECT_EQ(station.FirstChannelIn(station.FilesSaved().at(0)), Ramp(300));
}

TEST(Clock, ARunInUtNoticesNothingOfSummerTimeAndALocalOneStepsWithTheClock) {
  SimZone zone;
  zone.biasMinutes = -60;
  zone.changes = {{{2026, 3, 29, 1, 0, 0, 0}, true}, {{2026, 10, 25, 1, 0, 0, 0}, false}};
  for (const WallTime& start : {WallTime{2026, 3, 29, 0, 59, 50, 0}, WallTime{2026, 10, 25, 0, 59, 50, 0}}) {
    Station station(1, start);
    station.host.clock.SetZone(zone);
    station.StartChart().RunForSets(300).StopChart();
    const std::vector<Sample> samples = station.SamplesIn(station.FilesSaved().at(0));
    ASSERT_EQ(samples.size(), 300u);
    for (int i = 0; i < 300; ++i) EXPECT_NEAR(samples[i].stamp, StampOf(start) + (i + 1) * 0.1 / 86400, 1e-8) << i;

    Station local(1, start);
    local.host.clock.SetZone(zone);
    local.Set("LogUsingUT", false).StartChart().RunForSets(300).StopChart();
    ExpectRisingStamps(local.SamplesIn(local.FilesSaved().at(0)));
    // In spring the clock jumps ahead; in autumn the hour that comes again is left out.
    EXPECT_NEAR(static_cast<double>(local.SamplesIn(local.FilesSaved().at(0)).size()), start.month == 3 ? 300 : 100, 1);
  }
}

TEST(Clock, TheSessionLogSaysTheNewDateAfterMidnight) {
  Station station(1, {2028, 2, 29, 23, 59, 50, 0});
  station.Set("AutoSaveSessionLog", true).StartChart().RunFor(30s).StopChart();
  const std::string log = station.Log();
  const std::size_t date = log.find("280301 (YYMMDD) UT");
  ASSERT_NE(date, std::string::npos) << log;
  EXPECT_GT(date, log.find("Chart Started  280229235950"));
  EXPECT_LT(date, log.find(" Chart Stopped"));
  bool inFile = false;
  for (const auto& [name, bytes] : station.host.disk.AllFiles()) {
    if (name.ends_with("SessionLog.txt")) inFile = bytes.find("280301 (YYMMDD) UT\r\n") != std::string::npos;
  }
  EXPECT_TRUE(inFile);
}

// Eight channels at a hundred samples a second for a day, with a planned restart at midnight.
TEST(LongRun, ADayOfEightChannelsLosesNoSample) {
  Station station(1, {2010, 1, 2, 12, 0, 0, 0});
  for (int channel = 0; channel < 8; ++channel) station.Set("Dsrc" + std::string(1, '0' + channel), 20 + channel);
  station.Set("UseRestartTime", true).Set("RestartTime", "00:00:00").Set("MaxArrayCount", 20000000);
  station.uds.Channels(8).PushesEvery(10ms).Measures([](std::int64_t set) {
    std::vector<double> values(8);
    for (int channel = 0; channel < 8; ++channel) values[channel] = static_cast<double>(set % 1000 + channel);
    return values;
  });
  station.StartChart();
  constexpr std::int64_t kSets = 86400 * 100;
  station.RunForSets(kSets).StopChart();
  ASSERT_EQ(station.FilesSaved().size(), 2u);
  std::int64_t expected = 0;
  for (const std::string& file : station.FilesSaved()) {
    const std::vector<double> values = station.FirstChannelIn(file);
    for (const double value : values) ASSERT_EQ(value, static_cast<double>(expected++ % 1000));
  }
  EXPECT_EQ(expected, kSets);
}

}  // namespace
}  // namespace tarvolt
