// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <filesystem>
#include <memory>
#include <string>

#include "platform/host.h"

namespace tarvolt {

/// A machine that the recorder may run on: what it is handed, and a folder of its own.
class Machine {
 public:
  virtual ~Machine() = default;
  virtual Host Record() = 0;
  virtual std::filesystem::path Folder() = 0;
};

std::unique_ptr<Machine> MakeRealMachine();
std::unique_ptr<Machine> MakeSimulatedMachine();

/// What every machine promises, tried on the real one and on the simulated one.
class Contract : public testing::TestWithParam<std::unique_ptr<Machine> (*)()> {
 protected:
  double Now() { return host_.clock.MonotonicMilliseconds(); }

  /// Yields until `done` says so. The limit only ends a test that has failed. It sleeps for all of it at once, so that
  /// a missed wake-up shows.
  template <typename Condition>
  bool WaitFor(Condition done) {
    const double end = Now() + 20'000;
    while (!done()) {
      host_.loop.Yield(std::chrono::milliseconds(static_cast<int>(std::ceil(end - Now()))));
      if (Now() >= end) return false;
    }
    return true;
  }

  void RunFor(int milliseconds) {
    const double end = Now() + milliseconds;
    while (Now() < end) host_.loop.Yield(std::chrono::milliseconds(static_cast<int>(std::ceil(end - Now()))));
  }

  std::unique_ptr<Machine> machine_ = GetParam()();
  Host host_ = machine_->Record();
};

/// One suite of the contract, on both machines.
#define INSTANTIATE_CONTRACT(suite)                                                                 \
  INSTANTIATE_TEST_SUITE_P(Machines, suite, testing::Values(MakeRealMachine, MakeSimulatedMachine), \
                           [](const auto& made) { return std::string(made.index == 0 ? "Real" : "Simulated"); })

}  // namespace tarvolt
