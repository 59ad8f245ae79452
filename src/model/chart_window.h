// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "display/chart_look.h"
#include "display/chart_steps.h"
#include "display/strip_chart.h"
#include "logs/metadata.h"
#include "logs/notations.h"
#include "logs/observer_log.h"
#include "model/data_file_header.h"
#include "model/load_options.h"
#include "model/log_keeping.h"
#include "model/run_state.h"
#include "model/sound_state.h"
#include "model/window_state.h"

namespace tarvolt {

/// What saving knows of a window's chart.
struct SaveState {
  LogKeeping keeping;                ///< where the samples of the chart on display lie
  bool ViewSaveActive = false;       ///< Save View is in progress
  bool Loading = false;              ///< a file is being read into the chart: no other load, no start
  bool NameCancelled = false;        ///< a person cancelled the name of a save
  std::int32_t FirstViewIndex = 0;   ///< first sample index to write
  std::int32_t LastSaveIndex = 0;    ///< last sample index to write
  bool LogSaved = false;             ///< a log of the run has been saved
  std::filesystem::path SavedAs;     ///< the file that this log was saved to; empty before that
  std::filesystem::path FailedSave;  ///< the name whose save failed last: reported once, not at each try
  std::string PendingNotes;          ///< the notes as they were when the chart started
  std::array<std::filesystem::path, 4> CreatedFolders;  ///< folders made for the last name, by slot
};

/// Ranges that a person can come back to.
struct ChartViews {
  std::optional<ChartRange> remembered;  ///< mnuRememberXY, and the range of a run that ended
  std::optional<ChartRange> full;        ///< the range before the last full view
  std::optional<ChartRange> saved;       ///< SaveChartViewParams
  double fvMinX = 0;                     ///< x range of the last full view
  double fvMaxX = 0;
};

/// What one window owns.
struct ChartWindow {
  static constexpr std::string_view kReviewName = "rform";  ///< and a number

  std::string Name = "form1";
  SessionMode Mode = SessionMode::StandAlone;
  RunState run;
  SoundState sound;
  StripChart chart;
  ChartLook look;
  ChartViews views;
  DataFileHeader header;
  std::string notes;  ///< free-text notes of the chart on display
  Metadata metadata;
  Notations notations;
  ObserverLog olog;
  std::array<std::string, 9> channelLabels;  ///< labels of the chart on display
  SaveState save;
  LoadOptions loadOptions;
  WindowState view;

  /// True for a window that shows loaded charts and records none.
  bool IsReview() const { return Name.starts_with(kReviewName); }

  /// True while no run is on and none is being started, ended or loaded.
  bool AtRest() const { return run.phase == RunPhase::Idle && !save.Loading; }

  /// Index of the newest stored sample, -1 for none.
  std::int32_t LastSampleIndex() const { return chart.Count() - 1; }
};

}  // namespace tarvolt
