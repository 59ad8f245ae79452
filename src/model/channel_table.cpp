// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/channel_table.h"

#include <algorithm>

namespace tarvolt {

int ActiveChannels(const Settings& settings) {
  const auto end = std::find_if(settings.channels.Dsrc.begin(), settings.channels.Dsrc.end(),
                                [](int source) { return source <= 0; });
  return static_cast<int>(end - settings.channels.Dsrc.begin());
}

}  // namespace tarvolt
