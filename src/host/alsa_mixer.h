// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "host/driver_calls.h"
#include "platform/mixer.h"

namespace tarvolt {

/// ALSA's mixers, opened for each call: what another program has changed is seen, and a card that is unplugged is not
/// held. A mixer that does not answer counts as one that has nothing and refuses.
class AlsaMixer final : public Mixer {
 public:
  /// `drivers` outlives it.
  explicit AlsaMixer(DriverCalls& drivers) : drivers_(drivers) {}

  MixerInputs Inputs(const std::string& card) override;
  bool Select(const std::string& card, int source) override;
  bool SetVolume(const std::string& card, int source, int volume) override;

 private:
  DriverCalls& drivers_;
};

}  // namespace tarvolt
