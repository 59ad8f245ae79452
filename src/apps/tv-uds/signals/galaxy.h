// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "apps/tv-uds/signals/signal.h"

namespace tarvolt::uds {

/// The galactic background as a fixed aerial sees it: in each sidereal day a high hump when the inner galaxy passes
/// and a low one when the outer arm does. Later channels stand for higher frequencies, where the background is weaker.
class Galaxy : public Signal {
 public:
  /// The seed chooses the sidereal time at which a connection starts.
  explicit Galaxy(std::uint64_t seed);

  double Value(int channel, const Moment& moment) const override;

 private:
  double startHour_;
};

}  // namespace tarvolt::uds
