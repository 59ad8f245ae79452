#pragma once

#include <string>

namespace tarvolt {

/// What a person would see of a window, as data. Rules write it; forms and tests read it.
struct WindowState {
  std::string Title;
  std::string StatusText;                            ///< the status line
  std::string LeftStatus;                            ///< rate and samples
  std::string RightStatus;                           ///< log time
  std::string ValueLabel;                            ///< LBLCHVAL; empty when hidden
  std::string StartCaption = "&Start Chart";         ///< cmdStart
  std::string StartMenuCaption = "Start New Chart";  ///< mnuStartChart
  bool cmdStart = true;
  bool ModeMenus = true;        ///< mnuStandAlone, mnuServer, mnuClient
  bool SaveCommands = false;    ///< save, save view, export
  bool LoadCommands = true;     ///< load and import
  bool InfoCommands = false;    ///< mnuDataFileInfo, cmdInfo
  bool OffsetCommand = false;   ///< cmdOffset
  bool ToolCommands = false;    ///< commands that rewrite the store
  bool ScheduleCommand = true;  ///< mnuSked
};

}  // namespace tarvolt
