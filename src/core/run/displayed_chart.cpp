// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/run/displayed_chart.h"

#include <utility>

namespace tarvolt {

DisplayedChart PutBy(ChartWindow& window) {
  DisplayedChart displayed;
  displayed.store = std::exchange(static_cast<SampleStore&>(window.chart), SampleStore());
  displayed.display = window.chart;
  displayed.run = window.run;
  displayed.header = window.header;
  displayed.notes = window.notes;
  displayed.metadata = window.metadata;
  displayed.notations = window.notations;
  displayed.channelLabels = window.channelLabels;
  displayed.save = window.save;
  displayed.title = window.view.Title;
  return displayed;
}

void PutBack(DisplayedChart displayed, ChartWindow& window) {
  const std::uint64_t repaints = window.chart.RepaintRequests;
  static_cast<ChartDisplay&>(window.chart) = std::move(displayed.display);
  static_cast<SampleStore&>(window.chart) = std::move(displayed.store);
  window.chart.RepaintRequests = repaints + 1;

  const RunState now = std::exchange(window.run, std::move(displayed.run));
  window.run.phase = now.phase;
  window.run.RunNumber = now.RunNumber;
  window.run.AbortFlag = now.AbortFlag;
  window.run.CancelSchedule = now.CancelSchedule;
  window.run.ScheduleRunning = now.ScheduleRunning;
  window.run.EndRequested = now.EndRequested;

  window.header = std::move(displayed.header);
  window.notes = std::move(displayed.notes);
  window.metadata = std::move(displayed.metadata);
  window.notations = std::move(displayed.notations);
  window.channelLabels = std::move(displayed.channelLabels);
  window.save = std::move(displayed.save);
  window.view.Title = std::move(displayed.title);
}

}  // namespace tarvolt
