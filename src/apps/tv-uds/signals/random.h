// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tarvolt::uds {

/// Random numbers that are looked up and not drawn: the same seed, stream and index always give the same number.
class Random {
 public:
  explicit Random(std::uint64_t seed) : seed_(seed) {}

  /// Evenly spread over 0 up to but not including 1.
  double Uniform(std::uint64_t stream, std::int64_t index) const;

  /// Mean 0 and standard deviation 1.
  double Gaussian(std::uint64_t stream, std::int64_t index) const;

  /// Exponentially distributed with mean 1: how strong bursts and spikes are.
  double Exponential(std::uint64_t stream, std::int64_t index) const;

 private:
  std::uint64_t seed_;
};

}  // namespace tarvolt::uds
