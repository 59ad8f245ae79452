#pragma once

#include <cstdint>
#include <optional>

#include "files/data_file_writer.h"
#include "model/chart_window.h"
#include "model/session.h"

namespace tarvolt {

/// The layout in which the settings have samples written now.
SampleLayout LayoutOfSettings(const Settings& settings, int channels);

/// The layout of the live backup.
SampleLayout LayoutOfBackup(const SaveState& save);

/// True when the settings ask that the window keep only the last stretch of a run in memory.
bool MiniWanted(const Settings& settings, const ChartWindow& window);

/// True for a window that keeps only the last stretch of a run in memory: the whole of it lies in the backup. With a
/// live backup that of the run counts, otherwise the settings.
bool IsMini(const Settings& settings, const ChartWindow& window);

/// True when the window's run has a live backup, or its kind of backup is switched on.
bool BackupWanted(const Settings& settings, const ChartWindow& window);

/// True when the run on display lies whole in a backup alone: names and header times are then those of the run.
bool RunLiesInBackup(const Settings& settings, const ChartWindow& window);

/// Start of the run on display in the base of its stamps.
TimeStamp StartOfRun(const RunState& run);

/// The key of the store that marks a run of this window.
std::string RunMarkerKey(const ChartWindow& window);

/// What the backup file of the window's run holds.
struct BackupContents {
  StoredSamples samples;  ///< the whole ones
  std::int64_t count = 0;
};

/// Looks into the backup of the window's run; nothing when there is none, or it is of another number of channels than
/// the chart, or a loaded chart is on display.
std::optional<BackupContents> FindBackup(Session& session, const ChartWindow& window);

/// Index of the newest sample of the chart's run, -1 for none: in the store, or in the backup of a mini window.
std::int32_t LastIndexOfRun(Session& session, const ChartWindow& window);

}  // namespace tarvolt
