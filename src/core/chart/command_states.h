// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string_view>

#include "model/chart_window.h"

namespace tarvolt {

/// What can be chosen in a window at a moment, and what its buttons say.
struct CommandStates {
  std::string_view StartCaption;      ///< cmdStart
  std::string_view StartMenuCaption;  ///< mnuStartChart
  bool cmdStart = false;              ///< and mnuStartChart
  bool ModeMenus = false;             ///< mnuStandAlone, mnuServer, mnuClient
  bool mnuSave = false;               ///< in a run it saves the log so far, and a new log begins
  bool SaveView = false;              ///< mnuSaveView, cmdSaveView
  bool LoadCommands = false;          ///< load and import
  bool InfoCommands = false;          ///< mnuDataFileInfo, cmdInfo
  bool OffsetCommand = false;         ///< cmdOffset
  bool ToolCommands = false;          ///< commands that rewrite the store
  bool ArrowsActive = false;          ///< the scroll and step buttons work on a chart that does not follow its run
  std::string_view AutoScrollTip;     ///< cmdAutoScrollEnable
  std::string_view AutoScaleTip;      ///< cmdAutoScale
};

/// The one place that decides it, from the phase of the run, the chart and the mode. From the first moment of a start
/// to the end of the stop, its questions included, nothing that reads or rewrites the samples is enabled, but for
/// mnuSave while the run is on.
CommandStates StatesOf(const ChartWindow& window);

}  // namespace tarvolt
