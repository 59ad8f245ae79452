// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "apps/tv-uds/signals/random.h"
#include "apps/tv-uds/signals/signal.h"

namespace tarvolt::uds {

/// Receiver noise with noise storms in it: bursts that rise fast and decay exponentially, come in clusters, and reach
/// the later channels a little later and weaker, as a drifting source does.
class NoiseStorm : public Signal {
 public:
  explicit NoiseStorm(std::uint64_t seed) : random_(seed) {}

  double Value(int channel, const Moment& moment) const override;

  /// The noise of the receiver alone, about 0.
  double Noise(int channel, const Moment& moment) const;

  /// The bursts alone; 0 outside storms.
  double Bursts(int channel, double seconds) const;

 private:
  double Burst(std::int64_t slot, double seconds) const;
  bool InStorm(double seconds) const;

  Random random_;
};

}  // namespace tarvolt::uds
