// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>

namespace tarvolt {

/// Holds the sound that came against the time that passed, to find what a driver lost without a word. Buffers may come
/// late and unevenly, and the input's own clock may be wrong by some percent: what counts is how late the least late
/// buffer of a stretch is, beside that of the stretch before. All times are in milliseconds.
class DeliveryBalance {
 public:
  /// Nothing is known any more: the next buffer begins. A stretch should hold some eight buffers.
  void BeginAnew(double stretch);

  /// Takes a buffer of `length` whose end was heard at `heardAt`, as far as its driver tells, on a clock that never
  /// steps. Gives the length of a gap, found at the end of the stretch behind it, and 0 otherwise.
  double Take(double heardAt, double length);

 private:
  double EndStretch();

  double stretch_ = 0;
  double stretchEnd_ = 0;
  std::optional<double> last_;    ///< when the last buffer was heard; none before the first
  double lateness_ = 0;           ///< of the last buffer, against the first
  double least_ = 0;              ///< the least lateness of the stretch
  std::optional<double> before_;  ///< that of the stretch before
  double creep_ = 0;              ///< what lateness grows by in a stretch, from the input's own clock
};

}  // namespace tarvolt
