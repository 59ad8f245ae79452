// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/driver_calls.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <memory>
#include <thread>

namespace tarvolt {
namespace {

using namespace std::chrono_literals;

const std::function<int()> kSeven = [] { return 7; };

TEST(DriverCalls, ADriverThatHangsIsAskedOnceUntilItComesBack) {
  DriverCalls drivers(0ms);
  EXPECT_EQ(drivers.Ask("card", 10s, kSeven), 7);
  const auto release = std::make_shared<std::promise<void>>();
  const std::function<int()> hangs = [waits = release->get_future().share()] {
    waits.wait();
    return 8;
  };
  EXPECT_EQ(drivers.Ask("server", 1ms, hangs), std::nullopt);
  const auto asked = std::make_shared<std::atomic<bool>>(false);
  const std::function<int()> second = [asked] {
    *asked = true;
    return 9;
  };
  EXPECT_EQ(drivers.Ask("server", 1h, second), std::nullopt) << "at once";
  EXPECT_EQ(drivers.Ask("card", 10s, kSeven), 7) << "another driver answers";
  EXPECT_FALSE(*asked);
  release->set_value();
  std::optional<int> answer;
  while (!answer) answer = drivers.Ask("server", 10s, second);
  EXPECT_EQ(answer, 9);
}

TEST(DriverCalls, OneThatIsSlowIsWaitedFor) {
  DriverCalls drivers(1h);
  const auto release = std::make_shared<std::promise<void>>();
  const std::function<int()> slow = [waits = release->get_future().share()] {
    waits.wait();
    return 8;
  };
  EXPECT_EQ(drivers.Ask("server", 1ms, slow), std::nullopt);
  std::thread server([release] { release->set_value(); });
  EXPECT_EQ(drivers.Ask("server", 1h, kSeven), 7);
  server.join();
}

}  // namespace
}  // namespace tarvolt
