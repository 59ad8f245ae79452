// SPDX-License-Identifier: GPL-3.0-or-later
#include "display/sample_columns.h"

#include <gtest/gtest.h>
#include <malloc.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <optional>
#include <random>
#include <span>
#include <vector>

namespace tarvolt {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

// The obvious way to keep one channel: what the columns must agree with.
struct PlainChannel {
  std::vector<std::optional<double>> values;

  MinMax Range(std::int32_t first, std::int32_t last) const {
    MinMax result;
    for (std::int32_t i = first; i <= last; ++i) {
      if (!values[i] || std::isnan(*values[i])) continue;
      result.lowest = std::min(result.lowest, *values[i]);
      result.highest = std::max(result.highest, *values[i]);
    }
    return result;
  }
};

class RandomData {
 public:
  explicit RandomData(unsigned seed) : engine_(seed) {}

  std::int32_t Below(std::int32_t limit) { return std::uniform_int_distribution<std::int32_t>(0, limit - 1)(engine_); }

  double Value() {
    if (Below(40) == 0) return kNotANumber;
    switch (Below(5000)) {  // seldom, so that most coarse bins have extremes of their own
      case 0:
        return kInfinity;
      case 1:
        return -kInfinity;
      case 2:
        return 0;
      default:
        return std::normal_distribution<double>(1e6, 3)(engine_);  // far from 0, so that a stray 0 shows
    }
  }

  // Ends near the edges of bins and blocks as often as anywhere else.
  std::int32_t Index(std::int32_t count) {
    static constexpr std::int32_t kEdges[] = {1, 32, 256, 2048, 16384, 131072};
    if (Below(2) == 0) return Below(count);
    const std::int32_t edge = kEdges[Below(6)];
    return std::clamp(Below(count / edge + 1) * edge + Below(3) - 1, 0, count - 1);
  }

 private:
  std::mt19937 engine_;
};

void ExpectSameRanges(const SampleColumns& columns, const PlainChannel& plain, RandomData& random, int tries) {
  const std::int32_t count = columns.Count();
  ASSERT_EQ(columns.Extremes(0), plain.Range(0, count - 1)) << count;
  for (int i = 0; i < tries; ++i) {
    auto [first, last] = std::minmax({random.Index(count), random.Index(count)});
    ASSERT_EQ(columns.Range(0, first, last), plain.Range(first, last)) << first << ".." << last << " of " << count;
  }
}

void AppendPiece(SampleColumns& columns, PlainChannel& plain, RandomData& random) {
  std::vector<double> times;
  std::vector<double> values;
  for (std::int32_t left = random.Below(700); left > 0; --left) {
    times.push_back(static_cast<double>(plain.values.size()));
    values.push_back(random.Value());
    plain.values.emplace_back(values.back());
  }
  const std::span<const double> only(values);
  columns.Append(times, {&only, 1});
}

TEST(SampleColumns, RangesAgreeWithBruteForceWhileGrowingAndBeingRewritten) {
  RandomData random{1};
  SampleColumns columns{1};
  PlainChannel plain;
  for (std::int32_t i = 0; i < 300000; i = columns.Count()) {  // all levels
    if (random.Below(1500) == 0) AppendPiece(columns, plain, random);
    i = columns.Count();
    columns.Append(i);
    plain.values.emplace_back();
    if (random.Below(50) != 0) {  // now and then a position is never written
      plain.values[i] = random.Value();
      columns.SetValue(0, i, *plain.values[i]);
    }
    if (random.Below(10) == 0) {
      const std::int32_t older = random.Index(i + 1);
      plain.values[older] = random.Value();
      columns.SetValue(0, older, *plain.values[older]);
    }
    const bool atAnEdge = (i & 31) <= 1 && random.Below(200) == 0;
    if (i < 600 || atAnEdge || i + 1 == BlockColumn::kBlock) ExpectSameRanges(columns, plain, random, 4);
  }
  ExpectSameRanges(columns, plain, random, 1000);
  for (std::int32_t i = 0; i < columns.Count(); ++i) {
    const double expected = plain.values[i].value_or(0);
    const double stored = columns.Value(0, i);
    ASSERT_TRUE(stored == expected || (std::isnan(stored) && std::isnan(expected))) << i;
    ASSERT_EQ(columns.Time(i), i);
  }
}

TEST(SampleColumns, EveryBitPatternThatIsNotANumberReadsBackAsNotANumber) {
  SampleColumns columns{1};
  columns.Append(0);
  EXPECT_EQ(columns.Value(0, 0), 0) << "an unwritten value reads as 0";
  for (const std::uint64_t bits : {0x7FF8'5441'5256'4F4CULL, 0x7FF8'0000'0000'0000ULL, 0xFFFF'FFFF'FFFF'FFFFULL}) {
    columns.SetValue(0, 0, std::bit_cast<double>(bits));
    const double value = std::bit_cast<double>(bits);
    const std::span<const double> piece(&value, 1);
    columns.Append(piece, {&piece, 1});
    EXPECT_TRUE(std::isnan(columns.Value(0, columns.Count() - 1)));
    EXPECT_TRUE(std::isnan(columns.Value(0, 0))) << std::hex << bits;
  }
}

TEST(SampleColumns, AMillionSamplesTakeLittleMoreThanTheirNumbers) {
  const auto inUse = [] {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
  };
  for (const int channels : {1, 8}) {
    const std::size_t before = inUse();
    SampleColumns columns{channels};
    for (std::int32_t i = 0; i < 1000000; ++i) {
      columns.Append(i);
      for (int channel = 0; channel < channels; ++channel) columns.SetValue(channel, i, i);
    }
    const std::size_t used = inUse() - before;
    const double numbers = 8.0 * (channels + 1) * 1000000;
    if (used == 0) GTEST_SKIP() << "this allocator keeps no account";
    EXPECT_GT(used, numbers);
    EXPECT_LT(used, 1.15 * numbers) << channels;
  }
}

}  // namespace
}  // namespace tarvolt
