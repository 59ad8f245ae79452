// SPDX-License-Identifier: GPL-3.0-or-later
#include "sources/channel_sources.h"

#include <algorithm>
#include <cstdint>

#include "sources/source_table.h"
#include "text/number.h"

namespace tarvolt {

std::string ChannelSources::Choose() {
  inUse_.clear();
  for (ChannelSource* const source : all_) {
    if (!source->IsNeeded(run_.plan)) continue;
    const std::string why = source->WhyNotReady(run_.plan);
    if (!why.empty()) return why;
    inUse_.push_back(source);
  }
  FindOwners();
  for (int channel = 0; channel < run_.plan.ActiveChannels(); ++channel) {
    if (rows_[channel]) continue;
    const std::string name = SourceName(run_.plan.Dsrc[channel]);
    const std::string shown = name.empty() ? NumberText(std::int64_t{run_.plan.Dsrc[channel]}) : name;
    return "Channel " + NumberText(std::int64_t{channel + 1}) + " is set to \"" + shown +
           "\", which this version cannot read. Change to another data source under Options / Data Source.";
  }
  return {};
}

ChannelSource* ChannelSources::OwnerOf(DataSourceId id) const {
  const auto owns = [id](const ChannelSource* source) { return source->Owns(id); };
  const auto found = std::find_if(all_.begin(), all_.end(), owns);
  return found == all_.end() ? nullptr : *found;
}

void ChannelSources::FindOwners() {
  rows_ = {};
  for (int channel = 0; channel < run_.plan.ActiveChannels(); ++channel) {
    rows_[channel] = OwnerOf(run_.plan.Dsrc[channel]);
  }
}

bool ChannelSources::Prepare() {
  return std::all_of(inUse_.begin(), inUse_.end(), [](ChannelSource* source) { return source->Prepare(); });
}

// A source that connects may have declared other rows than the channel table has.
bool ChannelSources::Connect() {
  if (!std::all_of(inUse_.begin(), inUse_.end(), [](ChannelSource* source) { return source->Connect(); })) return false;
  FindOwners();
  return true;
}

bool ChannelSources::Read(TickReadings& readings) {
  for (int channel = 0; channel < std::min(run_.ChannelCount, kChannels); ++channel) {
    if (!rows_[channel]) break;
    if (!rows_[channel]->Read(channel, readings)) return false;
  }
  return true;
}

void ChannelSources::EndTick(bool isWhole) {
  for (ChannelSource* const source : all_) source->EndTick(isWhole);
}

void ChannelSources::Close() {
  std::for_each(all_.rbegin(), all_.rend(), [](ChannelSource* source) { source->Close(); });
}

void ChannelSources::DescribeInputs(Metadata& metadata) const {
  for (const ChannelSource* const source : inUse_) source->DescribeInput(metadata);
}

void ChannelSources::DescribeLinks(Metadata& metadata) const {
  for (const ChannelSource* const source : inUse_) source->DescribeLink(metadata);
}

}  // namespace tarvolt
