// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "apps/common/options.h"
#include "core/form_main.h"

namespace tarvolt {

/// Does what the command line asks of a recorder that has been loaded: profile, mode, data file, slash commands. Gives
/// the exit status: a station that was given a profile or a file must not go on with something else. Yields.
int ObeyOptions(FormMain& form, Session& session, const StationOptions& options);

}  // namespace tarvolt
