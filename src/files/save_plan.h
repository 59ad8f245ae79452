// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <optional>
#include <string_view>
#include <system_error>

#include "files/format/data_file_writer.h"
#include "model/chart_window.h"
#include "model/session.h"

namespace tarvolt {

/// Everything that a save will write, and how it may fall back.
struct SavePlan {
  DataFilePlan file;
  bool storeHoldsRun = false;  ///< with samples from a backup: the store could give them as well
};

/// Sets first and last index of the save: all samples, or those in view. False when the view holds less than two.
bool ChooseSaveRange(ChartWindow& window);

/// Plans the file of the range in the window's SaveState. Nothing when a person cancelled because the values do not fit
/// an integer save; with `mayAsk` and ShowMsgBox that is asked, and yields, else doubles are taken.
std::optional<SavePlan> PlanSave(Session& session, ChartWindow& window, bool mayAsk);

/// The file of all samples in memory, written in that layout by a program of that version, such as "1.2.3".
DataFilePlan PlanOfChart(ChartWindow& window, const SampleLayout& layout, std::string_view version);

/// Writes a planned file under `name`. When the backup cannot give the samples and the store holds them, they come from
/// there. Returns what failed.
std::error_code WriteSave(FileSystem& files, SavePlan& plan, const SampleColumns& samples,
                          const std::filesystem::path& name);

}  // namespace tarvolt
