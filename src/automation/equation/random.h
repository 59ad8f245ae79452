// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tarvolt {

/// Uniform random values, the same row of them for the same seed. A counter in steps of the golden ratio, its bits
/// well mixed: fast, small, without a bad seed.
class EquationRandom {
 public:
  explicit EquationRandom(std::uint64_t seed) : counter_(seed) {}

  /// From 0 up to, and without, 1.
  double Next() { return static_cast<double>(Bits() >> 11) * 0x1p-53; }

  /// The same in single precision.
  float NextSingle() { return static_cast<float>(Bits() >> 40) * 0x1p-24f; }

 private:
  std::uint64_t Bits() {
    std::uint64_t mixed = counter_ += 0x9E3779B97F4A7C15u;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9u;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBu;
    return mixed ^ (mixed >> 31);
  }

  std::uint64_t counter_;
};

}  // namespace tarvolt
