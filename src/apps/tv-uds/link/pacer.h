// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tarvolt::uds {

/// When each data set is due. The time of a set follows from its number alone, so that the rate is kept without
/// drift however late the single sets go out. Times are seconds of a clock that never steps.
class Pacer {
 public:
  /// How late a set may be and still be sent.
  static constexpr double kMostLate = 10;

  /// `rate` sets a second, above 0.
  explicit Pacer(double rate) : rate_(rate) {}

  /// The next set is due at `time`.
  void StartAt(double time);

  /// Number of the next set, from 0.
  std::int64_t Next() const { return next_; }

  /// When the next set is due.
  double NextTime() const;

  /// The next set has been sent.
  void Take() { ++next_; }

  /// Leaves out the sets that are more than kMostLate late; how many they were.
  std::int64_t LeaveOutLate(double now);

  /// Moves the whole schedule so that no set is more than kMostLate late; true when it was moved.
  bool PutOffLate(double now);

 private:
  double rate_;
  std::int64_t next_ = 0;
  std::int64_t first_ = 0;  // the set that was due at startTime_
  double startTime_ = 0;
};

}  // namespace tarvolt::uds
