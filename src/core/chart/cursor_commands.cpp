// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/chart/cursor_commands.h"

#include <algorithm>
#include <cmath>

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

CursorCommands::CursorCommands(Session& session, ChartWindow& window)
    : session_(session), window_(window), chart_(window.chart), view_(window.view) {}

// A chart that follows its run goes on following it.
void CursorCommands::LeaveTool() {
  chart_.Mode = window_.run.ChartRunning() && chart_.AutoScroll ? ChartMode::Tracking : ChartMode::Browsing;
  chart_.CursorChannel = -1;
  ++chart_.RepaintRequests;
}

void CursorCommands::cmdCursor() {
  if (chart_.Mode == ChartMode::Cursor) return LeaveTool();
  chart_.Mode = ChartMode::Cursor;
  ++chart_.RepaintRequests;
}

void CursorCommands::cmdZoom() {
  if (chart_.Mode == ChartMode::Zoom) return LeaveTool();
  chart_.Mode = ChartMode::Zoom;
  chart_.CursorChannel = -1;
  ++chart_.RepaintRequests;
}

int CursorCommands::NearestChannel(std::int32_t index, double y) const {
  int nearest = -1;
  double least = 0;
  for (int channel = 0; channel < std::min(chart_.ChannelCount(), kChannels); ++channel) {
    if (!chart_.ChannelVisible[channel]) continue;
    const double distance = std::abs(chart_.GetValue(channel, index) - y);
    if (std::isnan(distance) || (nearest >= 0 && !(distance < least))) continue;
    nearest = channel;
    least = distance;
  }
  return nearest;
}

void CursorCommands::MoveCursor(double x, double y) {
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

std::string CursorCommands::CursorText(std::int32_t index) const {
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

void CursorCommands::mnuSetTimeMarker() {
  if (chart_.CursorChannel < 0) return;
  chart_.TimeMarker = chart_.CursorX;
  ++chart_.RepaintRequests;
}

void CursorCommands::mnuRemoveTimeMarker() {
  chart_.TimeMarker.reset();
  ++chart_.RepaintRequests;
}

void CursorCommands::mnuTimeMilliseconds() {
  session_.settings.chart.DisplayMilliseconds = !window_.look.DisplayMilliseconds;
  session_.store.SaveSetting(Section::Settings, "DisplayMilliseconds",
                             session_.settings.chart.DisplayMilliseconds ? "True" : "False");
  window_.look.DisplayMilliseconds = session_.settings.chart.DisplayMilliseconds;
  ++chart_.RepaintRequests;
}

}  // namespace tarvolt
