// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/chart_window.h"
#include "model/session.h"

namespace tarvolt {

/// Puts LocalName into the window's title; "unknown user", and false, when there is none.
bool ShowLocalName(const Session& session, ChartWindow& window);

/// Gives the session log its file, once the data folder is there. Its name holds the moment, so it is taken once.
void NameSessionLog(Session& session, ChartWindow& window);

}  // namespace tarvolt
