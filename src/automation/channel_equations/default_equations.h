// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/equation_set.h"
#include "model/session.h"
#include "text/result.h"

namespace tarvolt {

/// Puts equations in force, and whether they work on incoming samples, and stores all of it with one write: after a
/// crash it still belongs together. What is overridden in this run is not stored.
void StoreEquations(Session& session, const EquationSet& set, bool applyToIncoming);

/// The equations as they are stored.
EquationSet LoadDefaultEquations(const SettingsStore& store);

/// Stores equations as those to begin with, which are those in force. When they work on incoming samples, and `set` is
/// not meant for those, a person is asked first, and No is the default; that may yield. Fails, with nothing changed,
/// where an equation is longer than is run or the answer is No.
Outcome SaveDefaultEquations(Session& session, const EquationSet& set, bool isForIncoming);

}  // namespace tarvolt
