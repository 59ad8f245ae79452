// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tarvolt {

/// What a 16-bit sample can hold, in sample units: 0 dB full scale.
inline constexpr double kFullScale = 32768;

/// Where the scales of levels end: what is lower, silence too, reads as this.
inline constexpr double kLowestDecibels = -140;

/// Decibels of full scale of an amplitude in sample units: 20 log10(counts / kFullScale), at least kLowestDecibels.
double DecibelsFullScale(double counts);

/// The mark of a meter that stays at the highest level for a while and then falls slowly.
class PeakMark {
 public:
  /// Takes the level now. Times are monotonic milliseconds.
  void Update(double decibels, double now);

  /// Decibels of full scale.
  double Level() const { return level_; }

 private:
  double level_ = kLowestDecibels;
  double reached_ = 0;  ///< when the level was last reached
  double last_ = 0;
};

}  // namespace tarvolt
