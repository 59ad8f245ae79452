// SPDX-License-Identifier: GPL-3.0-or-later
#include "apps/tv-uds/signals/signal.h"

#include "apps/tv-uds/signals/galaxy.h"
#include "apps/tv-uds/signals/lightning.h"
#include "apps/tv-uds/signals/noise_storm.h"
#include "apps/tv-uds/signals/receiver.h"
#include "apps/tv-uds/signals/test_signals.h"

namespace tarvolt::uds {

const std::vector<std::string>& SignalKinds() {
  static const std::vector<std::string> kinds = {"receiver", "sine",   "ramp",     "staircase",
                                                 "noise",    "galaxy", "lightning"};
  return kinds;
}

std::unique_ptr<Signal> MakeSignal(std::string_view kind, std::uint64_t seed) {
  if (kind == "receiver") return std::make_unique<Receiver>(seed);
  if (kind == "sine") return std::make_unique<Sine>();
  if (kind == "ramp") return std::make_unique<Ramp>();
  if (kind == "staircase") return std::make_unique<Staircase>();
  if (kind == "noise") return std::make_unique<NoiseStorm>(seed);
  if (kind == "galaxy") return std::make_unique<Galaxy>(seed);
  if (kind == "lightning") return std::make_unique<Lightning>(seed);
  return nullptr;
}

}  // namespace tarvolt::uds
