// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "core/run/chart_run.h"
#include "core/run/recorder.h"

namespace tarvolt {

/// What TimerKeepAlive does: each second of a run it shows the rate, and it looks after what waits to be saved.
class KeepAlive {
 public:
  /// Works on the parts of `recorder`; both arguments outlive it.
  KeepAlive(Recorder& recorder, ChartRun& chartRun);

  /// One firing of the timer.
  void Fire();

 private:
  std::string RateText(double seconds);
  std::string SlowRateText(double seconds);
  void ShowRate(double seconds);
  void TellDropped(double seconds);
  void SyncBackup(double seconds);

  Recorder& recorder_;
  ChartRun& chartRun_;
  Session& session_;
  ChartWindow& window_;
  double lastFiring_ = 0;  // monotonic milliseconds
  double secondsSinceSync_ = 0;
  double secondsSinceTold_ = 60;  // since dropped samples were reported last
  double slowSeconds_ = 0;        // length of the window of a slow rate so far
  std::int32_t slowStart_ = 0;    // Dcount when that window began
  std::string slowText_;
};

}  // namespace tarvolt
