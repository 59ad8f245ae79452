#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <map>
#include <random>

#include "apps/station.h"
#include "apps/test_source.h"

namespace tarvolt {
namespace {

constexpr int kKills = 20;
constexpr int kPushPeriod = 5;            // milliseconds
constexpr int kBurst = 60;                // sets
constexpr unsigned kWorkOnBurst = 30000;  // microseconds, at most
constexpr double kStep = 0.0625;          // seconds between two stamps: a log of twenty has a name of its own
constexpr TimeStamp kStart = 46348;

/// The stamp of set `n` of run `run`.
TimeStamp StampOf(int run, double n) {
  return kStart + run * 600.0 / 86400 + n * kStep / 86400;
}

/// Pushes a ramp until the first value lies in the backup and then for a while. A last burst keeps the station at work,
/// and in the middle of that it is killed. The last value that was seen in the backup.
double RecordAndKill(const Home& home, RunningStation& station, TestSource& source, int run, std::mt19937& random) {
  int left = std::uniform_int_distribution<int>(50, 400)(random);
  double seen = -1;
  int next = 0;
  const auto push = [&] {
    source.SendSet({static_cast<double>(next), -0.5 * next}, StampOf(run, next));
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

using FileContents = std::map<std::filesystem::path, std::string>;

FileContents ReadAll(const Home& home) {
  FileContents contents;
  for (const auto& file : home.DataFiles()) contents[file] = BytesOf(file);
  return contents;
}

/// The values of run `run` in the files that are new since `before`, each one once. Saved logs and the rescued backup
/// may overlap by a log that was saved a moment before the kill.
std::vector<double> RampInNewFiles(const FileContents& before, const FileContents& now, int run) {
  std::vector<double> ramp;
  for (const auto& [file, bytes] : now) {
    if (before.count(file) > 0) continue;
    const Recorded recorded = ReadRecorded(file);
    for (std::size_t i = 0; i < recorded.samples.size(); ++i) {
      const double value = recorded.samples[i][0];
      EXPECT_EQ(recorded.samples[i], (std::vector<double>{value, -0.5 * value})) << file;
      EXPECT_EQ(recorded.times[i], StampOf(run, value)) << file;
      ramp.push_back(value);
    }
  }
  std::sort(ramp.begin(), ramp.end());
  ramp.erase(std::unique(ramp.begin(), ramp.end()), ramp.end());
  return ramp;
}

void ExpectKept(const FileContents& before, const FileContents& now) {
  for (const auto& [file, bytes] : before) {
    const auto kept = now.find(file);
    EXPECT_TRUE(kept != now.end() && kept->second == bytes) << file;
  }
}

std::ptrdiff_t CountRescued(const FileContents& contents) {
  return std::count_if(contents.begin(), contents.end(),
                       [](const auto& file) { return file.first.parent_path().filename() == "recovery"; });
}

/// A station has started after the kill of run `run`, in which `seen` had been on the disk.
void ExpectRescued(RunningStation& station, const Home& home, int run, double seen, FileContents& before) {
  ASSERT_TRUE(station.WaitFor("Recovery Alert")) << station.Output();
  FileContents now = ReadAll(home);
  ExpectKept(before, now);
  EXPECT_EQ(CountRescued(now) - CountRescued(before), 1);
  const std::vector<double> ramp = RampInNewFiles(before, now, run);
  ASSERT_FALSE(ramp.empty());
  EXPECT_EQ(ramp.front(), 0);
  EXPECT_EQ(ramp.back(), static_cast<double>(ramp.size() - 1));
  EXPECT_GE(ramp.back(), seen);
  before = std::move(now);
}

// Every second run turns its log over ten times a second, so that kills come in the middle of saves.
TEST(StationCrash, KilledAtAnyMomentItLosesNoSample) {
  const Home home;
  TestSource source;
  std::mt19937 random(20261122);
  FileContents files;
  double seen = -1;
  for (int run = 0; run < kKills; ++run) {
    SCOPED_TRACE(run);
    RunningStation station(home, Recording(source.Port(), {run % 2 == 0 ? "MaxArrayCount=1000" : "MaxArrayCount=20"}));
    ASSERT_TRUE(source.Accept()) << station.Output();
    if (run > 0) {
      ASSERT_NO_FATAL_FAILURE(ExpectRescued(station, home, run - 1, seen, files));
    }
    source.BeginRun(2);
    seen = RecordAndKill(home, station, source, run, random);
    ASSERT_GE(seen, 0);
  }
  RunningStation last(home, {});
  ASSERT_NO_FATAL_FAILURE(ExpectRescued(last, home, kKills - 1, seen, files));
  last.Signal(SIGTERM);
  EXPECT_EQ(last.ExitStatus(), 0);
  EXPECT_GT(files.size(), 1.5 * kKills);  // logs were turned over

  RunningStation clean(home, {});
  ASSERT_TRUE(clean.WaitFor("Identity"));
  clean.Signal(SIGTERM);
  EXPECT_EQ(clean.ExitStatus(), 0);
  EXPECT_FALSE(clean.Printed("Recovery Alert")) << clean.Output();
}

}  // namespace
}  // namespace tarvolt
