// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/log_folder.h"

#include "files/backup_source.h"
#include "files/naming.h"

namespace tarvolt {

std::filesystem::path OLogFolder(const Session& session, const ChartWindow& window) {
  const RunState& run = window.run;
  const bool hasRun = run.ChartRunning() || run.StartStamp > 0;
  if (session.settings.observerLog.StoreLogWithObservation && hasRun && !window.save.keeping.LoadedFromFile) {
    const std::filesystem::path& saved = window.save.SavedAs;
    return saved.empty() ? FolderOfDate(session, StartOfRun(run)) : saved.parent_path();
  }
  const std::string& folder = session.settings.observerLog.DefaultLogDirectory;
  return folder.empty() ? session.DataFolder() : std::filesystem::path(folder);
}

}  // namespace tarvolt
