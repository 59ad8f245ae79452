// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/processes.h"

namespace tarvolt {

/// The other programs of a simulated machine: window titles, and a note of what was started.
class SimProcesses final : public Processes {
 public:
  bool IsRunning(std::string_view words) override;
  bool StartMinimised(const std::string& commandLine, std::string& why) override;
  bool SetPriority(PriorityClass, std::string&) override { return true; }

  /// A program opens a window with this title.
  void OpenWindow(const std::string& title) { titles_.insert(title); }

  /// Called with each command line that was started: here the program comes to life.
  std::function<void(const std::string& commandLine)> onStart;

  /// Starts fail from here on with this reason.
  void RefuseStarts(const std::string& why) { startRefusal_ = why; }

  /// The command lines asked for so far, also those that were refused.
  const std::vector<std::string>& Started() const { return started_; }

 private:
  std::set<std::string> titles_;
  std::vector<std::string> started_;
  std::string startRefusal_;
};

}  // namespace tarvolt
