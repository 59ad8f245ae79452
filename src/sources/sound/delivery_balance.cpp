// SPDX-License-Identifier: GPL-3.0-or-later
#include "sources/sound/delivery_balance.h"

#include <algorithm>
#include <limits>

namespace tarvolt {
namespace {

constexpr double kShortestGap = 250;  // milliseconds; buffers that are merely late can look like less
constexpr double kMostTurn = 100;     // by which one stretch may move what is held for creep
constexpr double kWeight = 0.25;

constexpr double kNone = std::numeric_limits<double>::infinity();

}  // namespace

void DeliveryBalance::BeginAnew(double stretch) {
  *this = DeliveryBalance();
  stretch_ = stretch;
}

double DeliveryBalance::Take(double heardAt, double length) {
  if (!last_) {
    stretchEnd_ = heardAt + stretch_;
    last_ = heardAt - length;
    least_ = kNone;
  }
  double gap = 0;
  if (heardAt >= stretchEnd_) {
    gap = EndStretch();
    stretchEnd_ = heardAt + stretch_;
    least_ = kNone;
  }
  lateness_ += heardAt - *last_ - length;
  last_ = heardAt;
  least_ = std::min(least_, lateness_);
  return gap;
}

double DeliveryBalance::EndStretch() {
  const double change = before_ ? least_ - *before_ : 0;
  before_ = least_;
  const double surplus = change - creep_;
  creep_ += kWeight * std::clamp(surplus, -kMostTurn, kMostTurn);
  return surplus > kShortestGap ? surplus : 0;
}

}  // namespace tarvolt
