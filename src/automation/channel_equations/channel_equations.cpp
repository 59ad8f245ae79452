// SPDX-License-Identifier: GPL-3.0-or-later
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
    if (program.text.empty()) continue;
    const int channel = static_cast<int>(i);
    if (program.text.size() > kLongestChannelEquation) {
      if (!program.reported) ReportOnce(program, TooLongText(channel));
      continue;
    }
    if (const auto value = Run(program, sample, run.ChannelValue[i])) run.ChannelValue[i] = *value;
    if (state_.Fault() && !program.reported) ReportOnce(program, FaultText(channel, program.text, *state_.Fault()));
  }
}

void ChannelEquations::LogBegan() {
  for (Program& program : programs_) program.reported = false;
}

void ChannelEquations::ReportOnce(Program& program, const std::string& words) {
  program.reported = true;
  if (report_) report_(words);
}

void ChannelEquations::Renew(Program& program, const std::string& source) {
  program.source = source;
  program.text = Trim(source);
  program.compiled.reset();
  program.reported = false;
  if (program.text.size() <= kLongestChannelEquation) program.compiled = CompiledProgram::Compile(program.text);
}

std::optional<double> ChannelEquations::Run(Program& program, const EquationSample& sample, double x) {
  state_.ForgetFault();
  if (program.compiled && program.compiled->Take(sample, x)) return program.compiled->Run(state_);
  return RunAsText(state_, program.text, sample, x);
}

}  // namespace tarvolt
