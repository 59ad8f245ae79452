// SPDX-License-Identifier: GPL-3.0-or-later
// Memory that a stored sample takes, beside plain columns that were given their room beforehand.

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <cstdint>
#include <vector>

#include "display/strip_chart.h"

namespace tarvolt::bench {
namespace {

constexpr int kChannelsStored = 8;
constexpr std::int32_t kSamples = 1'000'000;
constexpr TimeStamp kFirst = 40180.5;
constexpr double kTenthOfASecond = 0.1 / 86400;

// What the allocator has handed out, its own bookkeeping and whole pages included.
double BytesInUse() {
  const struct mallinfo2 info = mallinfo2();
  return static_cast<double>(info.uordblks) + static_cast<double>(info.hblkhd);
}

void Fill(StripChart& chart) {
  chart.SetCapacity(kSamples);
  chart.SetChannelCount(kChannelsStored);
  for (std::int32_t i = 0; i < kSamples; ++i) {
    const std::int32_t index = chart.AddTime(kFirst + i * kTenthOfASecond);
    for (int channel = 0; channel < kChannelsStored; ++channel)
      chart.SetValue(channel, index, (i * 7 + channel) % 1000);
  }
}

void StripChartMemory(benchmark::State& state) {
  double chartBytes = 0;
  double plainBytes = 0;
  for ([[maybe_unused]] auto iteration : state) {
    const double before = BytesInUse();
    StripChart chart;
    Fill(chart);
    chartBytes = BytesInUse() - before;
    const double between = BytesInUse();
    const std::vector<std::vector<double>> columns(kChannelsStored + 1, std::vector<double>(kSamples));
    plainBytes = BytesInUse() - between;
    benchmark::DoNotOptimize(columns.data());
    if (chart.Count() != kSamples) state.SkipWithError("the chart did not take all samples");
  }
  state.counters["work_bytes"] = chartBytes / kSamples;
  state.counters["bare_bytes"] = plainBytes / kSamples;
  state.counters["ratio"] = chartBytes / plainBytes;
}
BENCHMARK(StripChartMemory)->Iterations(3)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarvolt::bench

BENCHMARK_MAIN();
