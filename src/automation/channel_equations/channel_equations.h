#pragma once

#include <array>
#include <optional>
#include <string>

#include "automation/channel_equations/compiled_program.h"
#include "automation/channel_equations/equation_file.h"
#include "model/equation_set.h"

namespace tarvolt {

/// The equations of a window at work. An equation is compiled when it is first run or has changed; one that cannot be,
/// or whose numbers cannot, is run as text with the same results.
class ChannelEquations {
 public:
  /// `seed` begins the row of random values.
  explicit ChannelEquations(std::uint64_t seed) : state_(seed) {}

  /// Runs the equations of the channels 0 to `channels` - 1 one after the other on the sample's ChannelValue, which is
  /// that of `run`: each sees the new values of those before it. A channel keeps its value when its equation asks for a
  /// sample that is not there; when it cannot be solved it takes the last solution, whoever's it was (meant).
  void ApplyEquation(const EquationSet& set, int channels, const EquationSample& sample, RunState& run);

 private:
  struct Program {
    std::string source;  ///< as it was set
    std::string text;    ///< without outer blanks
    std::optional<CompiledProgram> compiled;
  };

  void Renew(Program& program, const std::string& source);
  std::optional<double> Run(Program& program, const EquationSample& sample, double x);

  EquationState state_;
  std::array<Program, kChannels> programs_;
};

}  // namespace tarvolt
