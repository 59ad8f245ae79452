// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tarvolt {

/// One reading of the machine's local wall clock. Month 1..12, day 1..31, millisecond 0..999.
struct WallTime {
  int year = 1970;
  int month = 1;
  int day = 1;
  int hour = 0;
  int minute = 0;
  int second = 0;
  int millisecond = 0;
};

/// What the operating system says about daylight saving at this moment.
enum class ZoneState { Unknown, NoDaylightInformation, Standard, Daylight };

/// The system's zone, in minutes west of UT; the correction of the season in force is added to the bias.
struct ZoneInfo {
  ZoneState state = ZoneState::Unknown;
  int biasMinutes = 0;
  int standardBiasMinutes = 0;
  int daylightBiasMinutes = 0;
};

/// The machine's clock.
class Clock {
 public:
  virtual ~Clock() = default;

  /// The local wall clock, all fields from one reading. It may step either way between two calls.
  virtual WallTime LocalNow() = 0;

  /// The zone rules in force now.
  virtual ZoneInfo Zone() = 0;

  /// Milliseconds since some fixed moment; never steps, and goes on while the machine sleeps. For waits and rates,
  /// never for stamps.
  virtual double MonotonicMilliseconds() = 0;
};

}  // namespace tarvolt
