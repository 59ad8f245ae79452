#pragma once

#include <cstdint>
#include <filesystem>

#include "files/forced_values.h"
#include "files/load_channels.h"
#include "model/chart_window.h"
#include "model/session.h"

namespace tarvolt {

/// The samples of a file that are wanted. Both 0 are all of them, any other pair makes a partial load; a last index of
/// 0 or beyond the file is the file's, and a first index beyond the last is 0. A negative index counts as 0.
struct LoadRange {
  std::int32_t firstIndex = 0;
  std::int32_t lastIndex = 0;
};

/// What a load may be given beside the file.
struct LoadRequest {
  AskChannels askChannels;     ///< asks which channels to load; without it all of them are
  bool keepSelection = false;  ///< the window's ChannelSelected is used as it stands, and nobody is asked
  int extraChannels = 0;       ///< empty channels behind those of the file, as far as a chart has room
  ForcedValues forced;
};

enum class LoadOutcome {
  Refused,  ///< nothing was loaded, and the chart is empty; with a run or another load going on, it is as it was
  NoData,   ///< the file has no usable samples: the window shows what the file tells of itself
  Torn,     ///< the samples up to one that the disk or the memory refused
  Loaded    ///< all samples that were asked for
};

/// Loads a data file into a window that has no run, as the window's loadOptions say. Refusals are told in a box and
/// leave the chart cleared. Afterwards `range` holds the indices in force. Yields before the file is read, while
/// `askChannels` asks, and after every 5,000 samples.
LoadOutcome LoadData(Session& session, ChartWindow& window, const std::filesystem::path& file, LoadRange& range,
                     const LoadRequest& request = {});

/// The whole file.
LoadOutcome LoadData(Session& session, ChartWindow& window, const std::filesystem::path& file);

}  // namespace tarvolt
