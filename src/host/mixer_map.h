// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "platform/mixer.h"

namespace tarvolt {

/// What a simple element of ALSA's mixer can do for a capture.
struct MixerElement {
  std::string name;
  bool captureVolume = false;
  bool captureSwitch = false;
  std::vector<std::string> items;  ///< of an element that chooses the input
};

/// How an input is reached. The numbers are places in the elements, -1 for none.
struct MixerRoute {
  std::string name;  ///< the card's own
  int volume = -1;
  int captureSwitch = -1;
  int chooser = -1;
  int item = -1;  ///< of the chooser

  bool operator==(const MixerRoute&) const = default;
};

using MixerRoutes = std::array<std::optional<MixerRoute>, kMixerSources>;

/// Finds the recorder's inputs among the elements of a card: by an element of their own, else as an item of a chooser
/// of inputs with the common capture volume. A card that names none of them has one input: it stands as Line.
MixerRoutes MapMixer(std::span<const MixerElement> elements);

}  // namespace tarvolt
