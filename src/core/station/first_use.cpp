// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/station/first_use.h"

#include <algorithm>

#include "config/profile.h"

namespace tarvolt {
namespace {

constexpr DataSourceId kFirstOfUds = 20;

bool HasSoundInput(const Session& session, const Settings& settings) {
  WaveInDevices& inputs = session.host.sound;
  return !inputs.List().empty() || (HasSoundCard(settings) && inputs.IsThere(settings.sound.SoundCardName));
}

// The settings of an earlier set-up in default.tvp, else the defaults. The default of channel 1 is the sound card: a
// machine without one begins with a User Data Source instead, or no chart could start and no page be stored.
Settings BeginningSettings(Session& session) {
  const std::string home = session.home.string();
  Settings settings;
  LoadRegistrySettings(session.store, {}, home, settings);
  const std::filesystem::path profile = session.home / "default.tvp";
  if (!session.host.files.FileExists(profile)) {
    if (!HasSoundInput(session, settings) && ReadsSound(settings.channels.Dsrc[0])) {
      settings.channels.Dsrc[0] = kFirstOfUds;
    }
  } else if (const Outcome loaded = LoadProfileFile(session.host.files, profile, {}, home, settings); !loaded) {
    session.Add2SLog("Could not load the profile " + profile.string() + ": " + loaded.Words());
  }
  if (settings.files.DataDirectory.empty()) settings.files.DataDirectory = (session.home / "Data").string();
  return settings;
}

bool Complete(Session& session, Person& person, Settings& settings) {
  Settings ofThisRun = settings;
  ApplyOverrides(session.overrides, session.home.string(), ofThisRun);
  return !ofThisRun.program.ShowMsgBox || person.CompleteFirstUse(session, settings);
}

}  // namespace

bool SettleFirstUse(Session& session, Person& person) {
  if (session.store.GetSetting(Section::Settings, "FirstUse") != "True") return true;
  Settings settings = BeginningSettings(session);
  if (!Complete(session, person, settings)) {
    session.Add2SLog("Intial Settings Not Completed");
    return false;
  }
  const std::string home = session.home.string();
  const std::string ownFolder = (session.home / "Data").string();
  std::error_code error;
  if (settings.files.DataDirectory == ownFolder) session.host.files.MakeFolders(ownFolder, error);
  session.store.BeginBatch();
  SaveRegistrySettings(session.store, {}, home, settings);
  session.store.SaveSetting(Section::Settings, "FirstUse", "False");
  session.store.EndBatch();
  session.Add2SLog("First use of this station: its home is " + home);
  return true;
}

std::vector<DataSourceId> FirstSources(const Session& session, const Settings& settings) {
  std::vector<DataSourceId> sources{settings.channels.Dsrc[0]};
  const auto add = [&sources](DataSourceId source) {
    if (std::find(sources.begin(), sources.end(), source) == sources.end()) sources.push_back(source);
  };
  if (HasSoundInput(session, settings)) add(kSoundLeft);
  add(kFirstOfUds);
  return sources;
}

}  // namespace tarvolt
