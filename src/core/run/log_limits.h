// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/chart_window.h"
#include "model/run_control.h"
#include "model/run_listener.h"

namespace tarvolt {

/// Counts the samples of a log, and ends it when it is full, over its time or due for a restart.
class LogLimits final : public RunListener {
 public:
  /// Both outlive it.
  LogLimits(ChartWindow& window, RunControl& control) : run_(window.run), chart_(window.chart), control_(control) {}

  /// May turn the log over, and end the run.
  void SampleFinished(const FinishedSample& sample) override;

 private:
  bool IsFull(const FinishedSample& sample) const;
  TimeStamp ClockOfSample() const;

  RunState& run_;
  StripChart& chart_;
  RunControl& control_;
};

}  // namespace tarvolt
