#include "core/sound_card.h"

#include "sources/sound/sound_formats.h"

namespace tarvolt {

void MatchSoundCard(Session& session) {
  Settings& settings = session.settings;
  WaveInDevices& inputs = session.host.sound;
  if (HasSoundCard(settings) && (session.IsOverridden("SoundCardName") || inputs.IsThere(settings.SoundCardName))) {
    return;
  }
  const std::vector<std::string> names = inputs.List();
  const std::string chosen = names.empty() ? kNoSoundCard : names.front();
  if (chosen == settings.SoundCardName) return;
  if (HasSoundCard(settings)) session.Add2SLog("The sound input " + settings.SoundCardName + " is not there.");
  if (!names.empty()) session.Add2SLog("Sound input: " + chosen);
  settings.SoundCardName = chosen;
  if (!names.empty() && !session.IsOverridden("SoundCardName")) {
    session.store.SaveSetting(Section::Settings, "SoundCardName", chosen);
  }
  LoadCardSettings(session.store, session.overrides, session.home.string(), settings);
}

WaveFormat SoundFormatInUse(const Session& session) {
  const Settings& settings = session.settings;
  std::optional<WaveFormat> fixed;
  if (HasSoundCard(settings)) fixed = session.host.sound.FixedFormat(settings.SoundCardName);
  return fixed.value_or(SoundFormat(settings.sWavFormat));
}

std::string FormatsOffered(const Session& session) {
  std::string text;
  for (const WaveFormat& format : session.host.sound.Formats(session.settings.SoundCardName, SoundFormats())) {
    text += (text.empty() ? "" : ", ") + SoundFormatText(format);
  }
  return text;
}

SoundFacts SoundFactsOf(const Session& session) {
  return {HasSoundCard(session.settings), SoundFormatText(SoundFormatInUse(session))};
}

SoundLevels LevelsNow(const ChartWindow& window) {
  if (!window.run.ChartRunning) return {};
  const SoundState& sound = window.sound;
  return {true, sound.LastPeakL, sound.LastPeakR, sound.LastAvgL, sound.LastAvgR};
}

}  // namespace tarvolt
