// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "automation/channel_equations/sample_view.h"

namespace tarvolt {

/// Tries one equation. An x or z counts as X or Z here, even inside the name of a function (meant). `askForX` gives the
/// value to try with, as text, and is called only when there is an X; nothing from it ends the trial. Gives what is to
/// be shown, line by line: what was put in for what, which branches ran, the formula and its solution, or what is wrong
/// with it. Empty when the trial was given up. Has an evaluator of its own: the equations at work do not notice.
std::string TryEquation(const std::string& equation, const EquationSample& sample,
                        const std::function<std::optional<std::string>()>& askForX);

}  // namespace tarvolt
