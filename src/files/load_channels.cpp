#include "files/load_channels.h"

#include <algorithm>

#include "text/number.h"

namespace tarvolt {
namespace {

// Channel of the chart that shows a channel of the file, -1 for none.
int ShownAs(const ChannelMap& map, int source) {
  const auto end = map.source.begin() + map.count;
  const auto place = std::find(map.source.begin(), end, source);
  return place == end ? -1 : static_cast<int>(place - map.source.begin());
}

Notations PackedNotations(const ChannelMap& map, const Notations& notations) {
  Notations packed;
  for (const Notation& notation : notations.slots) {
    const int channel = ShownAs(map, notation.channel);
    if (notation.text.empty() || channel < 0) continue;
    packed.slots[packed.count] = notation;
    packed.slots[packed.count].channel = static_cast<std::int16_t>(channel);
    packed.count = std::min(packed.count + 1, Notations::kSlots - 1);
  }
  return packed;
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
  for (int channel = 0; channel < std::min(channels, kChannels); ++channel) {
    if (selected[channel]) map.source[map.count++] = channel;
  }
  return map;
}

void AddOffsets(const LoadOptions& options, const Session& session, const ParsedNotes& notes, ChannelMap& map) {
  map.addsOffsets = options.LoadLocalOffsets || options.LoadFileOffsets;
  for (int channel = 0; channel < map.count; ++channel) {
    const int source = map.source[channel];
    if (options.LoadLocalOffsets) map.offset[channel] += session.settings.DefaultChannelOffset[source];
    if (options.LoadFileOffsets) map.offset[channel] += Val(notes.offsets[source]);
  }
}

void PackChannels(const ChannelMap& map, const ParsedNotes& notes, ChartWindow& window) {
  window.channelLabels.fill({});
  window.run.ChannelOffset.fill(0);
  for (int channel = 0; channel < map.count; ++channel) {
    const int source = map.source[channel];
    window.channelLabels[channel] = notes.labels[source];
    window.chart.ChannelPen[channel] = source;
    window.run.ChannelOffset[channel] = Val(notes.offsets[source]);
  }
  window.chart.ChannelName = window.channelLabels;
  window.notations = PackedNotations(map, notes.notations);
}

}  // namespace tarvolt
