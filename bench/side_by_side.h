// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdlib>
#include <vector>

namespace tarvolt::bench {

/// Seconds that a call takes.
template <typename Call>
double SecondsOf(Call call) {
  const auto begin = std::chrono::steady_clock::now();
  call();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

/// How often a benchmark goes round: once when TARVOLT_BENCH_ONCE is set, which only shows that it still works.
inline int Rounds(int full) {
  return std::getenv("TARVOLT_BENCH_ONCE") == nullptr ? full : 1;
}

inline double Median(std::vector<double> values) {
  if (values.empty()) return 0;
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

/// Runs the work and its bare reference turn about, once each an iteration, and which goes first changes too: what
/// disturbs the machine disturbs both. Each returns its own seconds, so that it can leave its preparations out.
/// Reported are the medians, divided by `items`, and "ratio", work over bare.
template <typename Work, typename Bare>
void RunSideBySide(benchmark::State& state, double items, Work work, Bare bare) {
  std::vector<double> workSeconds;
  std::vector<double> bareSeconds;
  bool workFirst = true;
  for ([[maybe_unused]] auto iteration : state) {
    if (workFirst) workSeconds.push_back(work());
    bareSeconds.push_back(bare());
    if (!workFirst) workSeconds.push_back(work());
    workFirst = !workFirst;
    state.SetIterationTime(workSeconds.back());
  }
  const double workMedian = Median(workSeconds);
  const double bareMedian = Median(bareSeconds);
  state.counters["work_s"] = workMedian / items;
  state.counters["bare_s"] = bareMedian / items;
  state.counters["ratio"] = bareMedian > 0 ? workMedian / bareMedian : 0;
}

}  // namespace tarvolt::bench
