// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/processes.h"

namespace tarvolt {

/// Cuts a command line as a shell would for plain words: at blanks, with double quotes holding words together. A
/// quote without its twin holds until the end.
std::vector<std::string> SplitCommandLine(std::string_view commandLine);

/// Other programs on a Linux system, seen through /proc.
class LinuxProcesses final : public Processes {
 public:
  /// Looks for a program whose own name for itself (its argument 0 without a leading folder, or what it set as its
  /// name for the kernel) holds `words`. This process and ended ones do not count; empty words are in no name. Of the
  /// kernel's name only the first 15 bytes exist, so longer words count when they begin with all 15.
  bool IsRunning(std::string_view words) override;

  /// The whole text is one program when a file of that name exists, so that a path with blanks needs no quotes. The
  /// program runs in a session of its own, reads nothing and its output is dropped; messages on standard error go
  /// where ours go. There is nothing to minimise here: windows are the program's own affair.
  bool StartMinimised(const std::string& commandLine, std::string& why) override;

  /// Normal is nice 0, AboveNormal nice -6, High nice -11, RealTime the real-time class at 10 or, where that is
  /// refused, nice -19. Programs that are started later run at normal priority.
  bool SetPriority(PriorityClass priority, std::string& why) override;
};

}  // namespace tarvolt
