// SPDX-License-Identifier: GPL-3.0-or-later
#include "apps/tv-uds/tell.h"

#include <cstdio>

namespace tarvolt::uds {

void Tell(const std::string& text) {
  std::fputs(("tv-uds: " + text + "\n").c_str(), stderr);
}

}  // namespace tarvolt::uds
