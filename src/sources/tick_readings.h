// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <array>

#include "model/run_state.h"

namespace tarvolt {

/// What the sources gave in one tick. It reaches the sums of the run when the tick is whole, and not before.
class TickReadings {
 public:
  /// One value of a channel, 0 to 7, which also counts in the extremes of the sample.
  void AddValue(int channel, double value) { readings_[static_cast<std::size_t>(channel)] = {value, true}; }

  /// What a source has added up by itself: the extremes stay as they are.
  void AddSum(int channel, double sum) { readings_[static_cast<std::size_t>(channel)] = {sum, false}; }

  /// Adds all of it. A channel whose source gave nothing adds nothing.
  void AddTo(RunState& run) const {
    for (std::size_t channel = 0; channel < readings_.size(); ++channel) {
      const auto& [value, isOneValue] = readings_[channel];
      run.ChannelSum[channel] += value;
      if (!isOneValue) continue;
      run.ChannelMin[channel] = std::min(run.ChannelMin[channel], value);
      run.ChannelMax[channel] = std::max(run.ChannelMax[channel], value);
    }
  }

 private:
  struct Reading {
    double value = 0;
    bool isOneValue = false;
  };
  std::array<Reading, kChannels> readings_{};
};

}  // namespace tarvolt
