#include "automation/channel_equations/channel_equations.h"

#include <algorithm>

#include "automation/channel_equations/text_program.h"
#include "text/ansi.h"

namespace tarvolt {

void ChannelEquations::ApplyEquation(const EquationSet& set, int channels, const EquationSample& sample,
                                     RunState& run) {
  for (std::size_t i = 0; i < static_cast<std::size_t>(std::min(channels, kChannels)); ++i) {
    if (set.ApplyToCH[i] == 0) continue;
    Program& program = programs_[i];
    if (program.source != set.EquString[i]) Renew(program, set.EquString[i]);
    if (program.text.empty() || program.text.size() > kLongestChannelEquation) continue;
    if (const auto value = Run(program, sample, run.ChannelValue[i])) run.ChannelValue[i] = *value;
  }
}

void ChannelEquations::Renew(Program& program, const std::string& source) {
  program.source = source;
  program.text = Trim(source);
  program.compiled.reset();
  if (program.text.size() <= kLongestChannelEquation) program.compiled = CompiledProgram::Compile(program.text);
}

std::optional<double> ChannelEquations::Run(Program& program, const EquationSample& sample, double x) {
  if (program.compiled && program.compiled->Take(sample, x)) return program.compiled->Run(state_);
  return RunAsText(state_, program.text, sample, x);
}

}  // namespace tarvolt
