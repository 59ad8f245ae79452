// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <map>

#include "station/station.h"

namespace tarvolt {
namespace {

using namespace std::chrono_literals;

// Every value that the store had accepted before the crash must stand in a saved or rescued file; a rescued one may
// repeat what was saved a moment before.
void ExpectNothingLost(Station& station, std::int64_t accepted, const std::string& what) {
  std::map<double, int> found;
  for (const auto& files : {station.FilesSaved(), station.FilesRescued()}) {
    for (const std::string& file : files) {
      for (const double value : station.FirstChannelIn(file)) ++found[value];
    }
  }
  for (std::int64_t value = 0; value < accepted; ++value) {
    EXPECT_TRUE(found.count(static_cast<double>(value))) << value << " of " << accepted << " is lost: " << what;
  }
}

// A program dies in its n-th disk operation, for every n that a short run with turnovers has; and it must be as if the
// observer had only been away for a while.
TEST(Crash, AtEveryDiskOperationNothingAcceptedIsLost) {
  int crashes = 0;
  for (std::uint64_t seed = 1; seed <= 12; ++seed) {
    for (std::uint64_t operation = 1; operation < 400; ++operation) {
      Station station(seed);
      station.Set("MaxArrayCount", 12).Set("ShowMsgBox", true);
      std::int64_t accepted = 0;
      std::map<std::string, std::string> before;
      station.Boot();
      station.host.disk.CrashAtOperation(operation, seed * 1000 + operation);
      const bool crashed = station.Crashes([&] {
        station.StartChart();
        while (station.uds.SetsSent() < 40) {
          station.RunFor(100ms);
          accepted = station.uds.SetsSent();
          for (const std::string& file : station.FilesSaved()) before[file] = *station.host.disk.Contents(file);
        }
        station.StopChart().ShutDown();
      });
      if (!crashed) break;
      ++crashes;
      station.Boot();
      const std::string what = "operation " + std::to_string(operation) + ", seed " + std::to_string(seed);
      ExpectNothingLost(station, accepted, what);
      for (const auto& [file, bytes] : before) EXPECT_EQ(station.host.disk.Contents(file), bytes) << file << what;
      if (!station.FilesRescued().empty()) {
        EXPECT_TRUE(station.host.dialogs.HasShown("Recovery Alert")) << what;
        EXPECT_TRUE(station.host.dialogs.HasShown(station.FilesRescued()[0])) << what;
      }
    }
  }
  EXPECT_GT(crashes, 1000);
}

// The death of a process between two events, with a network that splits and delays.
TEST(Crash, AProgramKilledAnywhereIsRescuedUpToItsLastSample) {
  for (std::uint64_t seed = 1; seed <= 100; ++seed) {
    Station station(seed);
    station.Set("MaxArrayCount", 30).StartChart().RunFor(std::chrono::milliseconds(137 * seed));
    const std::int64_t accepted = station.uds.SetsSent();
    station.Kill().Boot();
    ExpectNothingLost(station, accepted, "seed " + std::to_string(seed));
    station.StartChart().RunFor(1s);
    EXPECT_TRUE(station.Running());
  }
}

// Nothing but what was synced is sure to survive a power cut.
TEST(Crash, APowerCutCostsAtMostTheLastSeconds) {
  for (std::uint64_t seed = 1; seed <= 30; ++seed) {
    Station station(seed);
    station.host.disk.SetPowerLoss(true);
    station.StartChart().RunFor(std::chrono::milliseconds(20000 + 337 * seed));
    const std::int64_t accepted = station.uds.SetsSent();
    station.Kill().Boot();
    ASSERT_EQ(station.FilesRescued().size(), 1u) << seed;
    const std::vector<double> values = station.FirstChannelIn(station.FilesRescued()[0]);
    EXPECT_EQ(values, Ramp(static_cast<int>(values.size())));
    EXPECT_GE(static_cast<std::int64_t>(values.size()), accepted - 61) << seed;
  }
}

TEST(Crash, ACleanEndLeavesNothingToRescue) {
  Station station;
  station.StartChart().RunForSets(20).ShutDown().Boot();
  EXPECT_TRUE(station.FilesRescued().empty());
  EXPECT_FALSE(station.host.dialogs.HasShown("Recovery Alert"));
  EXPECT_EQ(station.FirstChannelInFilesAndStore(), Ramp(20));
}

}  // namespace
}  // namespace tarvolt
