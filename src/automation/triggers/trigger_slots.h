// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "automation/triggers/trigger_object.h"
#include "model/trigger_channels.h"

namespace tarvolt {

/// There are ten triggers, and this is how each place counts them:
///
/// | place                                                     | trigger 1 | trigger 10 |
/// |-----------------------------------------------------------|-----------|------------|
/// | oTriggers and every `slot` argument                       | 0         | 9          |
/// | tabs, the monitor, log lines, "{n}" in a trigger file     | 1         | 10         |
/// | digit of CHTrigger<channel>, counted from the left from 0 | 0         | 9          |
///
/// CHTrigger has a text for each channel, counted from 0, as ChTriggerEnabled has a flag: a digit above 0 says that the
/// trigger watches the channel, and the flag that the channel is offered to its triggers at all. A trigger may watch
/// several channels; it counts their samples together.
inline constexpr int kTriggerSlots = 10;

using TriggerDefinitions = std::array<TriggerDefinition, kTriggerSlots>;
using Triggers = std::array<clsTriggerObject, kTriggerSlots>;

/// The number that a person knows a slot by.
constexpr int NumberOfSlot(int slot) {
  return slot + 1;
}

/// The slot of such a number; -1 for a number that none has.
constexpr int SlotOfNumber(int number) {
  return number >= 1 && number <= kTriggerSlots ? number - 1 : -1;
}

/// True when the slot watches the channel, both counted from 0. A missing digit does not.
bool Watches(const TriggerChannels& channels, int slot, int channel);

/// Lets a slot watch a channel or not. The text of the channel has ten digits afterwards.
void SetWatches(TriggerChannels& channels, int slot, int channel, bool watches);

/// True when the slot is offered the samples of any of the first `count` channels.
bool IsInUse(const TriggerChannels& channels, int slot, int count);

}  // namespace tarvolt
