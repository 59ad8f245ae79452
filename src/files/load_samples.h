#pragma once

#include <string>

#include "files/data_file_reader.h"
#include "files/load.h"

namespace tarvolt {

/// A run in any of its states, in which a chart cannot be loaded.
bool RunInProgress(const RunState& run);

/// Walks all samples of an opened file and stores those of the range, which must be in force. Yields after every 5,000
/// samples, with the progress in the title. False when it ends early: at a sample that the disk refuses, when the chart
/// is full, or when a run began meanwhile.
bool ReadSamples(Session& session, ChartWindow& window, DataFileReader& reader, const ChannelMap& channels,
                 const LoadRange& range, const std::string& name);

}  // namespace tarvolt
