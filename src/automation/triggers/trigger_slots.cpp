#include "automation/triggers/trigger_slots.h"

namespace tarvolt {

bool Watches(const Settings& settings, int slot, int channel) {
  const std::string& digits = settings.channels.CHTrigger.at(static_cast<std::size_t>(channel));
  const auto place = static_cast<std::size_t>(slot);
  return place < digits.size() && digits[place] > '0' && digits[place] <= '9';
}

void SetWatches(Settings& settings, int slot, int channel, bool watches) {
  std::string& digits = settings.channels.CHTrigger.at(static_cast<std::size_t>(channel));
  digits.resize(kTriggerSlots, '0');
  digits.at(static_cast<std::size_t>(slot)) = watches ? '1' : '0';
}

bool IsInUse(const Settings& settings, int slot, int channels) {
  for (int channel = 0; channel < channels; ++channel) {
    if (settings.channels.ChTriggerEnabled.at(static_cast<std::size_t>(channel)) && Watches(settings, slot, channel))
      return true;
  }
  return false;
}

}  // namespace tarvolt
