// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace tarvolt {

/// The station's home, as a full path: `option` (--home) when given, else TARVOLT_HOME, else "tarvolt" under the
/// user's data folder (XDG_DATA_HOME, or ~/.local/share). Variables that are empty count as not set.
std::filesystem::path FindHome(const std::optional<std::string>& option);

/// Keeps a home for one program. The lock is the operating system's, so it ends with the process, whatever its end.
class HomeLock {
 public:
  HomeLock() = default;
  ~HomeLock();
  HomeLock(const HomeLock&) = delete;
  HomeLock& operator=(const HomeLock&) = delete;

  /// Makes the folder where it is missing and locks its file "lock", which then holds the process id. False, with
  /// the reason in `why`, when another program has it or it cannot be made. Called once.
  bool Take(const std::filesystem::path& home, std::string& why);

 private:
  int fd_ = -1;
};

}  // namespace tarvolt
