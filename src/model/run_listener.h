// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>

#include "timebase/time_stamp.h"

namespace tarvolt {

/// A finished sample, as it is offered to those who listen to a run. Valid during the call.
struct FinishedSample {
  TimeStamp stamp = 0;
  std::int32_t index = 0;           ///< in the store
  bool stored = true;               ///< false when no memory was left for it: it is in no log
  std::span<const double> raw;      ///< a value per channel, without its offset
  std::span<const double> offsets;  ///< what the stored value of each channel has beyond the raw one

  /// The value as it is stored and drawn; `channel` counts from 0.
  double Stored(std::size_t channel) const { return raw[channel] + offsets[channel]; }
};

enum class LogEnd {
  TurnedOver,  ///< the next log begins, or the run stops at a limit
  Stopped      ///< the run was stopped
};

/// Whoever wants the samples of a run, or must know where a log begins and ends. Nobody may yield in these calls, but
/// for the limits of the log, which come last of those that work on a sample.
class RunListener {
 public:
  virtual ~RunListener() = default;

  /// A log is ready for its first sample: the first one of a run, or a further one.
  virtual void LogBegan() {}

  /// A sample is in the store.
  virtual void SampleFinished(const FinishedSample&) {}

  /// The log has its last sample and is about to be saved.
  virtual void LogEnded(LogEnd) {}

  /// The run is over, and its chart saved or in safety.
  virtual void RunEnded() {}
};

}  // namespace tarvolt
