#include <exception>

#include "config/profile.h"
#include "core/form_main.h"
#include "core/observer_notes.h"
#include "core/priority.h"
#include "core/sound_card.h"
#include "core/version.h"
#include "files/header_info.h"
#include "files/naming.h"
#include "files/recovery.h"
#include "text/number.h"
#include "timebase/time_base.h"

namespace tarvolt {

bool FormMain::Form_Load(const std::string& commandLine) {
  session_.store.Load();
  for (const auto step :
       {&FormMain::StoreProgramIdentity, &FormMain::SettleFirstUse, &FormMain::LoadSettings, &FormMain::FindSoundCard,
        &FormMain::LoadTriggers, &FormMain::CheckZone, &FormMain::ApplyPriority, &FormMain::NameSessionLog,
        &FormMain::CheckIdentity, &FormMain::ReadNotes, &FormMain::AlertAboutBackups, &FormMain::ReadRecentLists}) {
    RunStep(step);
    if (firstUseCancelled_) return false;
  }
  ProcessCmd(commandLine);
  return true;
}

// A step that fails costs that step alone: the backups are looked after whatever became of the settings.
void FormMain::RunStep(void (FormMain::*step)()) {
  try {
    (this->*step)();
  } catch (const std::exception& error) {
    WriteLoadError(error.what());
  }
}

void FormMain::ReadRecentLists() {
  GetRecentFiles(session_.store, session_.recent);
  GetProfileFiles(session_.store, session_.recent);
}

void FormMain::StoreProgramIdentity() {
  session_.store.BeginBatch();
  session_.store.SaveSetting(Section::Settings, "Version", kProgramVersion);
  session_.store.SaveSetting(Section::Settings, "TarvoltPath", session_.home.string());
  session_.store.EndBatch();
}

// The settings of an earlier set-up in default.tvp, else the defaults, are what a person begins with, and what a
// station without one keeps.
void FormMain::SettleFirstUse() {
  if (session_.store.GetSetting(Section::Settings, "FirstUse") != "True") return;
  const std::string home = session_.home.string();
  Settings settings;
  LoadRegistrySettings(session_.store, {}, home, settings);
  const std::filesystem::path profile = session_.home / "default.tvp";
  std::string problem;
  if (session_.host.files.FileExists(profile) &&
      !LoadProfileFile(session_.host.files, profile, {}, home, settings, problem)) {
    session_.Add2SLog("Could not load the profile " + profile.string() + ": " + problem);
  }
  const std::string ownFolder = (session_.home / "Data").string();
  if (settings.DataDirectory.empty()) settings.DataDirectory = ownFolder;
  Settings ofThisRun = settings;
  ApplyOverrides(session_.overrides, home, ofThisRun);
  if (firstUse_ && ofThisRun.ShowMsgBox && !firstUse_(settings)) {
    firstUseCancelled_ = true;
    session_.Add2SLog("Intial Settings Not Completed");
    return;
  }
  std::error_code error;
  if (settings.DataDirectory == ownFolder) session_.host.files.MakeFolders(ownFolder, error);
  session_.store.BeginBatch();
  SaveRegistrySettings(session_.store, {}, home, settings);
  session_.store.SaveSetting(Section::Settings, "FirstUse", "False");
  session_.store.EndBatch();
  session_.Add2SLog("First use of this station: its home is " + home);
}

void FormMain::LoadSettings() {
  LoadRegistrySettings(session_.store, session_.overrides, session_.home.string(), session_.settings);
  ClearHeader(recorder_.window);
  getStaticHeaderInfo(session_, recorder_.window, 0);
  recorder_.commands.UpdateAfterOptionsChange();
}

void FormMain::FindSoundCard() {
  MatchSoundCard(session_);
}

void FormMain::LookForSoundCard() {
  if (!HasSoundInput() && ChartIsAtRest()) MatchSoundCard(session_);
}

void FormMain::LoadTriggers() {
  recorder_.triggers.FollowSetting();
}

void FormMain::CheckZone() {
  Settings& settings = session_.settings;
  const double zone = DetectTimeZoneHours(session_.host.clock);
  if (settings.DetectTZ && zone != settings.TZ) {
    session_.Add2SLog("Your Timezone has Changed.");
    session_.Tell("Tarvolt", "Your Timezone has Changed.");
    settings.TZ = zone;
    session_.store.SaveSetting(Section::Settings, "TZ", NumberText(zone));
  }
  chartRun_.TakeTimeBase();
}

// A program starts at normal priority, or at what its user gave it: only another class needs setting.
void FormMain::ApplyPriority() {
  const std::string stored = session_.store.GetSetting(Section::Settings, "Priority");
  const std::optional<PriorityClass> priority = PriorityFromNumber(ValLong(stored));
  if (!priority) {
    session_.Add2SLog("The setting Priority names no class: " + stored);
  } else if (*priority != PriorityClass::Normal) {
    SetPriority(session_, *priority);
  }
}

// False when there is no name to show.
bool FormMain::ShowLocalName() {
  const std::string& name = session_.settings.LocalName;
  const bool known = !name.empty() && name != "unknown";
  recorder_.window.view.Title = known ? name : "unknown user";
  return known;
}

void FormMain::CheckIdentity() {
  const Settings& settings = session_.settings;
  const bool knownName = ShowLocalName();
  if (!knownName) {
    session_.Add2SLog("Please be sure to supply a Local Name and other info in Options / Identity");
  }
  if (knownName && settings.Author != "unknown" && settings.QTH != "unknown") return;
  session_.Tell("Identity Not Completely Specified", "Please update settings under Options / Identity");
}

void FormMain::ReadNotes() {
  tarvolt::ReadNotes(session_);
}

// The name holds the moment of the start, so it is taken once; a data folder that is not there yet is left for the
// start of a chart to tell about.
void FormMain::NameSessionLog() {
  if (session_.log.HasFileName() || !session_.host.files.FolderExists(session_.DataFolder())) return;
  session_.log.SetFileName(NameDataFile(session_, recorder_.window, NameKind::Log, true));
}

void FormMain::AlertAboutBackups() {
  if (session_.store.GetSetting(Section::Settings, "ShutDown") != "OK") RecoverBackups(session_);
  session_.store.SaveSetting(Section::Settings, "ShutDown", "Running");
}

void FormMain::WriteLoadError(const std::string& text) {
  const std::string line = FormatDate(NowPrecise(session_.host.clock), "YYYY/MM/DD hh:nn:ss ") + text + "\r\n";
  session_.Add2SLog("Error while loading: " + text);
  std::error_code error;
  const std::unique_ptr<File> file = session_.host.files.Open(session_.home / "LoadErr.txt", OpenMode::Append, error);
  if (file) file->Write(line, error);
}

}  // namespace tarvolt
