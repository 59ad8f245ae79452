// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>

#include "logs/observer_log.h"
#include "model/chart_window.h"
#include "model/run_listener.h"
#include "model/session.h"

namespace tarvolt {

struct Recorder;

/// What a run enters into the observer log by itself.
class RunEntries final : public RunListener {
 public:
  /// `recorder` outlives it.
  explicit RunEntries(Recorder& recorder) : recorder_(recorder) {}

  /// The start with LLocalStart, the station's identity with LocalIdentity.
  void LogBegan() override;

  /// The end with LLocalStart.
  void RunEnded() override;

 private:
  Recorder& recorder_;
};

/// An image file was written: with LImages.
void EnterImageSaved(const Session& session, ChartWindow& window, const std::filesystem::path& file);

/// Writes the identity block of this station, or of the server that the window's header and notes come from.
void SendIdentityToLog(const Session& session, ChartWindow& window, IdentityMode mode);

}  // namespace tarvolt
