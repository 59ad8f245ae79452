// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <ctime>

#include "platform/clock.h"

namespace tarvolt {

/// The local wall clock of a moment, in the zone of TZ or of the system as it is set now.
WallTime LocalTimeAt(const timespec& moment);

/// The zone rules in force at a moment. The bias is that of standard time; in daylight time the difference to the
/// offset really in force stands in `daylightBiasMinutes`.
ZoneInfo ZoneAt(std::time_t moment);

/// Milliseconds since the machine was switched on, asleep or not. For any thread.
double MillisecondsSinceBoot();

/// The clock of the machine. A change of the system's zone shows at the next reading.
class SystemClock final : public Clock {
 public:
  WallTime LocalNow() override;
  ZoneInfo Zone() override;
  double MonotonicMilliseconds() override;
};

}  // namespace tarvolt
