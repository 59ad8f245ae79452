// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/chart_window.h"

namespace tarvolt {

/// The chart of a window with all that belongs to it, put by while a start may still fail.
struct DisplayedChart {
  SampleStore store;
  ChartDisplay display;
  RunState run;
  DataFileHeader header;
  std::string notes;
  Metadata metadata;
  Notations notations;
  std::array<std::string, 9> channelLabels;
  SaveState save;
  std::string title;
};

/// Takes the chart away from the window, whose store is empty afterwards. No sample is copied.
DisplayedChart PutBy(ChartWindow& window);

/// Gives it back. What the run of the window is doing now stays as it is.
void PutBack(DisplayedChart displayed, ChartWindow& window);

}  // namespace tarvolt
