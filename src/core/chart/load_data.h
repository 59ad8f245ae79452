// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "files/load.h"
#include "model/chart_window.h"
#include "model/session.h"

namespace tarvolt {

enum class LoadOutcome {
  Refused,  ///< nothing was loaded, and the window has the chart that it had
  NoData,   ///< the file has no usable samples: the window shows what the file says of itself
  Torn,     ///< the samples up to one that the disk or the memory refused
  Loaded    ///< all samples that were asked for
};

/// Loads a data file into a window that has no run, as the window's loadOptions say; they get the channels that were
/// chosen, and `range` the indices in force. What is wrong with the file is said in a box. The chart on display is
/// touched only once the file is known to be one and `makeRoom` has agreed, which says itself why not. Yields before
/// the file is read, while somebody is asked, and after every 5,000 samples.
LoadOutcome LoadData(Session& session, ChartWindow& window, const std::filesystem::path& file, LoadRange& range,
                     LoadRequest request = {}, const std::function<bool()>& makeRoom = {});

/// The whole file.
LoadOutcome LoadData(Session& session, ChartWindow& window, const std::filesystem::path& file);

/// The same in steps, for a program without a session: takes the window's chart away and puts in its place what a file
/// says of its own, without its samples yet.
void BeginLoadedChart(const FileChart& file, ChartWindow& window);

/// The samples are in: times, counts, notations and what is enabled.
void FinishLoadedChart(const FileChart& file, ChartWindow& window);

/// The window's own title, as it is without a file.
std::string OwnTitle(const ChartWindow& window);

}  // namespace tarvolt
