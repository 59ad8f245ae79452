// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/station/options_check.h"
#include "model/chart_window.h"
#include "model/session.h"
#include "platform/wave_in_device.h"
#include "sources/sound/sound_input.h"

namespace tarvolt {

/// Sees to it that SoundCardName names an input that is there: the one set, else the one stored, else the first of the
/// list, which is then stored, else kNoSoundCard, which is not. What belongs to the card is loaded with it. A name
/// given for this run alone stays as it is, and fails when it is opened.
void MatchSoundCard(Session& session);

/// A line of the format chooser.
struct SoundFormatLine {
  std::int32_t row = -1;  ///< of the table; -1 for an input's own format that the table has not
  std::string text;
  bool usable = false;  ///< only 16 bit is
};

/// What `card` offers, those of 16 bit first, then by their rates; empty when it cannot be asked, as it is not there or
/// in use.
std::vector<SoundFormatLine> SoundFormatsOf(const Session& session, const std::string& card);

/// Puts a row of the table into sWavFormat and stores it; it counts from the next start. -1 changes nothing.
void ChooseSoundFormat(Session& session, std::int32_t row);

/// The cards that can be chosen: those that are there, and what `settings` have now, which may be none.
std::vector<std::string> SoundCardsToChoose(const Session& session, const Settings& settings);

/// What the options are checked against.
SoundFacts SoundFactsOf(const Session& session, const Settings& settings);

/// The readings of the sound input for a meter, in sample units above the background.
struct SoundLevels {
  bool live = false;  ///< a run is reading them; otherwise all are 0
  bool lost = false;  ///< the input is lost, and the readings are its last ones
  bool hasL = true;   ///< the side is looked at
  bool hasR = true;
  double peakL = 0;
  double peakR = 0;
  double avgL = 0;
  double avgR = 0;
};

/// Those of the newest buffer of a run, 0 at rest. Takes nothing from what the run has gathered.
SoundLevels LevelsNow(const ChartWindow& window, const SoundInput& input);

}  // namespace tarvolt
