// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QKeyEvent>

#include "core/chart/chart_commands.h"
#include "forms/chart/menu_items.h"

namespace tarvolt {

// What the main window and the review windows have in common; `window` and `chart` outlive the menus.

/// The view menu.
void AddViewMenu(QMenu& menu, MenuItems& items, const ChartWindow& window, ChartCommands& chart);

/// Which channels are shown. The menu is disabled where there is no choice.
void AddVisibilityMenu(QMenu& menu, MenuItems& items, const ChartWindow& window, ChartCommands& chart);

/// The keys that are no menu's: the arrows scroll, Shift+F3 toggles the status line. False for any other.
bool ObeyChartKey(const QKeyEvent& key, ChartCommands& chart);

}  // namespace tarvolt
