// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "model/chart_window.h"
#include "model/session.h"

namespace tarvolt {

/// The tools that a person holds to a chart: the cursor with its time marker, and the zoom.
class CursorCommands {
 public:
  /// Both outlive it.
  CursorCommands(Session& session, ChartWindow& window);

  /// On and off. Browsing or tracking comes back when a tool is left.
  void cmdCursor();
  void cmdZoom();

  /// Puts the cursor to the sample nearest in time to `x`, on the visible channel nearest to `y`, and shows it in the
  /// status line. Does nothing without samples or when the cursor is not on.
  void MoveCursor(double x, double y);
  void mnuSetTimeMarker();
  void mnuRemoveTimeMarker();
  void mnuTimeMilliseconds();

 private:
  void LeaveTool();
  std::string CursorText(std::int32_t index) const;
  int NearestChannel(std::int32_t index, double y) const;

  Session& session_;
  ChartWindow& window_;
  StripChart& chart_;
  WindowState& view_;
};

}  // namespace tarvolt
