#include "core/chart/chart_commands.h"
#include "core/chart/command_states.h"

// What the chart commands do with a chart as a file: its notations, its information, and views of it that went.

namespace tarvolt {

void ChartCommands::mnuShowChartNotations() {
  chart_.NotationsShown = !chart_.NotationsShown;
  ++chart_.RepaintRequests;
}

void ChartCommands::mnuDataFileInfo() {
  if (!StatesOf(window_).InfoCommands) return;
  view_.InfoShown = true;
  ++view_.InfoOpenings;
}

void ChartCommands::UnloadMyInfoFile() {
  view_.InfoShown = false;
}

void ChartCommands::mnuChartView() {
  view_.ChartViewShown = true;
}

void ChartCommands::CloseChartViews() {
  view_.ChartViewShown = false;
  window_.views.saved.reset();
  window_.views.full.reset();
}

}  // namespace tarvolt
