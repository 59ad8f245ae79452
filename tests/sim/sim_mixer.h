// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>

#include "platform/mixer.h"

namespace tarvolt {

/// The mixers of a simulated machine; none at first.
class SimMixer final : public Mixer {
 public:
  /// A card gets a mixer with these inputs.
  void Fit(const std::string& card, const MixerInputs& inputs) { cards_[card].inputs = inputs; }

  /// The input that a card captures from; -1 before the first choice.
  int Selected(const std::string& card) { return cards_[card].selected; }

  MixerInputs Inputs(const std::string& card) override {
    const auto found = cards_.find(card);
    return found == cards_.end() ? MixerInputs() : found->second.inputs;
  }
  bool Select(const std::string& card, int source) override {
    if (!Inputs(card).at(static_cast<std::size_t>(source)).there) return false;
    cards_[card].selected = source;
    return true;
  }
  bool SetVolume(const std::string& card, int source, int volume) override {
    if (!Inputs(card).at(static_cast<std::size_t>(source)).hasVolume) return false;
    cards_[card].inputs.at(static_cast<std::size_t>(source)).volume = volume;
    return true;
  }

 private:
  struct Card {
    MixerInputs inputs;
    int selected = -1;
  };

  std::map<std::string, Card> cards_;
};

}  // namespace tarvolt
