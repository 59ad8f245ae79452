// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "core/chart/apply_equations.h"
#include "model/session.h"

namespace tarvolt {

/// Adds channels "EQ CH" with their number to a chart at rest, then runs the equations over all samples, in their
/// order, and writes what they give back. The chart then counts as changed and as none that was saved; its metadata
/// name each equation. Holds loads and starts off while it works. Yields every 500 samples. Ends early when the program
/// is to end: the samples that it reached are changed then, and the session log has how many. Fails, with nothing
/// changed, when there is no room for the channels or an equation cannot be solved.
Outcome ApplyFunction(Session& session, ChartWindow& window, ChannelEquations& equations, const EquationSet& set,
                      int newChannels = 0);

}  // namespace tarvolt
