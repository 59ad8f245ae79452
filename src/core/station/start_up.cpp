// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/station/start_up.h"

#include <exception>

#include "core/sound/sound_card.h"
#include "core/station/first_use.h"
#include "core/station/observer_notes.h"
#include "core/station/priority.h"
#include "core/station/station_names.h"
#include "core/station/version.h"
#include "files/header_info.h"
#include "files/recovery.h"
#include "text/number.h"
#include "timebase/time_base.h"

namespace tarvolt {

StartUp::StartUp(Recorder& recorder, ChartRun& chartRun)
    : recorder_(recorder), chartRun_(chartRun), session_(recorder.session) {}

bool StartUp::Run() {
  session_.store.Load();
  for (const auto step :
       {&StartUp::StoreProgramIdentity, &StartUp::TakeFirstUse, &StartUp::LoadSettings, &StartUp::FindSoundCard,
        &StartUp::LoadTriggers, &StartUp::CheckZone, &StartUp::ApplyPriority, &StartUp::NameLog,
        &StartUp::CheckIdentity, &StartUp::TakeNotes, &StartUp::AlertAboutBackups, &StartUp::ReadRecentLists}) {
    RunStep(step);
    if (cancelled_) return false;
  }
  return true;
}

// The backups are looked after whatever became of the settings.
void StartUp::RunStep(void (StartUp::*step)()) {
  try {
    (this->*step)();
  } catch (const std::exception& error) {
    WriteLoadError(error.what());
  }
}

void StartUp::StoreProgramIdentity() {
  session_.store.BeginBatch();
  session_.store.SaveSetting(Section::Settings, "Version", kProgramVersion);
  session_.store.SaveSetting(Section::Settings, "TarvoltPath", session_.home.string());
  session_.store.EndBatch();
}

void StartUp::TakeFirstUse() {
  cancelled_ = !SettleFirstUse(session_, recorder_.person);
}

void StartUp::LoadSettings() {
  LoadRegistrySettings(session_.store, session_.overrides, session_.home.string(), session_.settings);
  ClearHeader(recorder_.window);
  getStaticHeaderInfo(session_, recorder_.window, 0);
  recorder_.commands.look.UpdateAfterOptionsChange();
}

void StartUp::FindSoundCard() {
  MatchSoundCard(session_);
}

void StartUp::LoadTriggers() {
  recorder_.triggers.FollowSetting();
}

void StartUp::CheckZone() {
  Settings& settings = session_.settings;
  const double zone = DetectTimeZoneHours(session_.host.clock);
  if (settings.place.DetectTZ && zone != settings.place.TZ) {
    session_.LogAndTell("Tarvolt", "Your Timezone has Changed.");
    settings.place.TZ = zone;
    session_.store.SaveSetting(Section::Settings, "TZ", NumberText(zone));
  }
  chartRun_.TakeTimeBase();
}

// A program starts at normal priority, or at what its user gave it: only another class needs setting.
void StartUp::ApplyPriority() {
  const std::string stored = session_.store.GetSetting(Section::Settings, "Priority");
  const std::optional<PriorityClass> priority = PriorityFromNumber(ValLong(stored));
  if (!priority) {
    session_.Add2SLog("The setting Priority names no class: " + stored);
  } else if (*priority != PriorityClass::Normal) {
    SetPriority(session_, *priority);
  }
}

void StartUp::NameLog() {
  NameSessionLog(session_, recorder_.window);
}

void StartUp::CheckIdentity() {
  const Settings& settings = session_.settings;
  const bool knownName = ShowLocalName(session_, recorder_.window);
  if (!knownName) {
    const std::string note = "Please be sure to supply a Local Name and other info in Options / Identity";
    session_.Add2SLog(note);
    recorder_.window.view.Status.Say(note);
  }
  if (knownName && settings.station.Author != "unknown" && settings.station.QTH != "unknown") return;
  session_.Tell("Identity Not Completely Specified", "Please update settings under Options / Identity");
}

void StartUp::TakeNotes() {
  ReadNotes(session_);
}

void StartUp::AlertAboutBackups() {
  if (session_.store.GetSetting(Section::Settings, "ShutDown") != "OK") RecoverBackups(session_);
  session_.store.SaveSetting(Section::Settings, "ShutDown", "Running");
}

void StartUp::ReadRecentLists() {
  GetRecentFiles(session_.store, session_.recent);
  GetProfileFiles(session_.store, session_.recent);
}

void StartUp::WriteLoadError(const std::string& text) {
  const std::string line = FormatDate(NowPrecise(session_.host.clock), "YYYY/MM/DD hh:nn:ss ") + text + "\r\n";
  session_.Add2SLog("Error while loading: " + text);
  std::error_code error;
  const std::unique_ptr<File> file = session_.host.files.Open(session_.home / "LoadErr.txt", OpenMode::Append, error);
  if (file) file->Write(line, error);
}

}  // namespace tarvolt
