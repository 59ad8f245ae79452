#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "model/chart_window.h"
#include "model/session.h"

namespace tarvolt {

/// Clears the metadata of the window and adds the rows that describe the run about to start.
void BuildRunMetadata(const Session& session, ChartWindow& window);

/// A channel's equation as the metadata tell of it.
std::string EquationText(const EquationSet& set, int channel);
/// Adds the rows about the sound input: its format and buffer, and the mixer's input and volume.
void AddSoundMetadata(const Session& session, const std::string& formatText, std::int32_t bufferBytes,
                      ChartWindow& window);

/// What paces a run, beside what its state tells.
struct TimingFacts {
  bool udsInUse = false;
  bool soundPaces = false;
  std::optional<double> actualPeriod;  ///< milliseconds, when the buffers cannot make up the period asked for
};

/// Adds the rows about the pacing of the run and about its data source.
void AddTimingMetadata(const TimingFacts& facts, ChartWindow& window);

}  // namespace tarvolt
