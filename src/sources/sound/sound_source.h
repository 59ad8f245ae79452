// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "model/session.h"
#include "sources/channel_source.h"
#include "sources/sound/sound_input.h"
#include "sources/sound/sound_timing.h"

namespace tarvolt {

/// The rows that read the sound input, and the input as the clock of a run without such rows. A data source that pushes
/// takes the place of all sound: the input then stays closed.
class SoundSource final : public ChannelSource {
 public:
  /// All outlive it. `chooseFormat` asks a person for another format of the input.
  SoundSource(Session& session, ChartWindow& window, SoundInput& input, std::function<void()> chooseFormat);

  bool Owns(DataSourceId id) const override { return ReadsSound(id); }
  bool IsNeeded(const RunPlan& plan) const override;
  std::string WhyNotReady(const RunPlan& plan) const override;

  /// Settles format, buffers and EffectiveAvg, opens the input and waits until it delivers. Yields; Escape ends the
  /// wait.
  bool Prepare() override;
  bool Read(int channel, TickReadings& readings) override;
  void EndTick(bool isWhole) override {
    if (isWhole) sound_.ClearAccumulators();
  }
  void Close() override { input_.Close(); }
  void DescribeInput(Metadata& metadata) const override;

  /// Milliseconds between two samples, where the buffers cannot make up the period that is asked for.
  std::optional<double> ActualPeriod() const;

 private:
  void HoldAdjustment();
  bool CheckFormat();
  void PlanTiming();
  void SizeRing();
  bool Open();
  bool WaitForSound();

  Session& session_;
  ChartWindow& window_;
  RunState& run_;
  SoundState& sound_;
  SoundInput& input_;
  std::function<void()> chooseFormat_;
  WaveFormat format_;
  SoundTiming timing_;
};

}  // namespace tarvolt
