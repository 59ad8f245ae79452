// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <string>

#include "config/settings.h"

namespace tarvolt {

/// Which triggers watch which channels, as CHTrigger and ChTriggerEnabled have it.
struct TriggerChannels {
  std::array<std::string, kChannels> CHTrigger;
  std::array<bool, kChannels> ChTriggerEnabled{};
};

/// Those of the settings.
inline TriggerChannels TriggerChannelsOf(const Settings& settings) {
  return {settings.channels.CHTrigger, settings.channels.ChTriggerEnabled};
}

}  // namespace tarvolt
