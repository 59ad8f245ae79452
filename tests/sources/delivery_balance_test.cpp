// SPDX-License-Identifier: GPL-3.0-or-later
#include "sources/sound/delivery_balance.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <vector>

namespace tarvolt {
namespace {

constexpr double kLength = 100;  // milliseconds of a buffer

/// Buffers whose sound ends at `heard` and that come so much later; the gaps that were found.
std::vector<double> GapsIn(int buffers, const std::function<double(int)>& heard,
                           const std::function<double(int)>& late) {
  DeliveryBalance balance;
  balance.BeginAnew(4000);
  std::vector<double> gaps;
  double now = 0;
  for (int i = 0; i < buffers; ++i) {
    now = std::max(now, heard(i) + late(i));
    if (const double gap = balance.Take(now, kLength); gap > 0) gaps.push_back(gap);
  }
  return gaps;
}

double InTime(int) {
  return 0;
}

double Jitter(int i) {
  return 180 * (1 + std::sin(0.7 * i * i));
}

TEST(DeliveryBalance, LateUnevenAndMistunedDeliveryIsNoGap) {
  const auto byTheClock = [](int i) { return i * kLength; };
  EXPECT_TRUE(GapsIn(100'000, byTheClock, InTime).empty());
  EXPECT_TRUE(GapsIn(100'000, byTheClock, Jitter).empty());
  EXPECT_TRUE(GapsIn(100'000, byTheClock, [](int i) { return i % 500 == 0 ? 9000.0 : 0.0; }).empty());
  for (const double rate : {0.97, 1.03}) {
    EXPECT_TRUE(GapsIn(
                    100'000, [=](int i) { return i * kLength * rate; }, Jitter)
                    .empty())
        << rate;
  }
}

TEST(DeliveryBalance, EachGapIsFoundOnceWithItsLength) {
  const auto withGaps = [](int i) { return i * kLength * 1.01 + (i >= 400 ? 700 : 0) + (i >= 900 ? 3'600'000 : 0); };
  const std::vector<double> even = GapsIn(2000, withGaps, InTime);
  ASSERT_EQ(even.size(), 2u);
  EXPECT_NEAR(even[0], 700, 40);
  EXPECT_NEAR(even[1], 3'600'000, 60);
  const std::vector<double> uneven = GapsIn(2000, withGaps, Jitter);
  ASSERT_EQ(uneven.size(), 2u);
  EXPECT_NEAR(uneven[0], 700, 120);
}

}  // namespace
}  // namespace tarvolt
