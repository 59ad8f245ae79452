// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>

#include "core/run/recorder.h"

namespace tarvolt {

/// The road of one sample: from a read of the sources to the store, the backup and the limits of the log.
class SamplePipeline {
 public:
  /// Works on the parts of `recorder`, which outlives it.
  explicit SamplePipeline(Recorder& recorder);

  /// The tick of LoTime1. The timer is off during the tick, so ticks never queue: the period is the interval plus the
  /// length of the tick. The first one waits for the second boundary when that is asked. Yields while a polled source
  /// answers.
  void TimerTick();

  /// One tick: reads every channel once; every N-th tick finishes a sample. `sourceTime` is the source's own stamp;
  /// without it the stamp is the time now, less the milliseconds for which the reads have `waited`. Yields while a
  /// polled source answers.
  void GetAllData(std::optional<TimeStamp> sourceTime, double waited = 0);

 private:
  void TakeFirstTick();
  bool ReadChannels();
  bool SampleIsComplete();
  void AverageChannels();
  bool StampSample(std::optional<TimeStamp> sourceTime, double waited);
  bool HandleClockStep(TimeStamp stamp);
  void KeepMiniChartSmall();
  std::int32_t StoreSample();
  void RepaintWhenDue();
  void FinalizeDataInput(std::int32_t index);

  Recorder& recorder_;
  Session& session_;
  ChartWindow& window_;
  RunState& run_;
  TimeStamp lastClock_ = 0;  ///< the time when a sample was stamped last
};

}  // namespace tarvolt
