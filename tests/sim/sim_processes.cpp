// SPDX-License-Identifier: GPL-3.0-or-later
#include "sim/sim_processes.h"

#include <algorithm>

namespace tarvolt {

bool SimProcesses::IsRunning(std::string_view words) {
  return std::any_of(titles_.begin(), titles_.end(),
                     [words](const std::string& title) { return title.find(words) != std::string::npos; });
}

bool SimProcesses::StartMinimised(const std::string& commandLine, std::string& why) {
  started_.push_back(commandLine);
  if (!startRefusal_.empty()) {
    why = startRefusal_;
    return false;
  }
  if (const auto handler = onStart) handler(commandLine);
  return true;
}

}  // namespace tarvolt
