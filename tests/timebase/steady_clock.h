// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/clock.h"
#include "timebase/time_stamp.h"

namespace tarvolt {

/// A clock that goes on by a fixed step with each reading.
class SteadyClock : public Clock {
 public:
  explicit SteadyClock(const WallTime& start, int stepMilliseconds = 0)
      : now_(StampOf(start)), step_(stepMilliseconds / 86400000.0) {}

  WallTime LocalNow() override {
    const WallTime reading = FieldsOf(now_);
    now_ += step_;
    ++readings;
    return reading;
  }
  ZoneInfo Zone() override { return zone; }
  double MonotonicMilliseconds() override { return readings * 10.0; }

  ZoneInfo zone;
  int readings = 0;

 private:
  double now_;
  double step_;
};

}  // namespace tarvolt
