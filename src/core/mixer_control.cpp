#include "core/mixer_control.h"

#include <algorithm>

#include "text/number.h"

namespace tarvolt {
namespace {

static_assert(kMixerSources == kMixerInputs, "a background for each input");

struct Source {
  const char* name;
  const char* key;
  std::int32_t Settings::*volume;
};

constexpr Source kSources[kMixerSources] = {{"Line", "MixerLineVol", &Settings::MixerLineVol},
                                            {"Mic", "MixerMicVol", &Settings::MixerMicVol},
                                            {"Wave", "MixerWaveVol", &Settings::MixerWaveVol},
                                            {"Stereo Mix", "MixerStereoMixVol", &Settings::MixerStereoMixVol}};

const Source& SourceOf(int source) {
  return kSources[source >= 0 && source < kMixerSources ? source : 0];
}

int StoredVolume(const Settings& settings, int source) {
  return settings.*SourceOf(source).volume;
}

bool Refused(Session& session, const std::string& what) {
  session.Add2SLog("The mixer of " + session.settings.SoundCardName + " refuses " + what + ".");
  return false;
}

}  // namespace

const char* MixerSourceName(int source) {
  return SourceOf(source).name;
}

MixerView ReadMixer(const Session& session) {
  const Settings& settings = session.settings;
  MixerView view;
  view.enabled = settings.MixerEnabled;
  view.source = settings.MixerSource;
  const int kept = view.source >= 0 && view.source < kMixerInputs ? view.source : 0;
  view.backgroundL = settings.LCHbkgnd[kept];
  view.backgroundR = settings.RCHbkgnd[kept];
  if (HasSoundCard(settings)) view.inputs = session.host.mixer.Inputs(settings.SoundCardName);
  for (int source = 0; source < kMixerSources; ++source) {
    MixerInput& input = view.inputs[source];
    view.hasMixer = view.hasMixer || input.there;
    if (!input.hasVolume) input.volume = std::clamp(StoredVolume(settings, source), 0, 100);
  }
  return view;
}

bool SelectMixerSource(Session& session, int source) {
  Settings& settings = session.settings;
  settings.MixerSource = static_cast<std::int16_t>(source);
  SaveRegistrySetting(session.store, session.overrides, settings, "MixerSource");
  if (!settings.MixerEnabled || !HasSoundCard(settings)) return true;
  if (session.host.mixer.Select(settings.SoundCardName, source)) return true;
  if (!ReadMixer(session).hasMixer) return true;
  return Refused(session, std::string("the input ") + MixerSourceName(source));
}

bool SetMixerVolume(Session& session, int source, int volume) {
  Settings& settings = session.settings;
  const int held = std::clamp(volume, 0, 100);
  settings.*SourceOf(source).volume = held;
  SaveRegistrySetting(session.store, session.overrides, settings, SourceOf(source).key);
  if (!settings.MixerEnabled || !HasSoundCard(settings)) return true;
  if (session.host.mixer.SetVolume(settings.SoundCardName, source, held)) return true;
  if (!ReadMixer(session).hasMixer) return true;
  return Refused(session, std::string("a volume of ") + MixerSourceName(source));
}

void SetMixerEnabled(Session& session, bool enabled) {
  session.settings.MixerEnabled = enabled;
  SaveRegistrySetting(session.store, session.overrides, session.settings, "MixerEnabled");
}

int MixerVolumeNow(const Session& session) {
  const Settings& settings = session.settings;
  const int source = settings.MixerSource >= 0 && settings.MixerSource < kMixerSources ? settings.MixerSource : 0;
  MixerInput input;
  if (HasSoundCard(settings)) input = session.host.mixer.Inputs(settings.SoundCardName)[source];
  return input.hasVolume ? input.volume : StoredVolume(settings, source);
}

}  // namespace tarvolt
