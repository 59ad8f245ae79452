// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "automation/channel_equations/channel_equations.h"
#include "automation/channel_equations/equation_file.h"
#include "automation/channel_equations/equation_trial.h"
#include "automation/channel_equations/text_program.h"
#include "require.h"
#include "text/ansi.h"

namespace tarvolt {
namespace {

constexpr int kChannelsInUse = 2;

/// Three stored samples and one in hand, of values that come from the input.
struct Desk {
  ChartWindow window;
  ChannelExtremes extremes;
  std::array<double, kChannels> values{};

  explicit Desk(std::string_view bytes) {
    bytes.copy(reinterpret_cast<char*>(values.data()), sizeof values);
    window.chart.SetChannelCount(kChannelsInUse);
    for (int i = 0; i < 3; ++i) {
      window.chart.AddTime(40180.5 + i * values[0]);
      for (int channel = 0; channel < kChannelsInUse; ++channel) window.chart.SetValue(channel, i, values[i + channel]);
    }
    extremes = ExtremesOf(window.chart);
    window.run.MsgData = values;
  }

  EquationSample Sample() const { return SampleOfChart(window, 1, extremes); }
};

// What was compiled gives what the text gives, sample after sample.
void Run(std::string_view text, std::string_view values) {
  Desk compiled(values);
  Desk asText(values);
  EquationSet set;
  set.ApplyToCH = {1, 1};
  set.EquString[0] = text.substr(0, text.find('\n'));
  set.EquString[1] = text.substr(std::min(text.size(), set.EquString[0].size() + 1));
  ChannelEquations equations(1);
  if (const Outcome sound = equations.Check(set, kChannelsInUse); !sound) Require(!sound.Words().empty());
  EquationState state(1);
  for (int round = 0; round < 3; ++round) {
    for (double& value : compiled.window.run.ChannelValue) value = compiled.values[round] * (round - 1);
    asText.window.run.ChannelValue = compiled.window.run.ChannelValue;
    equations.ApplyEquation(set, kChannelsInUse, compiled.Sample(), compiled.window.run);
    for (int channel = 0; channel < kChannelsInUse; ++channel) {
      const std::string equation = Trim(set.EquString[channel]);
      double& x = asText.window.run.ChannelValue[channel];
      if (equation.empty() || equation.size() > kLongestChannelEquation) continue;
      if (const auto value = RunAsText(state, equation, asText.Sample(), x)) x = *value;
      Require(std::bit_cast<std::uint64_t>(x) ==
              std::bit_cast<std::uint64_t>(compiled.window.run.ChannelValue[channel]));
    }
  }
}

// A file that was written reads back as it was.
void ReadFile(std::string_view bytes) {
  EquationSet set;
  ParseEquations(bytes, set);
  EquationSet again;
  ParseEquations(WriteEquations(set), again);
  Require(again.EquString == set.EquString);
}

}  // namespace
}  // namespace tarvolt

/// The first bytes are values, the others two equations, parted by a line end.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tarvolt;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  constexpr std::size_t kValues = 24;
  if (size < kValues) return 0;
  const std::string_view text = bytes.substr(kValues);
  const Desk desk(bytes.substr(0, kValues));
  Run(text, bytes.substr(0, kValues));
  TryEquation(std::string(text), desk.Sample(), [] { return std::optional<std::string>("-1.5"); });
  ReadFile(bytes);
  return 0;
}
