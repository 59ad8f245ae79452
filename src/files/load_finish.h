#pragma once

#include <cstdint>
#include <filesystem>

#include "files/load.h"

namespace tarvolt {

/// What the end of a load knows.
struct FinishedLoad {
  std::filesystem::path file;
  std::uint64_t fileSize = 0;
  LoadRange range;  ///< in force
  bool partial = false;
  bool forced = false;
};

/// The window's own title, as it is without a file.
std::string OwnTitle(const ChartWindow& window);

/// Makes the window one with a loaded chart: its times, counts, notations, titles and status, what is enabled, the log
/// and the list of recent files.
void FinishLoad(Session& session, ChartWindow& window, const FinishedLoad& load);

}  // namespace tarvolt
