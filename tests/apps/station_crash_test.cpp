// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <csignal>
#include <random>
#include <set>

#include "apps/station.h"
#include "apps/test_source.h"

namespace tarvolt {
namespace {

constexpr int kKills = 20;
constexpr int kPushPeriod = 5;            // milliseconds
constexpr int kBurst = 60;                // sets
constexpr unsigned kWorkOnBurst = 30000;  // microseconds, at most
constexpr double kStep = 0.0625;          // seconds between two stamps: a log of twenty has a name of its own

TimeStamp StampOf(double n) {
  return 46348 + n * kStep / 86400;
}

/// Pushes a ramp until the first value lies in the backup and then for a while. A last burst keeps the station at work,
/// and in the middle of that it is killed. The last value that was seen in the backup.
double RecordAndKill(const Home& home, RunningStation& station, TestSource& source, std::mt19937& random) {
  int left = std::uniform_int_distribution<int>(50, 400)(random);
  double seen = -1;
  int next = 0;
  const auto push = [&] {
    source.SendSet({static_cast<double>(next), -0.5 * next}, StampOf(next));
    ++next;
  };
  while (next < 2000 && left > 0) {
    push();
    poll(nullptr, 0, kPushPeriod);
    const Recorded backup = ReadRecorded(home.Backup());
    if (!backup.samples.empty()) seen = backup.samples.back()[0];
    if (seen >= 0) left -= kPushPeriod;
  }
  for (int n = 0; n < kBurst; ++n) push();
  usleep(std::uniform_int_distribution<unsigned>(0, kWorkOnBurst)(random));
  station.Signal(SIGKILL);
  station.ExitStatus();
  return seen;
}

/// The values in all files, each one once: saved logs and the rescued backup may overlap by a log that was saved a
/// moment before the kill.
std::set<double> RampInFiles(const Home& home) {
  std::set<double> ramp;
  for (const auto& file : home.DataFiles()) {
    const Recorded recorded = ReadRecorded(file);
    for (std::size_t i = 0; i < recorded.samples.size(); ++i) {
      const double value = recorded.samples[i][0];
      EXPECT_EQ(recorded.samples[i], (std::vector<double>{value, -0.5 * value})) << file;
      EXPECT_EQ(recorded.times[i], StampOf(value)) << file;
      ramp.insert(value);
    }
  }
  return ramp;
}

// Every second run turns its log over ten times a second, so that kills come in the middle of saves.
TEST(StationCrash, KilledAtAnyMomentItLosesNoSample) {
  TestSource source;
  std::mt19937 random(20261122);
  std::size_t files = 0;
  for (int run = 0; run < kKills; ++run) {
    SCOPED_TRACE(run);
    const Home home;
    RunningStation station(home, Recording(source.Port(), {run % 2 == 0 ? "MaxArrayCount=1000" : "MaxArrayCount=20"}));
    ASSERT_TRUE(source.Accept()) << station.Output();
    source.BeginRun(2);
    const double seen = RecordAndKill(home, station, source, random);
    ASSERT_GE(seen, 0);
    RunningStation next(home, {});
    ASSERT_TRUE(next.WaitFor("Recovery Alert")) << next.Output();
    const std::set<double> ramp = RampInFiles(home);
    ASSERT_FALSE(ramp.empty());
    EXPECT_EQ(*ramp.begin(), 0);
    EXPECT_EQ(*ramp.rbegin(), static_cast<double>(ramp.size() - 1));
    EXPECT_GE(*ramp.rbegin(), seen);
    files += home.DataFiles().size();
    next.Signal(SIGTERM);
    EXPECT_EQ(next.ExitStatus(), 0);
    if (run > 0) continue;
    RunningStation clean(home, {});
    ASSERT_TRUE(clean.WaitFor("Identity"));
    clean.Signal(SIGTERM);
    EXPECT_EQ(clean.ExitStatus(), 0);
    EXPECT_FALSE(clean.Printed("Recovery Alert")) << clean.Output();
  }
  EXPECT_GT(files, 1.5 * kKills);  // logs were turned over
}

}  // namespace
}  // namespace tarvolt
