#pragma once

#include <cstdint>

#include "model/chart_window.h"
#include "model/session.h"

namespace tarvolt {

/// The average of one channel over the AvgSamplingPeriod to come, shown in the status line.
class ChannelAverage {
 public:
  /// Both outlive it.
  ChannelAverage(Session& session, ChartWindow& window);

  /// Begins an average of a channel counted from 1. Does nothing without samples of a run or for a channel that the
  /// chart has not.
  void StartChannelAvg(int channel);

  /// Ends it and shows what it came to; nothing when no sample came.
  void StopAvgSampling();

  /// Forgets it without a word, as at the end of a run.
  void Clear() { running_ = false; }

  /// A finished sample of the run.
  void TakeSample();

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
