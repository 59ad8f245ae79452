// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/open_files.h"

#include <sys/resource.h>

#include <algorithm>

namespace tarvolt {

void RaiseOpenFileLimit() {
  rlimit limit{};
  if (::getrlimit(RLIMIT_NOFILE, &limit) != 0) return;
  limit.rlim_cur = std::max(limit.rlim_cur, std::min<rlim_t>(limit.rlim_max, kMostOpenFiles));
  ::setrlimit(RLIMIT_NOFILE, &limit);  // refused: then it stays as it is, and a listener reports what it cannot take
}

}  // namespace tarvolt
