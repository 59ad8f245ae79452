// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/spectrum.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

#include "analysis/level_meter.h"

namespace tarvolt {
namespace {

// Sums of cosines, periodic over the transform: F. J. Harris, "On the use of windows for harmonic analysis with the
// discrete Fourier transform", 1978.
double WeightAt(SpectrumWeights weights, double turn) {
  const double angle = 2 * std::numbers::pi * turn;
  switch (weights) {
    case SpectrumWeights::Hann:
      return 0.5 - 0.5 * std::cos(angle);
    case SpectrumWeights::Blackman:
      return 0.42 - 0.5 * std::cos(angle) + 0.08 * std::cos(2 * angle);
    case SpectrumWeights::Rectangular:
      break;
  }
  return 1;
}

}  // namespace

Spectrum::Spectrum(std::size_t size) : transform_(size), weights_(size), weighted_(size) {
  SetWeights(SpectrumWeights::Hann);
}

void Spectrum::SetWeights(SpectrumWeights weights) {
  const auto size = static_cast<double>(weights_.size());
  for (std::size_t i = 0; i < weights_.size(); ++i) weights_[i] = WeightAt(weights, static_cast<double>(i) / size);
  sumOfWeights_ = std::accumulate(weights_.begin(), weights_.end(), 0.0);
  Clear();
}

void Spectrum::SetAveraging(int transforms) {
  averaging_ = std::max(transforms, 1);
  count_ = std::min(count_, averaging_);
}

void Spectrum::Add(const std::vector<double>& samples) {
  if (samples.size() != weights_.size()) return;
  for (std::size_t i = 0; i < samples.size(); ++i) weighted_[i] = samples[i] * weights_[i];
  transform_.Powers(weighted_, powers_);
  mean_.resize(powers_.size(), 0);
  peaks_.resize(powers_.size(), 0);
  count_ = std::min(count_ + 1, averaging_);
  for (std::size_t i = 0; i < powers_.size(); ++i) {
    mean_[i] += (powers_[i] - mean_[i]) / count_;
    peaks_[i] = std::max(peaks_[i], powers_[i]);
  }
}

void Spectrum::Clear() {
  count_ = 0;
  mean_.clear();
  peaks_.clear();
}

std::vector<double> Spectrum::Levels() const {
  return InDecibels(mean_);
}

std::vector<double> Spectrum::Peaks() const {
  return InDecibels(peaks_);
}

// Every bin but the first and the last shares its sine with the negative frequencies.
std::vector<double> Spectrum::InDecibels(const std::vector<double>& powers) const {
  std::vector<double> levels(powers.size());
  for (std::size_t i = 0; i < powers.size(); ++i) {
    const double halves = i == 0 || i + 1 == powers.size() ? 1 : 2;
    levels[i] = DecibelsFullScale(halves * std::sqrt(powers[i]) / sumOfWeights_);
  }
  return levels;
}

SpectrumLine StrongestLine(const std::vector<double>& levels) {
  if (levels.empty()) return {};
  if (levels.size() == 1) return {0, levels.front()};
  const auto top = static_cast<std::size_t>(std::max_element(levels.begin() + 1, levels.end()) - levels.begin());
  SpectrumLine line{static_cast<double>(top), levels[top]};
  if (top + 1 == levels.size()) return line;
  const double below = levels[top - 1];
  const double above = levels[top + 1];
  const double bend = below - 2 * line.decibels + above;
  if (!(bend < 0)) return line;
  const double shift = std::clamp((below - above) / (2 * bend), -0.5, 0.5);
  line.bin += shift;
  line.decibels -= (below - above) * shift / 4;
  return line;
}

}  // namespace tarvolt
