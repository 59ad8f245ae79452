// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>

#include "automation/channel_equations/compiled_program.h"
#include "automation/channel_equations/equation_check.h"
#include "model/equation_set.h"
#include "model/run_listener.h"

namespace tarvolt {

/// The equations of a window at work. An equation is compiled when it is first run or has changed; one that cannot be,
/// or whose numbers cannot, is run as text with the same results.
class ChannelEquations final : public RunListener {
 public:
  /// Takes a fault of an equation, in words.
  using Report = std::function<void(const std::string& words)>;

  /// `seed` begins the row of random values. `report` may be empty.
  explicit ChannelEquations(std::uint64_t seed, Report report = {}) : state_(seed), report_(std::move(report)) {}

  /// The samples of another log follow: what is wrong with an equation is reported once more.
  void LogBegan() override;

  /// Whether the equations of the channels 0 to `channels` - 1 can be solved, as CheckEquations has it.
  Outcome Check(const EquationSet& set, int channels) const { return CheckEquations(set, channels, state_); }

  /// Runs the equations of the channels 0 to `channels` - 1 one after the other on the sample's ChannelValue, which is
  /// that of `run`: each sees the new values of those before it. A channel keeps its value when its equation asks for a
  /// sample that is not there or is no finite number, or is longer than kLongestChannelEquation; when it cannot be
  /// solved it takes the last solution, whoever's it was (meant). The first fault of an equation in a log is reported.
  void ApplyEquation(const EquationSet& set, int channels, const EquationSample& sample, RunState& run);

 private:
  struct Program {
    std::string source;  ///< as it was set
    std::string text;    ///< without outer blanks
    std::optional<CompiledProgram> compiled;
    bool reported = false;  ///< a fault, in this log
  };

  void Renew(Program& program, const std::string& source);
  std::optional<double> Run(Program& program, const EquationSample& sample, double x);
  void ReportOnce(Program& program, const std::string& words);

  EquationState state_;
  Report report_;
  std::array<Program, kChannels> programs_;
};

}  // namespace tarvolt
