// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/sound/sound_card.h"

#include <algorithm>
#include <tuple>

#include "sources/sound/format_in_use.h"
#include "sources/sound/sound_formats.h"

namespace tarvolt {

namespace {

/// The card that was in use last when it is there, else the first of the list.
std::string CardToUse(const Session& session) {
  WaveInDevices& inputs = session.host.sound;
  const std::string stored = session.store.GetSetting(Section::Settings, "SoundCardName", "");
  if (!stored.empty() && stored != kNoSoundCard && inputs.IsThere(stored)) return stored;
  const std::vector<std::string> names = inputs.List();
  return names.empty() ? kNoSoundCard : names.front();
}

}  // namespace

void MatchSoundCard(Session& session) {
  Settings& settings = session.settings;
  WaveInDevices& inputs = session.host.sound;
  if (HasSoundCard(settings) &&
      (session.IsOverridden("SoundCardName") || inputs.IsThere(settings.sound.SoundCardName))) {
    return;
  }
  const std::string chosen = CardToUse(session);
  if (chosen == settings.sound.SoundCardName) return;
  if (HasSoundCard(settings)) session.Add2SLog("The sound input " + settings.sound.SoundCardName + " is not there.");
  settings.sound.SoundCardName = chosen;
  if (HasSoundCard(settings)) session.Add2SLog("Sound input: " + chosen);
  if (HasSoundCard(settings) && !session.IsOverridden("SoundCardName")) {
    session.store.SaveSetting(Section::Settings, "SoundCardName", chosen);
  }
  LoadCardSettings(session.store, session.overrides, session.home.string(), settings);
}

std::vector<SoundFormatLine> SoundFormatsOf(const Session& session, const std::string& card) {
  std::vector<WaveFormat> formats = session.host.sound.Formats(card, SoundFormats());
  std::sort(formats.begin(), formats.end(), [](const WaveFormat& one, const WaveFormat& other) {
    return std::tie(one.bits, one.samplesPerSecond, one.stereo) >
           std::tie(other.bits, other.samplesPerSecond, other.stereo);
  });
  std::vector<SoundFormatLine> lines;
  for (const WaveFormat& format : formats) {
    lines.push_back({SoundFormatRow(format), SoundFormatText(format), format.bits == 16});
  }
  return lines;
}

void ChooseSoundFormat(Session& session, std::int32_t row) {
  if (row < 0) return;
  session.settings.sound.sWavFormat = row;
  SaveRegistrySetting(session.store, session.overrides, session.settings, "sWavFormat");
  session.Add2SLog("Sound format: " + SoundFormatText(SoundFormat(row)));
}

std::vector<std::string> SoundCardsToChoose(const Session& session, const Settings& settings) {
  std::vector<std::string> cards = session.host.sound.List();
  const std::string& chosen = settings.sound.SoundCardName;
  const auto isChosen = [&](const std::string& card) { return LastingName(card) == LastingName(chosen); };
  const auto listed = std::find_if(cards.begin(), cards.end(), isChosen);
  if (listed != cards.end()) {
    *listed = chosen;
  } else if (!chosen.empty()) {
    cards.insert(cards.begin(), chosen);
  }
  if (cards.empty()) cards.emplace_back(kNoSoundCard);
  return cards;
}

SoundFacts SoundFactsOf(const Session& session, const Settings& settings) {
  return {HasSoundCard(settings), SoundFormatText(SoundFormatInUse(session, settings.sound))};
}

SoundLevels LevelsNow(const ChartWindow& window, const SoundInput& input) {
  SoundLevels levels;
  if (!window.run.ChartRunning() || !(input.IsOpen() || input.IsLost())) return levels;
  const SoundState& sound = window.sound;
  levels.live = true;
  levels.lost = input.IsLost();
  levels.hasL = input.LooksAt(0);
  levels.hasR = input.LooksAt(1);
  levels.peakL = sound.LastPeakL;
  levels.peakR = sound.LastPeakR;
  levels.avgL = sound.LastAvgL;
  levels.avgR = sound.LastAvgR;
  return levels;
}

}  // namespace tarvolt
