// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/pending_saves.h"

#include <algorithm>
#include <optional>
#include <system_error>
#include <utility>

#include "files/recovery_folder.h"

namespace tarvolt {
namespace {

// Tries are put off longer and longer, up to this many calls of Retry: each one fills the disk and blocks the samples.
constexpr int kLongestPause = 64;

}  // namespace

PendingSaves::PendingSaves(Session& session) : session_(session) {}

bool PendingSaves::SetAside(ChartWindow& window, const std::filesystem::path& name) {
  if (waiting_.size() >= kLimit || !ChooseSaveRange(window)) return false;
  std::optional<SavePlan> plan = PlanSave(session_, window, false);
  if (!plan) return false;
  std::filesystem::path backup;
  if (!MoveBackup(window, backup) && !plan->storeHoldsRun) return false;
  if (plan->storeHoldsRun || backup.empty()) {
    plan->file.stored.reset();
  } else if (plan->file.stored) {
    plan->file.stored->file = backup;
  }
  waiting_.push_back({std::move(*plan), window.chart.TakeSamples(), name, backup});
  window.run.DataNeedsSave = false;
  return true;
}

// The next log's backup gets the name of this one's, so it must go out of the way. When it cannot, memory alone is
// left. False when it is there and cannot.
bool PendingSaves::MoveBackup(ChartWindow& window, std::filesystem::path& aside) {
  SaveState& save = window.save;
  if (!save.keeping.BackupActive || !session_.host.files.FileExists(save.keeping.LocalBackupFile)) return true;
  std::error_code error;
  aside = MoveToRecovery(session_, save.keeping.LocalBackupFile, "local.tvd", error);
  if (error) return false;
  save.keeping.BackupActive = false;
  session_.Add2SLog(" Backup of the Log That Could Not Be Saved: " + aside.string());
  return true;
}

void PendingSaves::Retry() {
  if (waiting_.empty()) return;
  if (pause_ > 0) {
    --pause_;
    return;
  }
  if (SaveOldest()) {
    nextPause_ = 1;
    return;
  }
  pause_ = nextPause_;
  nextPause_ = std::min(2 * nextPause_, kLongestPause);
}

void PendingSaves::SaveAll() {
  while (!waiting_.empty() && SaveOldest()) {
  }
}

bool PendingSaves::SaveOldest() {
  FileSystem& files = session_.host.files;
  Waiting& log = waiting_.front();
  std::error_code error;
  files.MakeFolders(log.name.parent_path(), error);
  const std::filesystem::path name = FreeName(files, log.name);
  if (!error) error = WriteSave(files, log.plan, log.samples, name);
  if (error) return false;
  session_.Add2SLog(" Saved " + name.string());
  AddRecentSaved(session_.recent, name.string());
  if (!log.backup.empty()) files.Remove(log.backup, error);
  waiting_.pop_front();
  return true;
}

bool PendingSaves::Empty() const {
  return waiting_.empty();
}

}  // namespace tarvolt
