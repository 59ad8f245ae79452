// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <vector>

#include "platform/file_system.h"
#include "timebase/time_stamp.h"

namespace tarvolt {

/// A data file of the recovery folder, as a list of them says it.
struct RecoveredChart {
  std::filesystem::path file;  ///< with its folder
  bool readable = false;       ///< without it the rest is empty
  TimeStamp start = 0;         ///< of its first sample, in the base of its stamps
  double days = 0;             ///< from its first sample to its last
  int channels = 0;
  std::int32_t samples = 0;
  const char* base = "";  ///< of its stamps, as files are named after it: "UT", "ST", or nothing
};

/// The most files that are listed.
inline constexpr std::size_t kMostRecovered = 1000;

/// The data files in `folder`, the one rescued last first. Empty when the folder is not there.
std::vector<RecoveredChart> ListRecovered(FileSystem& files, const std::filesystem::path& folder);

}  // namespace tarvolt
