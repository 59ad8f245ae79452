// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <vector>

#include "analysis/fourier_transform.h"

namespace tarvolt {

/// How the samples of a transform are weighted. The smoother the ends, the less a strong tone leaks into distant
/// frequencies, and the wider it stands.
enum class SpectrumWeights { Hann, Blackman, Rectangular };

/// The running spectrum of one side of the sound input, in decibels of full scale: a sine of full scale that falls on a
/// bin stands at 0 there, whatever the weights.
class Spectrum {
 public:
  /// Of transforms of `size` samples, even and at least 16.
  explicit Spectrum(std::size_t size);

  /// The next transforms are weighted so; what was gathered is dropped.
  void SetWeights(SpectrumWeights weights);

  /// Mean over about so many transforms, 1 for none: the first ones count alike, older ones then fade.
  void SetAveraging(int transforms);

  /// Takes `size` samples; another number is passed over.
  void Add(const std::vector<double>& samples);

  /// Drops what was gathered, the held peaks too.
  void Clear();

  /// Drops the held peaks alone.
  void ClearPeaks() { peaks_.clear(); }

  /// Levels of the size / 2 + 1 bins from 0 Hz to half the sample rate; empty before the first transform.
  std::vector<double> Levels() const;

  /// The highest level that each bin has had in a single transform.
  std::vector<double> Peaks() const;

  /// Frequency of a bin in hertz.
  double HertzOf(double bin, double samplesPerSecond) const {
    return bin * samplesPerSecond / static_cast<double>(transform_.Size());
  }

 private:
  std::vector<double> InDecibels(const std::vector<double>& powers) const;

  FourierTransform transform_;
  std::vector<double> weights_;
  double sumOfWeights_ = 1;
  int averaging_ = 1;
  int count_ = 0;
  std::vector<double> weighted_;
  std::vector<double> powers_;
  std::vector<double> mean_;
  std::vector<double> peaks_;
};

/// A line of a spectrum.
struct SpectrumLine {
  double bin = 0;       ///< where its top is, between the bins
  double decibels = 0;  ///< of full scale
};

/// The strongest line: the top of the parabola through the decibels of the highest bin and its neighbours (J. O. Smith,
/// "Spectral audio signal processing", 2011). The bin at 0 Hz, an offset and no tone, is left out where there are
/// others.
SpectrumLine StrongestLine(const std::vector<double>& levels);

}  // namespace tarvolt
