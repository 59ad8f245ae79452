// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "model/chart_window.h"
#include "model/session.h"

namespace tarvolt {

/// What a person at a terminal sees: log lines, and below them one live line of the run. Away from a terminal it is
/// log lines alone.
class LiveLine {
 public:
  /// `quiet` prints nothing at all.
  explicit LiveLine(bool quiet);

  /// Prints a log line above the live line.
  void PrintLog(const std::string& line);

  /// Draws the live line anew: time, state, rate, samples, last values, file.
  void Show(const Session& session, const ChartWindow& window);

  /// Takes the live line away.
  void Clear();

 private:
  void Draw();

  bool quiet_;
  bool terminal_;
  std::string live_;
};

}  // namespace tarvolt
