// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <string>

namespace tarvolt {

/// The inputs that a sound card's mixer chooses between: 0 Line, 1 Mic, 2 Wave (what is played), 3 Stereo Mix.
inline constexpr int kMixerSources = 4;

/// One input of a mixer.
struct MixerInput {
  bool there = false;      ///< the card has it
  std::string name;        ///< the card's own name for it
  bool hasVolume = false;  ///< it can be set
  int volume = 0;          ///< of the capture, 0 to 100
};

using MixerInputs = std::array<MixerInput, kMixerSources>;

/// The mixers of the sound inputs, called by the names of the inputs.
class Mixer {
 public:
  virtual ~Mixer() = default;

  /// What the mixer has now; none of them there for an input without a mixer, as a file.
  virtual MixerInputs Inputs(const std::string& card) = 0;

  /// Captures from this input and from none of the others. False when the card does not have it or refuses.
  virtual bool Select(const std::string& card, int source) = 0;

  /// Sets the volume of the capture, 0 to 100, which is held to that. False when it cannot be set.
  virtual bool SetVolume(const std::string& card, int source, int volume) = 0;
};

}  // namespace tarvolt
