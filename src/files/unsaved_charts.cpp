// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/unsaved_charts.h"

#include "files/backup_source.h"
#include "files/naming.h"
#include "files/recovery_folder.h"

namespace tarvolt {
namespace {

constexpr const char* kNoRoom = "The last chart waits for room on the disk, and no more can wait with it.";

std::string MarkerKey(const ChartWindow& window) {
  if (window.Mode != SessionMode::Client || window.Name.empty()) return "LocalRun";
  return std::string("ClientRun") + window.Name.back();
}

}  // namespace

SaveOutcome UnsavedCharts::SaveAtStop(bool mayPrompt) {
  failed_ = false;
  unwanted_ = false;
  return Save(SaveReason::RunEnded, mayPrompt);
}

void UnsavedCharts::NothingToSave() {
  failed_ = false;
  unwanted_ = true;
  SetMarker();
}

SaveOutcome UnsavedCharts::SaveAsked() {
  const SaveOutcome outcome = Save(SaveReason::Asked, true);
  if (outcome == SaveOutcome::NotWanted) {
    const bool isKept = window_.save.keeping.IsKept();
    session_.LogAndTell("Tarvolt", isKept ? "The chart was not saved: SaveIF does not want it."
                                          : "The chart was not saved: without a backup a mini window keeps no chart.");
  }
  return outcome;
}

// What a person calls off, or a rule, leaves a chart that the disk refused in its danger.
SaveOutcome UnsavedCharts::Save(SaveReason reason, bool mayPrompt) {
  const SaveOutcome outcome = CheckForSave(session_, window_, reason, mayPrompt);
  if (outcome == SaveOutcome::Saved) failed_ = false;
  if (outcome == SaveOutcome::Failed) failed_ = true;
  if (reason == SaveReason::RunEnded) unwanted_ = outcome == SaveOutcome::NotWanted;
  SetMarker();
  return outcome;
}

bool UnsavedCharts::ChartIsUnsaved() const {
  return window_.run.DataNeedsSave && LastIndexOfRun(session_, window_) >= 2;  // fewer make no file
}

Result<bool> UnsavedCharts::MakeRoom() {
  if (failed_) return SetChartAside();
  if (!ChartIsUnsaved()) return true;
  Answer answer = Answer::No;
  if (session_.settings.program.ShowMsgBox) {
    answer = session_.host.dialogs.Ask({"Data Not Saved", "The last chart was not saved.\nDo you want to save it now?",
                                        Buttons::YesNoCancel, unwanted_ ? Answer::No : Answer::Yes});
  }
  if (!ChartIsUnsaved()) return true;  // it was saved while the question stood
  if (answer == Answer::Cancel) return false;
  if (answer == Answer::Yes) {
    const SaveOutcome outcome = Save(SaveReason::Wanted, true);
    return outcome == SaveOutcome::Failed ? SetChartAside() : Result<bool>(outcome == SaveOutcome::Saved);
  }
  if (unwanted_) {
    session_.Add2SLog(" Not Saved: SaveIF does not want it.");
    return true;
  }
  if (KeepInRecovery()) return true;
  failed_ = true;
  return SetChartAside();
}

void UnsavedCharts::SettleAtEnd() {
  pending_.SaveAll();
  if (failed_) Save(SaveReason::Again, false);
  if (failed_ || !ChartIsUnsaved()) return;
  const Result<bool> settled = MakeRoom();
  if (settled && !*settled) KeepInRecovery();
}

Result<bool> UnsavedCharts::SetChartAside() {
  const std::filesystem::path name = NameDataFile(session_, window_, NameKind::Data, true);
  failed_ = name != kBadFile && !pending_.SetAside(window_, name);
  if (failed_) return Failure{kNoRoom};
  return true;
}

// As a data file of its own, else as the backup that there is, which needs no room on the disk.
bool UnsavedCharts::KeepInRecovery() {
  LogKeeping& keeping = window_.save.keeping;
  std::error_code error;
  session_.host.files.MakeFolders(RecoveryFolder(session_), error);
  std::filesystem::path kept = RescueName(session_, RecoveryFolder(session_), "local.tvd");
  std::optional<SavePlan> plan;
  if (ChooseSaveRange(window_)) plan = PlanSave(session_, window_, false);
  error = plan ? WriteSave(session_.host.files, *plan, window_.chart.Samples(), kept)
               : std::make_error_code(std::errc::invalid_argument);
  const bool isWhole = !error && (plan->storeHoldsRun || plan->file.stored);
  if (!isWhole && keeping.BackupActive) {
    error.clear();
    kept = MoveToRecovery(session_, keeping.LocalBackupFile, "local.tvd", error);
    if (!error) keeping.BackupActive = false;
  }
  if (error) return false;
  session_.Add2SLog(" Not Saved. Kept in: " + kept.string());
  window_.run.DataNeedsSave = false;
  SetMarker();
  return true;
}

void UnsavedCharts::Retry() {
  pending_.Retry();
  if (failed_ && window_.run.phase == RunPhase::Idle) Save(SaveReason::Again, false);
}

// In a run the marker belongs to the run.
void UnsavedCharts::SetMarker() {
  if (window_.run.ChartRunning()) return;
  const bool inDanger = window_.save.keeping.BackupActive && (failed_ || (window_.run.DataNeedsSave && !unwanted_));
  session_.store.SaveSetting(Section::Settings, MarkerKey(window_), inDanger ? "Running" : "OK");
}

}  // namespace tarvolt
