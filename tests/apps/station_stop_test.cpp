// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>

#include "apps/station.h"
#include "apps/test_source.h"
#include "apps/tv_uds_program.h"

namespace tarvolt {
namespace {

constexpr double kSoon = 3;  // seconds

/// Sends the signal; the station must end soon. Its exit status.
std::optional<int> StatusAfter(int signal, RunningStation& station) {
  const auto start = std::chrono::steady_clock::now();
  station.Signal(signal);
  const std::optional<int> status = station.ExitStatus();
  EXPECT_LT(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(), kSoon);
  return status;
}

class StationStop : public ::testing::TestWithParam<int> {};

TEST_P(StationStop, WhileRecordingSavesTheChart) {
  const Home home;
  uds::RunningSource source({"--signal", "ramp", "--channels", "2", "--rate", "100", "--time-stamps"});
  RunningStation station(home, Recording(source.Port()));
  std::size_t seen = 0;
  ASSERT_TRUE(WaitUntil([&] { return (seen = ReadRecorded(home.Backup()).samples.size()) >= 5; }));
  EXPECT_EQ(StatusAfter(GetParam(), station), 0) << station.Output();
  const Recorded file = ReadRecorded(home.DataFile());
  ASSERT_GE(file.samples.size(), seen);
  for (std::size_t i = 0; i < file.samples.size(); ++i) {
    const auto n = static_cast<double>(i);
    EXPECT_EQ(file.samples[i], (std::vector<double>{n, 1000000 + n}));
  }
}

TEST_P(StationStop, WhileNobodyAnswers) {
  const Home home;
  TestSource silent;
  RunningStation neverBegan(home, Recording(silent.Port()));
  ASSERT_TRUE(silent.Accept());
  EXPECT_EQ(StatusAfter(GetParam(), neverBegan), 1);
  EXPECT_TRUE(neverBegan.Printed("Manually aborted waiting for UDS Initialization.")) << neverBegan.Output();
  EXPECT_TRUE(neverBegan.Printed("UDS Connection Canceled - Chart Canceled"));

  // This one answers, but no request for data.
  RunningStation polling(home, Recording(silent.Port(), {"UDSpush=False"}));
  ASSERT_TRUE(silent.Accept());
  silent.BeginRun(2);
  EXPECT_EQ(StatusAfter(GetParam(), polling), 0) << polling.Output();
  EXPECT_TRUE(home.DataFiles().empty());

  RunningStation idle(home, {});
  ASSERT_TRUE(idle.WaitFor("Identity"));
  EXPECT_FALSE(idle.Printed("Recovery Alert")) << idle.Output();
  EXPECT_EQ(StatusAfter(GetParam(), idle), 0);
}

INSTANTIATE_TEST_SUITE_P(Signals, StationStop, ::testing::Values(SIGTERM, SIGINT));

}  // namespace
}  // namespace tarvolt
