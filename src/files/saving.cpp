#include "files/saving.h"

#include <optional>
#include <string>
#include <system_error>

#include "files/auto_title.h"
#include "files/backup_source.h"
#include "files/header_info.h"
#include "files/naming.h"
#include "files/save_plan.h"
#include "text/ansi.h"
#include "timebase/time_base.h"

namespace tarvolt {
namespace {

constexpr const char* kBoxTitle = "Tarvolt";

// The rules that need no look at a file: true when they ask for a save.
bool RulesAskForSave(Session& session, const ChartWindow& window) {
  const Settings& settings = session.settings;
  const SaveState& save = window.save;
  if (IsMini(settings, window) && !BackupWanted(settings, window) && !save.LoadedFromFile) return false;
  if (LastIndexOfRun(session, window) <= 0) return false;
  const bool autosave = window.Mode == SessionMode::Client ? settings.AutoSaveClient : settings.AutoSaveStandAlone;
  if (!save.ViewSaveActive && !save.UserAskedSave && !autosave) return false;
  return save.ViewSaveActive || SaveIfAtStop(settings, window.chart);
}

void RemoveCreatedFolders(Session& session, ChartWindow& window) {
  // From the deepest up; the folder of the local name stays (meant), and so does one that is no longer empty.
  for (const std::size_t slot : {3u, 2u, 1u}) {
    std::error_code ignored;
    std::filesystem::path& folder = window.save.CreatedFolders[slot];
    if (!folder.empty()) session.host.files.Remove(folder, ignored);
    folder.clear();
  }
}

std::optional<std::filesystem::path> AskForName(Session& session, ChartWindow& window,
                                                const std::filesystem::path& proposed) {
  SaveFileRequest request;
  request.title = session.settings.LocalName + "  Save Data File (Cancel to Abort Save)";
  request.folder = proposed.parent_path().string();
  request.fileName = proposed.filename().string();
  request.extension = ".tvd";
  request.filter = "*tarvolt data| *.tvd";
  const std::optional<std::string> chosen = session.host.dialogs.AskSaveFile(request);
  if (chosen) return *chosen;
  RemoveCreatedFolders(session, window);
  return std::nullopt;
}

// A save that no hand asked for waits for nobody while boxes are off.
bool MayAsk(const Settings& settings, const ChartWindow& window, bool mayPrompt) {
  if (!mayPrompt || IsMini(settings, window)) return false;
  if (window.save.ViewSaveActive) return true;
  return settings.PromptBeforeSaving && (settings.ShowMsgBox || window.save.UserAskedSave);
}

// Nothing when there is not enough data and somebody could be told so, or when the person cancelled.
std::optional<std::filesystem::path> NameOfSave(Session& session, ChartWindow& window, bool mayPrompt) {
  std::filesystem::path name = NameDataFile(session, window, NameKind::Data, true);
  if (name == kBadFile) {
    if (session.settings.ShowMsgBox) {
      session.Tell(kBoxTitle, "There is not enough data to save.");
      return std::nullopt;
    }
    // With nobody to tell, two samples are saved all the same, under that very name (meant).
    name = session.DataFolder() / kBadFile;
  }
  name = NameOfOwn(session, window, name);
  return MayAsk(session.settings, window, mayPrompt) ? AskForName(session, window, name) : name;
}

SaveOutcome SaveIfWanted(Session& session, ChartWindow& window, bool mayPrompt) {
  if (!RulesAskForSave(session, window)) return SaveOutcome::NotWanted;
  const std::optional<std::filesystem::path> name = NameOfSave(session, window, mayPrompt);
  if (!name || LastIndexOfRun(session, window) <= 0) return SaveOutcome::NotWanted;
  return SaveDataFile(session, window, *name, mayPrompt);
}

// In a run the marker belongs to the run. Set again after a failure, so that the backup of the run is found at the next
// start whatever happens until then.
void SetRunMarker(Session& session, const ChartWindow& window, SaveOutcome outcome) {
  if (window.run.ChartRunning) return;
  const bool inDanger = outcome == SaveOutcome::Failed && window.save.BackupActive;
  session.store.SaveSetting(Section::Settings, RunMarkerKey(window), inDanger ? "Running" : "OK");
}

void NoteModifiedSave(Session& session, ChartWindow& window) {
  const Settings& settings = session.settings;
  const std::string when = FormatDate(NowPrecise(session.host.clock), "YYMMDDHHnnSS");
  window.metadata.AddToMetaData("Modified Save: " + when,
                                "Local Name:" + settings.LocalName + " Observer:" + settings.Author);
}

void DropVanishedBackup(Session& session, SaveState& save) {
  if (save.BackupActive && !session.host.files.FileExists(save.LocalBackupFile)) save.BackupActive = false;
}

void TellFailure(Session& session, ChartWindow& window, const std::string& name, const std::error_code& error) {
  const std::string text = " Could Not Save " + name + ": " + error.message();
  window.view.StatusText = text;
  if (!window.save.ViewSaveActive) {
    if (window.save.FailedSave == name) return;
    window.save.FailedSave = name;
  }
  session.Add2SLog(text);
  session.Tell(kBoxTitle, "Could Not Save " + name + "\n" + error.message() +
                              "\nThe data are still in memory, and in the backup if one is on.");
}

void NoteSaved(Session& session, ChartWindow& window, const std::filesystem::path& name, bool reload) {
  const std::string fileName = name.filename().string();
  window.view.StatusText = reload ? "Reload " + fileName + " to View " : " Saved " + fileName;
  session.Add2SLog(" Saved " + name.string());
  if (!IsMini(session.settings, window)) window.view.InfoCommands = true;
  AddRecentSaved(session.recent, name.string());
  session.store.SaveSetting(Section::Settings, "LastLoadDir", name.parent_path().string());
  DoAutoTitle(session, window);
  if (window.save.ViewSaveActive) return;  // a stretch of the log is not the log
  window.run.DataNeedsSave = false;
  window.save.FailedSave.clear();
  window.save.SavedAs = name;
}

}  // namespace

bool SaveIfAtTurnover(const Settings& settings, const StripChart& chart) {
  if (settings.SaveIF > 0) return chart.DataMax() >= settings.SaveIFVal;
  if (settings.SaveIF < 0) return chart.DataMin() <= settings.SaveIFVal;
  return true;
}

bool SaveIfAtStop(const Settings& settings, const StripChart& chart) {
  if (settings.SaveIF > 0) return chart.DataMax() > settings.SaveIFVal;
  if (settings.SaveIF < 0) return chart.DataMin() < settings.SaveIFVal;
  return true;
}

SaveOutcome CheckForSave(Session& session, ChartWindow& window, bool mayPrompt) {
  // A save of the view waits for a person; until then its range is not that of the log.
  if (window.save.ViewSaveActive) return SaveOutcome::Failed;
  const SaveOutcome outcome = SaveIfWanted(session, window, mayPrompt);
  SetRunMarker(session, window, outcome);
  return outcome;
}

SaveOutcome SaveDataFile(Session& session, ChartWindow& window, const std::filesystem::path& name, bool mayAsk) {
  if (!ChooseSaveRange(window)) {
    session.Tell(kBoxTitle, "There was a Min > Max range error saving " + name.string());
    return SaveOutcome::NotWanted;
  }
  if (window.save.ViewSaveActive) NoteModifiedSave(session, window);
  std::optional<SavePlan> plan = PlanSave(session, window, mayAsk);
  if (!plan) return SaveOutcome::NotWanted;

  window.view.StatusText = " Saving>" + ReplaceAll(name.string(), " ", "_");
  const std::error_code error = WriteSave(session.host.files, *plan, window.chart.Samples(), name);
  DropVanishedBackup(session, window.save);
  if (error) {
    TellFailure(session, window, name.string(), error);
    return SaveOutcome::Failed;
  }
  NoteSaved(session, window, name, plan->file.stored && !plan->storeHoldsRun);
  return SaveOutcome::Saved;
}

SaveOutcome SaveView(Session& session, ChartWindow& window) {
  if (window.chart.Count() == 0 || window.save.ViewSaveActive) return SaveOutcome::NotWanted;
  const DataFileHeader header = window.header;
  const bool start = window.view.cmdStart;
  window.view.cmdStart = false;
  window.save.ViewSaveActive = true;
  const SaveOutcome outcome = SaveIfWanted(session, window, true);
  window.save.ViewSaveActive = false;
  window.header = header;
  window.view.cmdStart = start;
  return outcome;
}

}  // namespace tarvolt
