// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace tarvolt {

/// The four classes of process priority, with the numbers that stand in the settings.
enum class PriorityClass { Normal = 0x20, AboveNormal = 0x8000, High = 0x80, RealTime = 0x100 };

/// Other programs, and this process among them.
class Processes {
 public:
  virtual ~Processes() = default;

  /// True when a program shows `words` in its window title, or, having no window, in the name it runs under.
  virtual bool IsRunning(std::string_view words) = 0;

  /// Starts a program minimised, with its arguments behind it as a shell would cut them (blanks, double quotes),
  /// and does not wait for it. False, with the reason in `why`, when it cannot be started.
  virtual bool StartMinimised(const std::string& commandLine, std::string& why) = 0;

  /// Sets the priority of this process. False, with the reason in `why`, when the system refuses.
  virtual bool SetPriority(PriorityClass priority, std::string& why) = 0;
};

}  // namespace tarvolt
