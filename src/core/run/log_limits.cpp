// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/run/log_limits.h"

#include <algorithm>

namespace tarvolt {

void LogLimits::SampleFinished(const FinishedSample& sample) {
  ++run_.Dcount;
  ++run_.TotalSamples;
  const LogPlan& log = run_.log;
  if (IsFull(sample)) {
    control_.MaxedOut(MaxedOutMode::LimitReached);
  } else if (!log.UseRestartTime && run_.CurrentStamp >= log.ChartEndTime) {
    control_.MaxedOut(MaxedOutMode::LimitReached);
  } else if (log.UseRestartTime && ClockOfSample() >= log.NextRestart) {
    control_.MaxedOut(MaxedOutMode::PlannedRestart);
  }
}

bool LogLimits::IsFull(const FinishedSample& sample) const {
  return !sample.stored || run_.Dcount >= std::min(run_.log.MaxArrayCount, chart_.Capacity());
}

// A restart is a time of the clock; with TimeRefZero the stamps count from midnight.
TimeStamp LogLimits::ClockOfSample() const {
  const TimeStamp first = run_.time.firstStamp;
  return run_.log.TimeRefZero ? run_.CurrentStamp + first - WholeDay(first) : run_.CurrentStamp;
}

}  // namespace tarvolt
