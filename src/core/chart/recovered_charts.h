// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "core/chart/load_commands.h"
#include "core/run/recorder.h"
#include "files/recovered_charts.h"

namespace tarvolt {

/// What a person does with the charts that lie in the recovery folder: those of runs that were not ended properly, and
/// those that gave way to another chart.
class RecoveredCharts {
 public:
  /// Both outlive it.
  RecoveredCharts(Recorder& recorder, LoadCommands& loads) : recorder_(recorder), loads_(loads) {}

  /// The one rescued last first.
  std::vector<RecoveredChart> List() const;

  /// True when a chart can be opened now.
  bool CanOpen() const { return loads_.CanLoad(); }

  /// Opens one in the main window; the file stays where it is. False, and reported, when it cannot be loaded as a
  /// whole. Yields.
  bool Open(const RecoveredChart& chart);

  /// Moves one among the station's data files, under the name and in the folder of its date. False, and reported, when
  /// it must stay.
  bool Keep(const RecoveredChart& chart);

  /// Asks, and deletes one for good. False when the person does not want that or, as is reported, it must stay. Yields.
  bool Delete(const RecoveredChart& chart);

 private:
  bool MayTouch();
  bool Refuse(const std::string& text);

  Recorder& recorder_;
  LoadCommands& loads_;
};

}  // namespace tarvolt
