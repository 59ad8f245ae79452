// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tarvolt {

/// Random numbers of a simulation: the same from the same seed on every machine and library.
class SimRandom {
 public:
  explicit SimRandom(std::uint64_t seed) : state_(seed) {}

  /// 64 random bits (SplitMix64, Steele, Lea and Flood 2014).
  std::uint64_t Next() {
    state_ += 0x9E3779B97F4A7C15u;
    std::uint64_t mixed = state_;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9u;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBu;
    return mixed ^ (mixed >> 31);
  }

  /// 0 up to but not including `limit`; 0 for a limit of 0.
  std::uint64_t Below(std::uint64_t limit) { return limit == 0 ? 0 : Next() % limit; }

  /// 0 up to but not including 1.
  double Unit() { return static_cast<double>(Next() >> 11) * 0x1p-53; }

  /// True with the given probability; draws nothing for 0, so that an unused fault leaves a run as it was.
  bool Chance(double probability) { return probability > 0 && Unit() < probability; }

 private:
  std::uint64_t state_;
};

}  // namespace tarvolt
