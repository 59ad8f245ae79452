// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "core/chart/chart_commands.h"
#include "core/chart/load_commands.h"

namespace tarvolt {

/// A window for looking at a loaded chart, "rform1" to "rform5": the file and view routines of the main window without
/// its recording.
class FrmReview {
 public:
  static constexpr int kMost = 5;

  /// `number` is 1 to kMost; the others outlive it.
  FrmReview(Session& session, int number, Person& person);

  /// Opens a data file. False, and reported, when it cannot be loaded as a whole. Yields.
  bool LoadDataFile(const std::string& path) { return loads_.LoadDataFile(path); }
  void cmdSaveView();

  const ChartWindow& Window() const { return window_; }
  ChartCommands& Chart() { return commands_; }
  LoadCommands& Loads() { return loads_; }

 private:
  Session& session_;
  ChartWindow window_;
  ChartCommands commands_;
  LoadCommands loads_;
};

}  // namespace tarvolt
