// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/chart/recovered_charts.h"

#include "files/naming.h"
#include "files/recovery_folder.h"
#include "timebase/time_base.h"

namespace tarvolt {

std::vector<RecoveredChart> RecoveredCharts::List() const {
  return ListRecovered(recorder_.session.host.files, RecoveryFolder(recorder_.session));
}

bool RecoveredCharts::Open(const RecoveredChart& chart) {
  return CanOpen() && loads_.LoadDataFile(chart.file.string());
}

bool RecoveredCharts::Keep(const RecoveredChart& chart) {
  if (!MayTouch()) return false;
  Session& session = recorder_.session;
  FileSystem& files = session.host.files;
  const std::filesystem::path folder = FolderOfDate(session, chart.start);
  std::error_code error;
  files.MakeFolders(folder, error);
  const std::filesystem::path name = FreeName(files, folder / (chart.base + FileNameFromDate(chart.start) + ".tvd"));
  if (!error) files.Rename(chart.file, name, error);
  if (error) return Refuse("Could not move " + chart.file.string() + ": " + error.message());
  session.Add2SLog(" Recovered chart " + chart.file.filename().string() + " is kept as " + name.string());
  AddRecentSaved(session.recent, name.string());
  return true;
}

bool RecoveredCharts::Delete(const RecoveredChart& chart) {
  if (!MayTouch()) return false;
  Session& session = recorder_.session;
  const Question question{"Recovered Charts", "Delete " + chart.file.filename().string() + " for good?", Buttons::YesNo,
                          Answer::No};
  if (session.host.dialogs.Ask(question) != Answer::Yes || !MayTouch()) return false;
  std::error_code error;
  session.host.files.Remove(chart.file, error);
  if (error) return Refuse("Could not delete " + chart.file.string() + ": " + error.message());
  session.Add2SLog(" Recovered chart " + chart.file.string() + " was deleted.");
  return true;
}

// The backup of a log that waits for room lies in that folder too.
bool RecoveredCharts::MayTouch() {
  if (!recorder_.unsaved.Any()) return true;
  return Refuse("A log waits for room on the disk. Recovered charts cannot be moved or deleted before it is saved.");
}

bool RecoveredCharts::Refuse(const std::string& text) {
  recorder_.session.LogAndTell("Recovered Charts", text);
  return false;
}

}  // namespace tarvolt
