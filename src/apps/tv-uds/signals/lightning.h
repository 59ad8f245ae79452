// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "apps/tv-uds/signals/random.h"
#include "apps/tv-uds/signals/signal.h"

namespace tarvolt::uds {

/// A thunderstorm far off: sharp spikes that all channels see at the same instant and with a strength of their own.
class Lightning : public Signal {
 public:
  explicit Lightning(std::uint64_t seed) : random_(seed) {}

  double Value(int channel, const Moment& moment) const override;

  /// The spikes alone; 0 between them.
  double Spikes(int channel, double seconds) const;

 private:
  Random random_;
};

}  // namespace tarvolt::uds
