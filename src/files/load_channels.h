// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>

#include "files/format/notes_block.h"
#include "files/format/sample_layout.h"
#include "model/load_options.h"

namespace tarvolt {

/// The channels of a file that a person may choose from.
struct ChannelQuestion {
  int channels = 1;  ///< of the file; only the first kChannels of them can be chosen singly
  std::array<std::string, kMaxFileChannels> labels;
  std::array<bool, kChannels> ticked{};  ///< as the boxes are at first
  bool localOffsets = false;             ///< the same
};

struct ChannelAnswer {
  std::array<bool, kChannels> ticked{};
  bool localOffsets = false;  ///< the station's own channel offsets are to be added
};

/// Asks a person; nothing when that was cancelled. May yield.
using AskChannels = std::function<std::optional<ChannelAnswer>(const ChannelQuestion&)>;

/// Which channels of a file go into which channels of the chart, and what is added to their values.
struct ChannelMap {
  int count = 0;                                  ///< channels that are loaded
  bool selected = false;                          ///< they were chosen singly
  std::array<int, kMaxFileChannels> source{};     ///< channel of the file, by channel of the chart
  bool addsOffsets = false;                       ///< `offset` is added; without it values stay bit for bit
  std::array<double, kMaxFileChannels> offset{};  ///< by channel of the chart
};

/// All channels of the file.
ChannelMap AllChannels(int channels);

/// Those that are ticked, one after the other; count is 0 when none of the file's is.
ChannelMap SelectedChannels(const std::array<bool, kChannels>& selected, int channels);

/// Sets what is added to the values: the station's offsets, the file's or both, as the options say.
void AddOffsets(const LoadOptions& options, const std::array<double, kMaxFileChannels>& stationOffsets,
                const NotesBlock& notes, ChannelMap& map);

/// Packs labels, offsets and pens of the whole file, so that the loaded channels follow one another. Notations move
/// with their channel, and those of channels that are not loaded go.
void PackChannels(const ChannelMap& map, NotesBlock& notes, std::array<int, kMaxFileChannels>& pens);

}  // namespace tarvolt
