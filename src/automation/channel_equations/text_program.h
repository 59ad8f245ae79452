// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string_view>

#include "automation/channel_equations/equation_state.h"
#include "automation/channel_equations/sample_view.h"

namespace tarvolt {

/// Runs a channel's equation as it is defined: the numbers are put into its text, and each statement is then solved.
/// Gives the channel's new value: the solution of what was solved last. Nothing when a sample was asked for that is not
/// there, or for a value that is no finite number. A statement that cannot be solved changes nothing, and those behind
/// it go on; `state` keeps the first fault.
std::optional<double> RunAsText(EquationState& state, std::string_view equation, const EquationSample& sample,
                                double x);

/// Solves one statement whose numbers stand in it: a formula, or one with a name to store the result under. A blank one
/// does nothing. Raises EquationError.
void RunStatement(EquationState& state, const std::string& statement);

}  // namespace tarvolt
