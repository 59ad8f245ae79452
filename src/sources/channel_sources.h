// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <string>
#include <vector>

#include "model/run_state.h"
#include "sources/channel_source.h"

namespace tarvolt {

/// The sources of a window, and which of them serves which row of its run.
class ChannelSources {
 public:
  /// `run` outlives it.
  explicit ChannelSources(const RunState& run) : run_(run) {}

  /// In the order in which a start readies them. `source` outlives it.
  void Add(ChannelSource& source) { all_.push_back(&source); }

  /// Takes the rows of the run's plan over. Words that refuse the start when one cannot be read or a source is not
  /// ready, empty otherwise.
  std::string Choose();

  /// The steps of a start, for each source in use. False when one has failed. May yield.
  bool Prepare();
  bool Connect();

  /// Reads the rows of one tick from the first on. False when the tick is not whole. Yields while a source answers.
  bool Read(TickReadings& readings);

  /// The tick is over, and whole or not.
  void EndTick(bool isWhole);

  /// Closes all, the last first.
  void Close();

  void DescribeInputs(Metadata& metadata) const;
  void DescribeLinks(Metadata& metadata) const;

 private:
  ChannelSource* OwnerOf(DataSourceId id) const;
  void FindOwners();

  const RunState& run_;
  std::vector<ChannelSource*> all_;
  std::vector<ChannelSource*> inUse_;
  std::array<ChannelSource*, kChannels> rows_{};  ///< none behind the last row with a source
};

}  // namespace tarvolt
