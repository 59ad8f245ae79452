// SPDX-License-Identifier: GPL-3.0-or-later
#include "apps/tv-uds/signals/random.h"

#include <cmath>
#include <numbers>

namespace tarvolt::uds {
namespace {

/// Multiply-and-fold: every bit of the input reaches every bit of the result.
std::uint64_t Mix(std::uint64_t x) {
  x ^= x >> 32;
  x *= 0xD6E8FEB86659FD93U;
  x ^= x >> 32;
  x *= 0xD6E8FEB86659FD93U;
  x ^= x >> 32;
  return x;
}

constexpr std::uint64_t kGoldenRatio = 0x9E3779B97F4A7C15U;

}  // namespace

double Random::Uniform(std::uint64_t stream, std::int64_t index) const {
  const std::uint64_t place = Mix(Mix(seed_ + kGoldenRatio) ^ (stream * kGoldenRatio));
  const std::uint64_t bits = Mix(place + static_cast<std::uint64_t>(index) * kGoldenRatio);
  return static_cast<double>(bits >> 11) * 0x1p-53;
}

double Random::Gaussian(std::uint64_t stream, std::int64_t index) const {
  const double radius = std::sqrt(2 * Exponential(2 * stream + 1, index));
  return radius * std::cos(2 * std::numbers::pi * Uniform(2 * stream + 2, index));
}

double Random::Exponential(std::uint64_t stream, std::int64_t index) const {
  return -std::log1p(-Uniform(stream, index));
}

}  // namespace tarvolt::uds
