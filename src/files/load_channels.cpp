// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/load_channels.h"

#include <algorithm>
#include <utility>

#include "text/number.h"

namespace tarvolt {
namespace {

// Channel of the chart that shows a channel of the file, -1 for none.
int ShownAs(const ChannelMap& map, int source) {
  const auto end = map.source.begin() + map.count;
  const auto place = std::find(map.source.begin(), end, source);
  return place == end ? -1 : static_cast<int>(place - map.source.begin());
}

}  // namespace

ChannelMap AllChannels(int channels) {
  ChannelMap map;
  map.count = channels;
  for (int channel = 0; channel < channels; ++channel) map.source[channel] = channel;
  return map;
}

ChannelMap SelectedChannels(const std::array<bool, kChannels>& selected, int channels) {
  ChannelMap map;
  map.selected = true;
  for (int channel = 0; channel < std::min(channels, kChannels); ++channel) {
    if (selected[channel]) map.source[map.count++] = channel;
  }
  return map;
}

void AddOffsets(const LoadOptions& options, const std::array<double, kMaxFileChannels>& stationOffsets,
                const NotesBlock& notes, ChannelMap& map) {
  map.addsOffsets = options.LoadLocalOffsets || options.LoadFileOffsets;
  for (int channel = 0; channel < map.count; ++channel) {
    const int source = map.source[channel];
    if (options.LoadLocalOffsets) map.offset[channel] += stationOffsets[source];
    if (options.LoadFileOffsets) map.offset[channel] += Val(notes.offsets[source]);
  }
}

void PackChannels(const ChannelMap& map, NotesBlock& notes, std::array<int, kMaxFileChannels>& pens) {
  const std::array<std::string, kMaxFileChannels> labels = std::exchange(notes.labels, {});
  const std::array<std::string, kMaxFileChannels> offsets = std::exchange(notes.offsets, {});
  for (int channel = 0; channel < map.count; ++channel) {
    const int source = map.source[channel];
    notes.labels[channel] = labels[source];
    notes.offsets[channel] = offsets[source];
    pens[channel] = source;
  }
  notes.notations = notes.notations.Kept([&map](Notation& notation) {
    notation.channel = static_cast<std::int16_t>(ShownAs(map, notation.channel));
    return notation.channel >= 0;
  });
}

}  // namespace tarvolt
