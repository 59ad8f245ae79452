// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "model/session.h"
#include "platform/mixer.h"

namespace tarvolt {

/// The input of a mixer as the recorder calls it, 0 to 3; the first for a number out of that.
const char* MixerSourceName(int source);

/// What the mixer panel shows.
struct MixerView {
  bool hasMixer = false;  ///< the card has at least one of the inputs
  bool enabled = false;   ///< MixerEnabled: the panel sets the card's mixer
  int source = 0;         ///< MixerSource
  int backgroundL = 0;    ///< of that input, in sample units
  int backgroundR = 0;
  MixerInputs inputs;  ///< the volumes of those that the card lacks are the stored ones
};

/// Looks at the card's mixer now.
MixerView ReadMixer(const Session& session);

/// Chooses an input: MixerSource of the card, and with MixerEnabled the card's own switch. Backgrounds follow it at
/// once. False, and logged, when the card refuses; the choice is kept all the same.
bool SelectMixerSource(Session& session, int source);

/// Sets the volume of an input, 0 to 100, and keeps it; with MixerEnabled on the card too. False, and logged, when the
/// card refuses.
bool SetMixerVolume(Session& session, int source, int volume);

/// With it off the card's mixer is left to other programs. Switching it on sets nothing by itself.
void SetMixerEnabled(Session& session, bool enabled);

/// The volume of the input `source` of the card that `sound` names, as the card has it now, else the stored one.
int MixerVolumeNow(const Session& session, const SoundSettings& sound, int source);

}  // namespace tarvolt
