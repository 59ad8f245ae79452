// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>

#include "display/strip_chart.h"
#include "files/format/data_file_reader.h"
#include "files/load_channels.h"
#include "model/load_options.h"
#include "text/result.h"

namespace tarvolt {

/// The samples of a file that are wanted. Both 0 are all of them, any other pair makes a partial load; a last index of
/// 0 or beyond the file is the file's, and a first index beyond the last is 0. A negative index counts as 0.
struct LoadRange {
  std::int32_t firstIndex = 0;
  std::int32_t lastIndex = 0;
};

/// What a load may be given beside the file.
struct LoadRequest {
  LoadRange range;
  LoadOptions options;
  std::array<double, kMaxFileChannels> stationOffsets{};  ///< added where LoadLocalOffsets says so
  AskChannels askChannels;                                ///< asks which channels to load; without it all of them are
  bool keepSelection = false;                             ///< ChannelSelected is used as it stands, and nobody is asked
  int extraChannels = 0;  ///< empty channels behind those of the file, as far as a chart has room
  ForcedValues forced;
};

/// What a file says of its chart, as far as that is loaded.
struct FileChart {
  std::filesystem::path file;
  std::uint64_t fileSize = 0;
  DataFileHeader header;
  NotesBlock notes;                          ///< labels, offsets and notations are those of the chart
  std::array<int, kMaxFileChannels> pens{};  ///< channel of the file, by channel of the chart
  int channels = 1;                          ///< of the chart, with the extra ones
  LoadRange range;                           ///< in force
  std::int32_t lastIndex = -1;               ///< of the file
  LoadOptions options;                       ///< as they were answered
  bool partial = false;
  bool forced = false;

  bool tornSample = false;  ///< the file ends within a sample

  /// Below three samples a file counts as empty, and only what it says of itself is loaded.
  bool HasData() const { return lastIndex >= 2; }
};

/// Words about what is missing at the end of a file of which all samples are in `chart`: its header names a later end,
/// or it ends within a sample. Empty when nothing is known to be missing.
std::string WhatIsMissing(const FileChart& file, const StripChart& chart);

/// Called after every 5,000 samples of the file, with the number that is in the chart; false ends the load.
using LoadProgress = std::function<bool(std::int32_t stored)>;

/// The load of one data file. Changes nothing but the chart that its samples are read into.
class ChartLoad {
 public:
  /// Opens nothing yet; `files` outlives it.
  ChartLoad(FileSystem& files, LoadRequest request) : reader_(files), request_(std::move(request)) {}

  /// Opens the file and reads what it says of itself; fails in words when there is no data file of that name.
  Outcome Open(const std::filesystem::path& file);

  /// Settles which channels of an opened file are loaded; may ask, and then may yield. False when none is.
  bool ChooseChannels();

  /// Valid once opened, and what it says of channels once these are chosen.
  const FileChart& Chart() const { return chart_; }

  /// Adds the samples of the range to an empty chart, which gets the channels and the room for them. False when it ends
  /// early: at a sample that the disk or the memory refuses, or because `progress` says so. Yields as that does.
  bool ReadSamples(StripChart& chart, const LoadProgress& progress = {});

 private:
  DataFileReader reader_;
  LoadRequest request_;
  FileChart chart_;
  ChannelMap channels_;
};

}  // namespace tarvolt
