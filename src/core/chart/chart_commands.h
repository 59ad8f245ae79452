// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/chart/cursor_commands.h"
#include "core/chart/look_commands.h"
#include "core/chart/view_commands.h"

namespace tarvolt {

/// What a person does with the chart of a window, the main one or a review window, by subject.
struct ChartCommands {
  /// Both outlive it.
  ChartCommands(Session& session, ChartWindow& window)
      : view(session, window), cursor(session, window), look(session, window) {}

  ViewCommands view;
  CursorCommands cursor;
  LookCommands look;
};

}  // namespace tarvolt
