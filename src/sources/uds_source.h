// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "sources/channel_source.h"
#include "sources/uds_client.h"

namespace tarvolt {

/// The rows of a User Data Source. One that is polled is asked once a tick, at the first of its rows, and the set that
/// answers serves them all; one that pushes has its set at hand when the tick begins.
class UdsSource final : public ChannelSource {
 public:
  /// All outlive it. A pushed set that has ended goes to `onSet`, as UdsClient has it.
  UdsSource(Session& session, ChartWindow& window, RunControl& control, SoundInput& sound, UdsClient::SetEnded onSet);

  bool Owns(DataSourceId id) const override { return IsUds(id); }

  /// Makes the link. Rows that the source has declared beyond those of the table read its further inputs, and rows
  /// beyond what it has declared are not read.
  bool Connect() override;

  /// Yields while a polled source answers. A link that is lost meanwhile stops the run.
  bool Read(int channel, TickReadings& readings) override;
  void EndTick(bool) override { taken_ = false; }
  void Close() override { client_.Close(); }
  void DescribeLink(Metadata& metadata) const override;

 private:
  bool TakeSet();
  bool Poll();
  void FollowDeclaredCount();

  Session& session_;
  RunState& run_;
  RunControl& control_;
  UdsClient client_;
  UdsSet set_{};        ///< the one that this tick reads
  bool taken_ = false;  ///< it has been taken over in this tick
};

}  // namespace tarvolt
