// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "model/chart_window.h"
#include "model/run_listener.h"
#include "model/session.h"

namespace tarvolt {

/// The average of one channel over the AvgSamplingPeriod to come, shown in the status line.
class ChannelAverage final : public RunListener {
 public:
  /// Both outlive it.
  ChannelAverage(Session& session, ChartWindow& window);

  /// Begins an average of a channel counted from 1. Does nothing without samples of a run or for a channel that the
  /// chart has not.
  void StartChannelAvg(int channel);

  /// Ends it and shows what it came to; nothing when no sample came.
  void StopAvgSampling();

  void SampleFinished(const FinishedSample& sample) override;

  /// The stamps of the next log may begin anew.
  void LogEnded(LogEnd why) override {
    if (why == LogEnd::TurnedOver) StopAvgSampling();
  }

  /// Forgets it without a word.
  void RunEnded() override { running_ = false; }

  bool Running() const { return running_; }

  /// True once the time of the newest sample has passed the end.
  bool IsOver() const { return running_ && window_.run.CurrentStamp > end_; }

 private:
  Session& session_;
  ChartWindow& window_;
  bool running_ = false;
  int channel_ = 0;
  TimeStamp start_ = 0;
  TimeStamp end_ = 0;
  double sum_ = 0;
  std::int32_t count_ = 0;
};

}  // namespace tarvolt
