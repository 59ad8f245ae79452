// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "automation/channel_equations/equation_state.h"
#include "model/equation_set.h"
#include "text/result.h"

namespace tarvolt {

/// Longer equations than this, in characters, are not run: their channels keep their values.
inline constexpr std::size_t kLongestChannelEquation = 4000;

/// A fault with the channel, counted from 0, and the statement that it is of.
std::string FaultText(int channel, std::string_view equation, const StatementFault& fault);

/// That the equation of a channel, counted from 0, is longer than is run.
std::string TooLongText(int channel);

/// Whether each equation, applied or not, is short enough; in words the first that is not.
Outcome CheckLengths(const EquationSet& set);

/// Whether each statement of the equations that apply to the channels 0 to `channels` - 1 is one that can be solved. In
/// words the first one that no number would help: misspelt, of functions that there are not, or of variables that
/// neither `state` knows nor a statement can set. What fails for some numbers alone, such as a division, is no fault
/// here.
Outcome CheckEquations(const EquationSet& set, int channels, const EquationState& state);

}  // namespace tarvolt
