// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "config/settings.h"

namespace tarvolt {

/// How the next data file is loaded; a window holds it from the menu command to the end of the load.
struct LoadOptions {
  bool LoadLocalOffsets = false;                  ///< add the station's own channel offsets to the values
  bool LoadFileOffsets = false;                   ///< add the channel offsets that the file describes
  bool LoadSelectedChannels = false;              ///< load only the channels of ChannelSelected, which is asked for
  std::array<bool, kChannels> ChannelSelected{};  ///< by channel of the file
};

}  // namespace tarvolt
