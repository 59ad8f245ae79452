#pragma once

#include <string>

#include "platform/mixer.h"

namespace tarvolt {

/// ALSA's mixers, opened for each call: what another program has changed is seen, and a card that is unplugged is not
/// held.
class AlsaMixer final : public Mixer {
 public:
  MixerInputs Inputs(const std::string& card) override;
  bool Select(const std::string& card, int source) override;
  bool SetVolume(const std::string& card, int source, int volume) override;
};

}  // namespace tarvolt
