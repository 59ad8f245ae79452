// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "config/settings_table.h"
#include "model/run_state.h"

namespace tarvolt {

/// What the command line of a station, with or without a window, asks for. Its texts are as the recorder has them
/// inside, but for `home`, which is as it came from the shell.
struct StationOptions {
  std::string home;
  std::string profile;
  std::string load;
  SettingOverrides overrides;
  SessionMode mode = SessionMode::StandAlone;
  bool start = false;
  double seconds = 0;  ///< length of the recording; 0 means until it is ended
  bool quiet = false;
  bool listSound = false;     ///< print the sound inputs and leave
  std::string slashCommands;  ///< as one text

  bool finished = false;  ///< help, version or an error has been printed: leave with exitStatus
  int exitStatus = 0;
};

/// Reads the command line of `program`, described by `about` in its help. Errors are printed to standard error with
/// what would be right.
StationOptions ParseStationOptions(const std::string& program, const std::string& about, int argc, char** argv);

}  // namespace tarvolt
