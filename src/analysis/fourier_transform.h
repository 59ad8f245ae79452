// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

namespace tarvolt {

/// The Fourier transform of so many real samples at a time.
class FourierTransform {
 public:
  /// `size` is the number of samples, at least 2 and even; powers of two are the fastest.
  explicit FourierTransform(std::size_t size);
  ~FourierTransform();

  std::size_t Size() const;

  /// Squares of the magnitudes at the Size() / 2 + 1 frequencies from 0 to half the sample rate, not normed: a sine of
  /// amplitude 1 over a whole number of periods gives (Size() / 2)^2. `samples` are Size().
  void Powers(const std::vector<double>& samples, std::vector<double>& powers);

 private:
  struct Plan;
  std::unique_ptr<Plan> plan_;
};

}  // namespace tarvolt
