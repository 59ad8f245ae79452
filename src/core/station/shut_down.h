// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/run/chart_run.h"
#include "core/run/recorder.h"

namespace tarvolt {

/// The end of the program: what a person is asked before anything stops, and the order in which things are put away.
class ShutDown {
 public:
  /// Works on the parts of `recorder`; both outlive it.
  ShutDown(Recorder& recorder, ChartRun& chartRun);

  /// A person wants the program to end. Asks while a chart is recording, which goes on until it is answered; then stops
  /// and saves it. False when the person keeps the recording, or cancels the save: the chart then stays in its window.
  /// With ShowMsgBox off nothing is asked or stopped here. Yields.
  bool AskToEnd();

  /// Stops a run, saves, and leaves the marks of a clean end. May yield.
  void Run();

 private:
  bool StopAndSave();

  Recorder& recorder_;
  ChartRun& chartRun_;
  Session& session_;
  bool asking_ = false;
};

}  // namespace tarvolt
