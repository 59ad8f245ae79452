#pragma once

#include <filesystem>

#include "core/recorder.h"
#include "logs/observer_log.h"

namespace tarvolt {

/// A log of the run begins: its start with LLocalStart, the station's identity with LocalIdentity.
void EnterChartStarted(Recorder& recorder);

/// The run has ended: with LLocalStart.
void EnterChartStopped(Recorder& recorder);

/// An image file was written: with LImages.
void EnterImageSaved(const Session& session, ChartWindow& window, const std::filesystem::path& file);

/// Writes the identity block of this station, or of the server that the window's header and notes come from.
void SendIdentityToLog(const Session& session, ChartWindow& window, IdentityMode mode);

}  // namespace tarvolt
