// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace tarvolt {

enum class MaxedOutMode { LimitReached = 0, PlannedRestart = 1 };

/// The verbs of a run, for the floors below core/ that must ask for them.
class RunControl {
 public:
  virtual ~RunControl() = default;

  /// Checks, readies the sources and arms the run. `profile` may be empty. Yields.
  virtual void StartChart(const std::string& profile) = 0;

  /// Ends the run and saves. Does nothing without a run.
  virtual void StopChart() = 0;

  /// The log is full, over its time or due for a restart.
  virtual void MaxedOut(MaxedOutMode mode) = 0;

  /// Runs a command line text.
  virtual void ProcessCmd(std::string_view text) = 0;
};

}  // namespace tarvolt
