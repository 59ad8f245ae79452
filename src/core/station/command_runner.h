// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string_view>

#include "model/session.h"

namespace tarvolt {

class FormMain;

/// Runs a command line text in the main window: the name of a data file, or slash commands. False, and reported, when a
/// word was not understood; those behind it are then not run. Yields.
bool RunCommandLine(FormMain& form, Session& session, std::string_view text);

}  // namespace tarvolt
