// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/fourier_transform.h"

#include <fftw3.h>

#include <algorithm>

namespace tarvolt {

struct FourierTransform::Plan {
  explicit Plan(std::size_t samples)
      : size(samples),
        in(fftw_alloc_real(samples)),
        out(fftw_alloc_complex(samples / 2 + 1)),
        plan(fftw_plan_dft_r2c_1d(static_cast<int>(samples), in, out, FFTW_ESTIMATE)) {}
  ~Plan() {
    fftw_destroy_plan(plan);
    fftw_free(out);
    fftw_free(in);
  }
  Plan(const Plan&) = delete;
  Plan& operator=(const Plan&) = delete;

  std::size_t size;
  double* in;
  fftw_complex* out;
  fftw_plan plan;
};

FourierTransform::FourierTransform(std::size_t size) : plan_(std::make_unique<Plan>(size)) {}
FourierTransform::~FourierTransform() = default;

std::size_t FourierTransform::Size() const {
  return plan_->size;
}

void FourierTransform::Powers(const std::vector<double>& samples, std::vector<double>& powers) {
  std::copy_n(samples.begin(), plan_->size, plan_->in);
  fftw_execute(plan_->plan);
  powers.resize(plan_->size / 2 + 1);
  for (std::size_t i = 0; i < powers.size(); ++i) {
    const fftw_complex& bin = plan_->out[i];
    powers[i] = bin[0] * bin[0] + bin[1] * bin[1];
  }
}

}  // namespace tarvolt
