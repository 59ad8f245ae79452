// SPDX-License-Identifier: GPL-3.0-or-later
// Channel equations on a sample, compiled and as text, and over a loaded chart.

#include <benchmark/benchmark.h>

#include <string>

#include "automation/channel_equations/channel_equations.h"
#include "automation/channel_equations/text_program.h"
#include "core/chart/apply_function.h"
#include "sample_values.h"
#include "side_by_side.h"
#include "sim/sim_host.h"

namespace tarvolt::bench {
namespace {

constexpr int kSamplesARound = 2000;
constexpr int kRounds = 101;
constexpr std::int32_t kLoaded = 1'000'000;
constexpr int kLoadedRounds = 3;

/// Eight equations of three statements each, as an observer writes them: a background taken off, smoothing with the
/// last sample, a limit.
EquationSet ThreeStatements() {
  EquationSet set;
  set.EquString.fill("b=(X-500)/16; c=b*0.25+c0*0.75; c*TSDay+Z1[-1]*0.5");
  set.EquString[3] = "IF{[X]>[600]}; THEN{600}; ELSE{X*2+1}";
  set.EquString[5] = "l=log(abs(X)+1); s=sin(TDay*6.283185); l*s+Z2";
  set.ApplyToCH.fill(1);
  return set;
}

// The values have sixteen digits, so that printing them cuts some off.
void SetValues(RunState& run, std::int64_t sample) {
  run.ChannelValue = ValuesOf(sample);
  for (double& value : run.ChannelValue) value *= 0.123456789012345678;
}

void StoreSome(ChartWindow& window, std::int32_t count) {
  window.chart.SetCapacity(count);
  window.chart.SetChannelCount(kBenchChannels);
  for (std::int32_t i = 0; i < count; ++i) StoreSample(window.chart, i);
}

void RunAllAsText(EquationState& state, const EquationSet& set, const EquationSample& sample, RunState& run) {
  for (std::size_t channel = 0; channel < set.EquString.size(); ++channel) {
    const auto value = RunAsText(state, set.EquString[channel], sample, run.ChannelValue[channel]);
    if (value) run.ChannelValue[channel] = *value;
  }
}

// The seconds are those of one sample of eight channels; the reference is the same as text.
void OneSample(benchmark::State& state) {
  ChartWindow window;
  StoreSome(window, kSamplesARound);
  const ChannelExtremes extremes = ExtremesOf(window.chart);
  const EquationSet set = ThreeStatements();
  ChannelEquations equations(1);
  EquationState text(1);
  text.Solve("0");
  text.Assign("c0");
  EquationSet first = set;
  first.EquString[0] = "c0=0";
  equations.ApplyEquation(first, 1, SampleOfChart(window, 0, extremes), window.run);
  double sum = 0;
  double textSum = 0;
  RunSideBySide(
      state, kSamplesARound,
      [&] {
        return SecondsOf([&] {
          for (int i = 0; i < kSamplesARound; ++i) {
            SetValues(window.run, i);
            equations.ApplyEquation(set, kBenchChannels, SampleOfChart(window, i, extremes), window.run);
            sum += window.run.ChannelValue[7];
          }
        });
      },
      [&] {
        return SecondsOf([&] {
          for (int i = 0; i < kSamplesARound; ++i) {
            SetValues(window.run, i);
            RunAllAsText(text, set, SampleOfChart(window, i, extremes), window.run);
            textSum += window.run.ChannelValue[7];
          }
        });
      });
  if (sum != textSum) state.SkipWithError("the two do not agree");
}

// The seconds are those of one value of a loaded chart of a million samples and eight channels, on display all the
// while; the reference only reads each value and writes it back.
void LoadedChart(benchmark::State& state) {
  SimHost host(1, {2010, 1, 2, 12, 0, 0, 0});
  Session session(host.Record(), "/station");
  ChartWindow window;
  StoreSome(window, kLoaded);
  EquationSet set;
  set.EquString.fill("X*2+1");
  set.ApplyToCH.fill(1);
  ChannelEquations equations(1);
  bool applied = true;
  RunSideBySide(
      state, double{kLoaded} * kBenchChannels,
      [&] { return SecondsOf([&] { applied = applied && ApplyFunction(session, window, equations, set); }); },
      [&] {
        return SecondsOf([&] {
          for (std::int32_t i = 0; i < kLoaded; ++i) {
            for (int channel = 0; channel < kBenchChannels; ++channel) {
              window.chart.SetValue(channel, i, window.chart.GetValue(channel, i));
            }
          }
        });
      });
  if (!applied) state.SkipWithError("the equations were refused");
}

BENCHMARK(OneSample)->Iterations(Rounds(kRounds))->UseManualTime();
BENCHMARK(LoadedChart)->Iterations(Rounds(kLoadedRounds))->UseManualTime();

}  // namespace
}  // namespace tarvolt::bench

BENCHMARK_MAIN();
