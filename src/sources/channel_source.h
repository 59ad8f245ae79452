// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "logs/metadata.h"
#include "model/run_plan.h"
#include "sources/tick_readings.h"

namespace tarvolt {

/// One place where channel values come from, for all rows of the channel table that name it. A run asks it in this
/// order: why it is not ready, Prepare, the descriptions, Connect, then Read and EndTick in every tick, Close. What has
/// no part in one of them leaves it as it stands here.
class ChannelSource {
 public:
  virtual ~ChannelSource() = default;

  /// True for a source number that it reads.
  virtual bool Owns(DataSourceId id) const = 0;

  /// True when the run needs it: one of its rows names this source.
  virtual bool IsNeeded(const RunPlan& plan) const {
    return plan.HasRow([this](DataSourceId id) { return Owns(id); });
  }

  /// Words that refuse a start, found without touching a device; empty when nothing is known against it.
  virtual std::string WhyNotReady(const RunPlan&) const { return {}; }

  /// Readies what may still refuse the start while the old chart is on display. False when it refused, which it has
  /// shown and logged. May yield.
  virtual bool Prepare() { return true; }

  /// The last step of a start: readings may be asked for from here on, or come by themselves. False when it failed,
  /// which it has shown and logged. May yield.
  virtual bool Connect() { return true; }

  /// Reads the row of `channel`, 0 to 7. False when there is no whole reading, or when the run has ended meanwhile:
  /// then nothing of this tick is used. May yield.
  virtual bool Read(int channel, TickReadings& readings) = 0;

  /// The tick is over. What was read counts only if it is whole. Called for the sources that no row names as well.
  virtual void EndTick(bool /*isWhole*/) {}

  /// Lets go of what it holds. Harmless at any time, also for a source that is not in use.
  virtual void Close() {}

  /// Adds rows to the metadata of a log: what is read, before the rows of the timing, and where from, behind them.
  virtual void DescribeInput(Metadata&) const {}
  virtual void DescribeLink(Metadata&) const {}
};

}  // namespace tarvolt
