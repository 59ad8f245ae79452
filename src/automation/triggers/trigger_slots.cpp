// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/triggers/trigger_slots.h"

namespace tarvolt {

bool Watches(const TriggerChannels& channels, int slot, int channel) {
  const std::string& digits = channels.CHTrigger.at(static_cast<std::size_t>(channel));
  const auto place = static_cast<std::size_t>(slot);
  return place < digits.size() && digits[place] > '0' && digits[place] <= '9';
}

void SetWatches(TriggerChannels& channels, int slot, int channel, bool watches) {
  std::string& digits = channels.CHTrigger.at(static_cast<std::size_t>(channel));
  digits.resize(kTriggerSlots, '0');
  digits.at(static_cast<std::size_t>(slot)) = watches ? '1' : '0';
}

bool IsInUse(const TriggerChannels& channels, int slot, int count) {
  for (int channel = 0; channel < count; ++channel) {
    if (channels.ChTriggerEnabled.at(static_cast<std::size_t>(channel)) && Watches(channels, slot, channel))
      return true;
  }
  return false;
}

}  // namespace tarvolt
