// SPDX-License-Identifier: GPL-3.0-or-later
#include "sources/sound/mixer_control.h"

#include <algorithm>

#include "text/number.h"

namespace tarvolt {
namespace {

static_assert(kMixerSources == kMixerInputs, "a background for each input");

struct Source {
  const char* name;
  const char* key;
  std::int32_t SoundSettings::*volume;
};

constexpr Source kSources[kMixerSources] = {{"Line", "MixerLineVol", &SoundSettings::MixerLineVol},
                                            {"Mic", "MixerMicVol", &SoundSettings::MixerMicVol},
                                            {"Wave", "MixerWaveVol", &SoundSettings::MixerWaveVol},
                                            {"Stereo Mix", "MixerStereoMixVol", &SoundSettings::MixerStereoMixVol}};

const Source& SourceOf(int source) {
  return kSources[source >= 0 && source < kMixerSources ? source : 0];
}

int StoredVolume(const SoundSettings& sound, int source) {
  return sound.*SourceOf(source).volume;
}

bool Refused(Session& session, const std::string& what) {
  session.Add2SLog("The mixer of " + session.settings.sound.SoundCardName + " refuses " + what + ".");
  return false;
}

}  // namespace

const char* MixerSourceName(int source) {
  return SourceOf(source).name;
}

MixerView ReadMixer(const Session& session) {
  const Settings& settings = session.settings;
  MixerView view;
  view.enabled = settings.sound.MixerEnabled;
  view.source = settings.card.MixerSource;
  const int kept = view.source >= 0 && view.source < kMixerInputs ? view.source : 0;
  view.backgroundL = settings.card.LCHbkgnd[kept];
  view.backgroundR = settings.card.RCHbkgnd[kept];
  if (HasSoundCard(settings)) view.inputs = session.host.mixer.Inputs(settings.sound.SoundCardName);
  for (int source = 0; source < kMixerSources; ++source) {
    MixerInput& input = view.inputs[source];
    view.hasMixer = view.hasMixer || input.there;
    if (!input.hasVolume) input.volume = std::clamp(StoredVolume(settings.sound, source), 0, 100);
  }
  return view;
}

bool SelectMixerSource(Session& session, int source) {
  Settings& settings = session.settings;
  settings.card.MixerSource = static_cast<std::int16_t>(source);
  SaveRegistrySetting(session.store, session.overrides, settings, "MixerSource");
  if (!settings.sound.MixerEnabled || !HasSoundCard(settings)) return true;
  if (session.host.mixer.Select(settings.sound.SoundCardName, source)) return true;
  if (!ReadMixer(session).hasMixer) return true;
  return Refused(session, std::string("the input ") + MixerSourceName(source));
}

bool SetMixerVolume(Session& session, int source, int volume) {
  Settings& settings = session.settings;
  const int held = std::clamp(volume, 0, 100);
  settings.sound.*SourceOf(source).volume = held;
  SaveRegistrySetting(session.store, session.overrides, settings, SourceOf(source).key);
  if (!settings.sound.MixerEnabled || !HasSoundCard(settings)) return true;
  if (session.host.mixer.SetVolume(settings.sound.SoundCardName, source, held)) return true;
  if (!ReadMixer(session).hasMixer) return true;
  return Refused(session, std::string("a volume of ") + MixerSourceName(source));
}

void SetMixerEnabled(Session& session, bool enabled) {
  session.settings.sound.MixerEnabled = enabled;
  SaveRegistrySetting(session.store, session.overrides, session.settings, "MixerEnabled");
}

int MixerVolumeNow(const Session& session, const SoundSettings& sound, int source) {
  const int held = source >= 0 && source < kMixerSources ? source : 0;
  MixerInput input;
  if (HasSoundCard(sound)) input = session.host.mixer.Inputs(sound.SoundCardName)[held];
  return input.hasVolume ? input.volume : StoredVolume(sound, held);
}

}  // namespace tarvolt
