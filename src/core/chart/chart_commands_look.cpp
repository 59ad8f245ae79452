// The tools on a chart, its channels and its look. What moves its view is in chart_commands.cpp.

#include <algorithm>
#include <cmath>

#include "config/settings_table.h"
#include "core/chart/chart_commands.h"
#include "core/chart/chart_look_store.h"
#include "files/auto_title.h"
#include "model/channel_table.h"
#include "text/number.h"
#include "timebase/time_text.h"

namespace tarvolt {
namespace {

// A span of time, with its whole days in front when there are any.
std::string SpanText(double days) {
  const double whole = std::floor(days);
  const std::string text = FormatElapsedHMS(days - whole);
  return whole < 1 ? text : NumberText(whole) + " days " + text;
}

}  // namespace

// A chart that follows its run goes on following it.
void ChartCommands::LeaveTool() {
  chart_.Mode = RunOn() && chart_.AutoScroll ? ChartMode::Tracking : ChartMode::Browsing;
  chart_.CursorChannel = -1;
  CheckArrowColors();
  ++chart_.RepaintRequests;
}

void ChartCommands::cmdCursor() {
  if (chart_.Mode == ChartMode::Cursor) return LeaveTool();
  chart_.Mode = ChartMode::Cursor;
  CheckArrowColors();
  ++chart_.RepaintRequests;
}

void ChartCommands::cmdZoom() {
  if (chart_.Mode == ChartMode::Zoom) return LeaveTool();
  chart_.Mode = ChartMode::Zoom;
  chart_.CursorChannel = -1;
  CheckArrowColors();
  ++chart_.RepaintRequests;
}

int ChartCommands::NearestChannel(std::int32_t index, double y) const {
  int nearest = -1;
  double least = 0;
  for (int channel = 0; channel < std::min(chart_.ChannelCount(), kChannels); ++channel) {
    if (!chart_.ChannelVisible[channel]) continue;
    const double distance = std::abs(chart_.GetValue(channel, index) - y);
    if (nearest >= 0 && !(distance < least)) continue;
    nearest = channel;
    least = distance;
  }
  return nearest;
}

void ChartCommands::MoveCursor(double x, double y) {
  if (chart_.Mode != ChartMode::Cursor) return;
  const std::int32_t index = NearestIndex(chart_, x);
  if (index < 0) return;
  chart_.CursorChannel = NearestChannel(index, y);
  if (chart_.CursorChannel < 0) return;
  chart_.CursorX = chart_.GetTime(index);
  chart_.CursorY = chart_.GetValue(chart_.CursorChannel, index);
  view_.Status.Say(CursorText(index));
  ++chart_.RepaintRequests;
}

std::string ChartCommands::CursorText(std::int32_t index) const {
  const std::string picture = AxisPicture(window_.look.DisplayMilliseconds, window_.run.ChartIsLMST);
  std::string text =
      "CH" + NumberText(std::int64_t{chart_.CursorChannel + 1}) + "   " + FormatDate(chart_.CursorX, picture) +
      "    Y : " + FormatNumber(chart_.CursorY, "############.000") + "    Sample: " + NumberText(std::int64_t{index});
  if (chart_.TimeMarker) {
    const double days = chart_.CursorX - *chart_.TimeMarker;
    text += std::string("    From Time Marker: ") + (days < 0 ? "-" : "") + SpanText(std::abs(days));
  }
  return text;
}

void ChartCommands::mnuSetTimeMarker() {
  if (chart_.CursorChannel < 0) return;
  chart_.TimeMarker = chart_.CursorX;
  ++chart_.RepaintRequests;
}

void ChartCommands::mnuRemoveTimeMarker() {
  chart_.TimeMarker.reset();
  ++chart_.RepaintRequests;
}

void ChartCommands::mnuTimeMilliseconds() {
  session_.settings.chart.DisplayMilliseconds = !session_.settings.chart.DisplayMilliseconds;
  session_.store.SaveSetting(Section::Settings, "DisplayMilliseconds",
                             session_.settings.chart.DisplayMilliseconds ? "True" : "False");
  window_.look.DisplayMilliseconds = session_.settings.chart.DisplayMilliseconds;
  ++chart_.RepaintRequests;
}

void ChartCommands::mnuVisCH(int channel) {
  if (channel < 0 || channel >= chart_.ChannelCount()) return;
  chart_.ChannelVisible[channel] = !chart_.ChannelVisible[channel];
  if (!chart_.ChannelVisible[channel] && window_.run.ShownChannel == channel + 1) ClearValueDisplay();
  ++chart_.RepaintRequests;
}

void ChartCommands::mnuShowAllChannels() {
  chart_.ChannelVisible.fill(true);
  ++chart_.RepaintRequests;
}

void ChartCommands::mnuShowLegend() {
  chart_.LegendShown = !chart_.LegendShown;
  ++chart_.RepaintRequests;
}

void ChartCommands::mnuCH(int channel) {
  if (channel < 0 || channel >= window_.run.ChannelCount || window_.run.ShownChannel == channel + 1) {
    return ClearValueDisplay();
  }
  window_.run.ShownChannel = channel + 1;
}

void ChartCommands::ClearValueDisplay() {
  window_.run.ShownChannel = 0;
  view_.ValueLabel.clear();
}

void ChartCommands::ToggleStatusLine() {
  session_.settings.chart.ShowStatusBar = !session_.settings.chart.ShowStatusBar;
  session_.store.SaveSetting(Section::Settings, "ShowStatusBar",
                             session_.settings.chart.ShowStatusBar ? "True" : "False");
  view_.StatusBarShown = session_.settings.chart.ShowStatusBar;
}

void ChartCommands::ShowAddress() {
  view_.Status.Say("IP = " + session_.host.sockets.LocalAddress());
}

void ChartCommands::ShowLastMessage() {
  const std::string& message = window_.run.LastMessage;
  view_.Status.Say(message.empty() ? "No Message Received " : "Last Msg: " + message);
}

void ChartCommands::UpdateAfterOptionsChange() {
  const Settings& settings = session_.settings;
  const bool loaded = window_.save.keeping.LoadedFromFile || window_.save.Loading;
  TakeLook();
  if (!loaded) {
    chart_.XAxisLabel = settings.chart.XALabel;
    chart_.YAxisLabel = settings.chart.YALabel;
  }
  if (!loaded && !RunOn() && !window_.run.Starting() && chart_.Count() == 0) PrepareEmptyChart();
  TakeScale();
  if (settings.chart.AutoTitle) chart_.Title.clear();
  if (RunOn() || chart_.Count() > 0) DoAutoTitle(session_, window_);
  ShowChartLegend();
  ShowArrows();
  CheckScrollEnabled();
}

void ChartCommands::PrepareEmptyChart() {
  const Settings& settings = session_.settings;
  window_.run.ChannelCount = std::max(ActiveChannels(settings), 1);
  for (int channel = 0; channel < kChannels; ++channel)
    chart_.ChannelName[channel] = settings.channels.ChannelLabel[channel];
  chart_.SetChannelCount(window_.run.ChannelCount);
  chart_.Mode = ChartMode::Browsing;
  chart_.AutoScale = settings.chart.AutoScale;
  SetRange(chart_, {chart_.XAxisMin, chart_.XAxisMax, 0, settings.chart.AutoScale ? 1 : settings.chart.ChartYaxisMax});
}

// A range that a person has chosen stays while the settings of the scale do.
void ChartCommands::TakeScale() {
  const Settings& settings = session_.settings;
  const bool changed = settings.chart.AutoScale != takenAutoScale_ || settings.chart.ChartYaxisMax != takenYaxisMax_;
  takenAutoScale_ = settings.chart.AutoScale;
  takenYaxisMax_ = settings.chart.ChartYaxisMax;
  if (!changed || chart_.Count() == 0) return;
  chart_.AutoScale = settings.chart.AutoScale;
  if (chart_.AutoScale) return FitY(chart_, window_.run.ChannelCount);
  SetRange(chart_, {chart_.XAxisMin, chart_.XAxisMax, 0, settings.chart.ChartYaxisMax});
}

void ChartCommands::TakeLook() {
  window_.look = LoadChartLook(session_);
  view_.StatusBarShown = session_.settings.chart.ShowStatusBar;
  ++chart_.RepaintRequests;
}

void ChartCommands::ShowArrows() {
  view_.ArrowsShown = session_.settings.chart.ArrowButtons;
  CheckArrowColors();
}

void ChartCommands::CheckArrowColors() {
  view_.ArrowsActive = !RunOn() || chart_.Mode != ChartMode::Tracking;
}

}  // namespace tarvolt
