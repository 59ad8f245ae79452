// SPDX-License-Identifier: GPL-3.0-or-later
#include "apps/tv-uds/link/pacer.h"

#include <cmath>

namespace tarvolt::uds {

void Pacer::StartAt(double time) {
  first_ = next_;
  startTime_ = time;
}

double Pacer::NextTime() const {
  return startTime_ + static_cast<double>(next_ - first_) / rate_;
}

std::int64_t Pacer::LeaveOutLate(double now) {
  const double late = now - kMostLate - NextTime();
  if (late <= 0) return 0;
  const auto count = static_cast<std::int64_t>(std::ceil(late * rate_));
  next_ += count;
  return count;
}

bool Pacer::PutOffLate(double now) {
  const double late = now - kMostLate - NextTime();
  if (late <= 0) return false;
  startTime_ += late;
  return true;
}

}  // namespace tarvolt::uds
