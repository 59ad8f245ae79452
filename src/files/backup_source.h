// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>

#include "files/format/data_file_writer.h"
#include "model/chart_window.h"
#include "model/session.h"

namespace tarvolt {

/// The layout of samples of that form.
SampleLayout LayoutOf(const SampleForm& form);

/// The layout in which the chart on display is saved: a log's as it was settled, a loaded chart's by the settings now.
SampleLayout LayoutOfChart(const Settings& settings, const ChartWindow& window);

/// Start of the run on display in the base of its stamps.
TimeStamp StartOfRun(const RunState& run);

/// What the backup file of the window's log holds.
struct BackupContents {
  StoredSamples samples;  ///< the whole ones
  std::int64_t count = 0;
};

/// Looks into the backup of the log on display; nothing when there is none, or it is of another number of channels than
/// the chart.
std::optional<BackupContents> FindBackup(Session& session, const ChartWindow& window);

/// Index of the newest sample of the log on display, -1 for none: in memory, or in the backup that alone has it.
std::int32_t LastIndexOfRun(Session& session, const ChartWindow& window);

}  // namespace tarvolt
