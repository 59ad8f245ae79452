// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/saving.h"

#include <optional>
#include <string>
#include <system_error>

#include "files/auto_title.h"
#include "files/backup_source.h"
#include "files/header_info.h"
#include "files/naming.h"
#include "files/recovery_folder.h"
#include "files/save_plan.h"
#include "text/ansi.h"
#include "timebase/time_base.h"

namespace tarvolt {
namespace {

constexpr const char* kBoxTitle = "Tarvolt";

// Also of the samples that a mini window has let go; 0 without any.
MinMax ValuesOfLog(const ChartWindow& window) {
  MinMax values = window.run.LetGo;
  values.Widen(window.chart.Extremes());
  return values.IsEmpty() ? MinMax{0, 0} : values;
}

// The rules that need no look at a file. Saved stands for a save that is to be made.
SaveOutcome AskRules(Session& session, const ChartWindow& window, SaveReason reason) {
  const SaveState& save = window.save;
  if (save.ViewSaveActive) return SaveOutcome::Saved;
  if (!save.keeping.IsKept()) return SaveOutcome::NotWanted;
  if (LastIndexOfRun(session, window) <= 0) return SaveOutcome::NotWanted;
  if (reason == SaveReason::Again || reason == SaveReason::Wanted) return SaveOutcome::Saved;
  if (reason == SaveReason::RunEnded) {
    const LogPlan& log = window.run.log;
    if (!log.AutoSave) return SaveOutcome::Unsaved;
    return SaveIfAtStop(log.SaveIF, log.SaveIFVal, window) ? SaveOutcome::Saved : SaveOutcome::NotWanted;
  }
  const FileSettings& files = session.settings.files;
  return SaveIfAtStop(files.SaveIF, files.SaveIFVal, window) ? SaveOutcome::Saved : SaveOutcome::NotWanted;
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
  request.title = session.settings.station.LocalName + "  Save Data File (Cancel to Abort Save)";
  request.folder = proposed.parent_path().string();
  request.fileName = proposed.filename().string();
  request.extension = ".tvd";
  request.filter = "*tarvolt data| *.tvd";
  const std::optional<std::string> chosen = session.host.dialogs.AskSaveFile(request);
  if (chosen) return *chosen;
  window.save.NameCancelled = true;
  RemoveCreatedFolders(session, window);
  return std::nullopt;
}

// A save that no hand asked for waits for nobody while boxes are off.
bool MayAsk(const Settings& settings, const ChartWindow& window, SaveReason reason) {
  if (window.save.ViewSaveActive) return true;
  if (window.save.keeping.Mini) return false;
  const bool byHand = reason == SaveReason::Asked || reason == SaveReason::Wanted;
  return settings.files.PromptBeforeSaving && (settings.program.ShowMsgBox || byHand);
}

// Nothing when there is not enough data and somebody could be told so, or when the person cancelled.
std::optional<std::filesystem::path> NameOfSave(Session& session, ChartWindow& window, SaveReason reason,
                                                bool mayPrompt) {
  std::filesystem::path name = NameDataFile(session, window, NameKind::Data, true);
  if (name == kBadFile) {
    if (session.settings.program.ShowMsgBox) {
      session.Tell(kBoxTitle, "There is not enough data to save.");
      return std::nullopt;
    }
    // With nobody to tell, two samples are saved all the same, under that very name (meant).
    name = session.DataFolder() / kBadFile;
  }
  name = NameOfOwn(session, window, name);
  return mayPrompt && MayAsk(session.settings, window, reason) ? AskForName(session, window, name) : name;
}

SaveOutcome SaveIfWanted(Session& session, ChartWindow& window, SaveReason reason, bool mayPrompt) {
  const SaveOutcome wanted = AskRules(session, window, reason);
  if (wanted != SaveOutcome::Saved) return wanted;
  const std::optional<std::filesystem::path> name = NameOfSave(session, window, reason, mayPrompt);
  if (!name || LastIndexOfRun(session, window) <= 0) return SaveOutcome::Unsaved;
  return SaveDataFile(session, window, *name, mayPrompt);
}

// Samples that only the backup has, when the file had to be written without them: they must outlive the next run.
void KeepBackupAside(Session& session, ChartWindow& window) {
  LogKeeping& keeping = window.save.keeping;
  if (!keeping.BackupActive || window.run.StoreStart == 0) return;
  std::error_code error;
  const std::filesystem::path kept = MoveToRecovery(session, keeping.LocalBackupFile, "local.tvd", error);
  if (error) return;
  keeping.BackupActive = false;
  session.Add2SLog(" The file has the end of the log alone. Its backup: " + kept.string());
}

void NoteModifiedSave(Session& session, ChartWindow& window) {
  const Settings& settings = session.settings;
  const std::string when = FormatDate(NowPrecise(session.host.clock), "YYMMDDHHnnSS");
  window.metadata.AddToMetaData("Modified Save: " + when,
                                "Local Name:" + settings.station.LocalName + " Observer:" + settings.station.Author);
}

void DropVanishedBackup(Session& session, SaveState& save) {
  if (save.keeping.BackupActive && !session.host.files.FileExists(save.keeping.LocalBackupFile))
    save.keeping.BackupActive = false;
}

void TellFailure(Session& session, ChartWindow& window, const std::string& name, const std::error_code& error) {
  const std::string text = " Could Not Save " + name + ": " + error.message();
  window.view.Status.Say(text);
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
  window.view.Status.Say(reload ? "Reload " + fileName + " to View " : " Saved " + fileName);
  session.Add2SLog(" Saved " + name.string());
  AddRecentSaved(session.recent, name.string());
  session.store.SaveSetting(Section::Settings, "LastLoadDir", name.parent_path().string());
  DoAutoTitle(session, window);
  if (window.save.ViewSaveActive) return;  // a stretch of the log is not the log
  window.run.DataNeedsSave = false;
  window.save.FailedSave.clear();
  window.save.LogSaved = true;
  window.save.SavedAs = name;
}

}  // namespace

bool SaveIfAtTurnover(const ChartWindow& window) {
  const LogPlan& log = window.run.log;
  const MinMax values = ValuesOfLog(window);
  if (log.SaveIF > 0) return values.highest >= log.SaveIFVal;
  if (log.SaveIF < 0) return values.lowest <= log.SaveIFVal;
  return true;
}

bool SaveIfAtStop(std::int32_t saveIF, double value, const ChartWindow& window) {
  const MinMax values = ValuesOfLog(window);
  if (saveIF > 0) return values.highest > value;
  if (saveIF < 0) return values.lowest < value;
  return true;
}

// While a save of the view waits for a person its range is not that of the log.
SaveOutcome CheckForSave(Session& session, ChartWindow& window, SaveReason reason, bool mayPrompt) {
  if (window.save.ViewSaveActive) return SaveOutcome::Unsaved;
  return SaveIfWanted(session, window, reason, mayPrompt);
}

SaveOutcome SaveDataFile(Session& session, ChartWindow& window, const std::filesystem::path& name, bool mayAsk) {
  if (!ChooseSaveRange(window)) {
    session.Tell(kBoxTitle, "There was a Min > Max range error saving " + name.string());
    return SaveOutcome::Unsaved;
  }
  if (window.save.ViewSaveActive) NoteModifiedSave(session, window);
  std::optional<SavePlan> plan = PlanSave(session, window, mayAsk);
  if (!plan) return SaveOutcome::Unsaved;

  window.view.Status.Say(" Saving>" + ReplaceAll(name.string(), " ", "_"));
  const std::error_code error = WriteSave(session.host.files, *plan, window.chart.Samples(), name);
  DropVanishedBackup(session, window.save);
  if (error) {
    TellFailure(session, window, name.string(), error);
    return SaveOutcome::Failed;
  }
  if (!plan->storeHoldsRun && !plan->file.stored && !window.save.ViewSaveActive) KeepBackupAside(session, window);
  NoteSaved(session, window, name, plan->file.stored && !plan->storeHoldsRun);
  return SaveOutcome::Saved;
}

SaveOutcome SaveView(Session& session, ChartWindow& window) {
  if (window.chart.Count() == 0 || window.save.ViewSaveActive) return SaveOutcome::Unsaved;
  const DataFileHeader header = window.header;
  window.save.ViewSaveActive = true;
  const SaveOutcome outcome = SaveIfWanted(session, window, SaveReason::Asked, true);
  window.save.ViewSaveActive = false;
  window.header = header;
  return outcome;
}

}  // namespace tarvolt
