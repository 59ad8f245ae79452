// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "apps/tv-uds/signals/galaxy.h"
#include "apps/tv-uds/signals/lightning.h"
#include "apps/tv-uds/signals/noise_storm.h"

namespace tarvolt::uds {

/// What a radio-astronomy receiver shows on an ordinary day: the galactic background with the receiver's own noise
/// on it, noise storms, and now and then lightning.
class Receiver : public Signal {
 public:
  explicit Receiver(std::uint64_t seed) : galaxy_(seed), storm_(seed), lightning_(seed) {}

  double Value(int channel, const Moment& moment) const override {
    return galaxy_.Value(channel, moment) + storm_.Noise(channel, moment) + storm_.Bursts(channel, moment.seconds) +
           0.5 * lightning_.Spikes(channel, moment.seconds);
  }

 private:
  Galaxy galaxy_;
  NoiseStorm storm_;
  Lightning lightning_;
};

}  // namespace tarvolt::uds
