// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstdint>
#include <vector>

#include "platform/clock.h"

namespace tarvolt {

/// The zone of a simulated machine, in minutes west of UT as the operating system gives them.
struct SimZone {
  /// A change-over of daylight saving, at an instant of UT.
  struct Change {
    WallTime ut;
    bool daylight = false;
  };

  int biasMinutes = 0;
  int standardBiasMinutes = 0;
  int daylightBiasMinutes = -60;  ///< counts only while daylight saving is in force
  std::vector<Change> changes;    ///< in ascending order; none means a zone without daylight saving
};

/// The clock of a simulated machine. Time stands still unless the loop moves it, or a routine spins on it.
class SimClock final : public Clock {
 public:
  /// So many readings in a row without a turn of the loop are taken for a spin; each further one lasts a millisecond.
  static constexpr int kReadsBeforeSpin = 1000;

  /// A machine switched on at `ut`, with its zone set to UT.
  explicit SimClock(const WallTime& ut);

  WallTime LocalNow() override;
  ZoneInfo Zone() override;
  double MonotonicMilliseconds() override { return static_cast<double>(now_); }

  /// Milliseconds since the machine was switched on; never steps. The time that the loop's events are ordered by.
  std::int64_t Now() const { return now_; }

  /// The wall clock in UT. Free of charge: not counted as a reading.
  WallTime UtNow() const;

  void SetZone(const SimZone& zone);

  /// Sets the wall clock forward, or back when negative. Waits and timers do not notice.
  void StepWall(std::chrono::milliseconds step) { wallOffset_ += step.count(); }

  /// For the loop: moves time to `when`, never back.
  void AdvanceTo(std::int64_t when);

  /// For the loop: the program has given way, so what comes is no spin.
  void NoteProgress() { readsSinceProgress_ = 0; }

 private:
  struct ChangeInstant {
    std::int64_t wall = 0;
    bool daylight = false;
  };

  std::int64_t UtWall() const { return now_ + wallOffset_; }
  bool DaylightInForce() const;
  int WestMinutes() const;

  std::int64_t now_ = 0;
  std::int64_t wallOffset_ = 0;  // UT in milliseconds since 1970 at now_ = 0
  int readsSinceProgress_ = 0;
  SimZone zone_;
  std::vector<ChangeInstant> changes_;
};

}  // namespace tarvolt
