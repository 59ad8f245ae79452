// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/chart/load_commands.h"
#include "forms/chart/menu_items.h"

namespace tarvolt {

/// Adds the commands that load a data file, and the lists of recent files, to the file menu of a window.
void AddLoadMenus(QMenu& menu, MenuItems& items, const Session& session, LoadCommands& loads);

}  // namespace tarvolt
