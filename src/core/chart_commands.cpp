#include "core/chart_commands.h"

#include <algorithm>
#include <cmath>

#include "config/settings_table.h"
#include "core/chart_look_store.h"
#include "files/auto_title.h"
#include "model/channel_table.h"
#include "text/number.h"
#include "timebase/time_stamp.h"
#include "timebase/time_text.h"

namespace tarvolt {
namespace {

constexpr const char* kDragStatus = "Drag Mode - Plot Button Resumes";

// A span of time, with its whole days in front when there are any.
std::string SpanText(double days) {
  const double whole = std::floor(days);
  const std::string text = FormatElapsedHMS(days - whole);
  return whole < 1 ? text : NumberText(whole) + " days " + text;
}

}  // namespace

ChartCommands::ChartCommands(Session& session, ChartWindow& window)
    : session_(session), window_(window), chart_(window.chart), view_(window.view) {}

// Auto-scroll goes off as well, so that one click brings the newest sample back.
void ChartCommands::EndManualScroll() {
  if (RunOn()) {
    chart_.Mode = ChartMode::Browsing;
    chart_.AutoScroll = false;
  }
  ++chart_.RepaintRequests;
  view_.LeftStatus.clear();
  if (RunOn() || !chart_.AutoScroll) {
    view_.StatusText = kDragStatus;
    CheckScrollEnabled();
  }
}

void ChartCommands::IncX() {
  tarvolt::IncX(chart_, session_.settings.ClickInc);
  EndManualScroll();
}

void ChartCommands::DecX() {
  tarvolt::DecX(chart_, session_.settings.ClickInc);
  EndManualScroll();
}

void ChartCommands::IncY() {
  chart_.AutoScale = false;
  tarvolt::IncY(chart_, session_.settings.ClickInc);
  EndManualScroll();
}

void ChartCommands::DecY() {
  chart_.AutoScale = false;
  tarvolt::DecY(chart_, session_.settings.ClickInc);
  EndManualScroll();
}

void ChartCommands::ScrollLeft() {
  session_.settings.ArrowsReverse ? tarvolt::ScrollRight(chart_) : tarvolt::ScrollLeft(chart_);
  EndManualScroll();
}

void ChartCommands::ScrollRight() {
  session_.settings.ArrowsReverse ? tarvolt::ScrollLeft(chart_) : tarvolt::ScrollRight(chart_);
  EndManualScroll();
}

void ChartCommands::ScrollUp() {
  chart_.AutoScale = false;
  session_.settings.ArrowsReverse ? tarvolt::ScrollDown(chart_) : tarvolt::ScrollUp(chart_);
  EndManualScroll();
}

void ChartCommands::ScrollDown() {
  chart_.AutoScale = false;
  session_.settings.ArrowsReverse ? tarvolt::ScrollUp(chart_) : tarvolt::ScrollDown(chart_);
  EndManualScroll();
}

void ChartCommands::ZoomTo(const ChartRange& range) {
  if (range.yMin != chart_.YAxisMin || range.yMax != chart_.YAxisMax) chart_.AutoScale = false;
  SetRange(chart_, range);
  EndManualScroll();
}

void ChartCommands::Pan(double days, double units) {
  ChartRange range = RangeOf(chart_);
  range.xMin += days;
  range.xMax += days;
  range.yMin += units;
  range.yMax += units;
  ZoomTo(range);
}

void ChartCommands::cmdAutoScrollEnable() {
  chart_.AutoScroll = !chart_.AutoScroll;
  if (chart_.AutoScroll) {
    chart_.Mode = ChartMode::Tracking;
    if (RunOn() && chart_.Count() > 0) {
      const double width = std::max(session_.settings.ChartWidth, 1.0) / kSecondsPerDay;
      chart_.XAxisMax = std::max(chart_.GetTime(chart_.Count() - 1), chart_.GetTime(0) + width);
      chart_.XAxisMin = chart_.XAxisMax - width;
    }
    if (view_.StatusText == kDragStatus || view_.StatusText.starts_with("Press Plot")) view_.StatusText.clear();
  }
  session_.Add2SLog(chart_.AutoScroll ? "Auto-Scrolling Enabled" : "Auto-Scrolling Disabled");
  CheckScrollEnabled();
  ++chart_.RepaintRequests;
}

void ChartCommands::cmdAutoScale() {
  if (!chart_.AutoScale) return AutoScaleOn();
  chart_.AutoScale = false;
  CheckScrollEnabled();
  ++chart_.RepaintRequests;
}

void ChartCommands::AutoScaleOn() {
  chart_.AutoScale = true;
  FitY(chart_, window_.run.ChannelCount);
  CheckScrollEnabled();
  ++chart_.RepaintRequests;
}

void ChartCommands::CheckScrollEnabled() {
  view_.AutoScrollTip =
      chart_.AutoScroll ? "Auto-Scroll Enabled - Click to Disable" : "Auto-Scroll Disabled - Click to Enable";
  view_.AutoScaleTip =
      chart_.AutoScale ? "Auto-Scale Enabled - Click to Disable" : "Auto-Scale Disabled - Click to Enable";
  CheckArrowColors();
}

void ChartCommands::SaveFullViewParams() {
  window_.views.full = RangeOf(chart_);
}

void ChartCommands::RestoreFullView() {
  if (!window_.views.full) return;
  SetRange(chart_, *window_.views.full);
  EndManualScroll();
}

void ChartCommands::cmdFullView() {
  if (chart_.Count() < 1) return;
  SaveFullViewParams();
  FitY(chart_, window_.run.ChannelCount);
  DoFullView();
  window_.views.fvMinX = chart_.XAxisMin;
  window_.views.fvMaxX = chart_.XAxisMax;
  if (RunOn()) EndManualScroll();
}

void ChartCommands::DoFullView() {
  if (chart_.Count() < 1) return;
  FitX(chart_);
}

bool ChartCommands::SetChartView(const ChartViewRequest& request) {
  if (chart_.Count() < 5) {
    view_.StatusText = "Not enough data loaded for Manual Chart View entry.";
    return false;
  }
  ChartRange range = RangeOf(chart_);
  range.xMin = request.start ? *request.start : std::floor(chart_.GetTime(0));
  range.xMax = request.end ? *request.end : chart_.GetTime(chart_.Count() - 1);
  if (!(range.xMin < range.xMax)) {
    view_.StatusText = "The chart view must end after it starts.";
    return false;
  }
  if (!RunOn() && request.yLow && request.yHigh) {
    if (!(*request.yLow <= *request.yHigh)) {
      view_.StatusText = "The top of the chart view must be above its bottom.";
      return false;
    }
    range.yMin = *request.yLow;
    range.yMax = *request.yHigh;
    chart_.AutoScale = false;
  }
  chart_.Mode = ChartMode::Browsing;
  if (RunOn()) chart_.AutoScroll = false;
  SetRange(chart_, range);
  CheckScrollEnabled();
  return true;
}

void ChartCommands::SaveChartViewParams() {
  window_.views.saved = RangeOf(chart_);
}

void ChartCommands::RestoreChartViewParams() {
  if (window_.views.saved) ZoomTo(*window_.views.saved);
}

void ChartCommands::mnuRememberXY() {
  window_.views.remembered = RangeOf(chart_);
  view_.mnuRecallXY = true;
}

void ChartCommands::RememberYMax() {
  if (!window_.views.remembered) return mnuRememberXY();
  window_.views.remembered->yMax = chart_.YAxisMax;
  view_.mnuRecallXY = true;
}

void ChartCommands::mnuRecallXY() {
  if (window_.views.remembered) ZoomTo(*window_.views.remembered);
}

void ChartCommands::mnuRestoreXYtoDefaults() {
  chart_.AutoScale = false;
  SetRange(chart_, {chart_.XAxisMin, chart_.XAxisMax, 0, session_.settings.ChartYaxisMax});
  CheckScrollEnabled();
}

void ChartCommands::mnuSetYminToZero() {
  chart_.AutoScale = false;
  SetRange(chart_, {chart_.XAxisMin, chart_.XAxisMax, 0, chart_.YAxisMax});
  CheckScrollEnabled();
}

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
  view_.StatusText = CursorText(index);
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
  session_.settings.DisplayMilliseconds = !session_.settings.DisplayMilliseconds;
  session_.store.SaveSetting(Section::Settings, "DisplayMilliseconds",
                             session_.settings.DisplayMilliseconds ? "True" : "False");
  window_.look.DisplayMilliseconds = session_.settings.DisplayMilliseconds;
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

void ChartCommands::ShowChartLegend() {
  for (int channel = 0; channel < kChannels; ++channel) {
    const std::string& label = chart_.ChannelName[channel];
    view_.Legend[channel] = label.empty() ? "CH" + NumberText(std::int64_t{channel + 1}) : label;
  }
  view_.mnuChannelVisibility = chart_.ChannelCount() > 1;
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
  session_.settings.ShowStatusBar = !session_.settings.ShowStatusBar;
  session_.store.SaveSetting(Section::Settings, "ShowStatusBar", session_.settings.ShowStatusBar ? "True" : "False");
  view_.StatusBarShown = session_.settings.ShowStatusBar;
}

void ChartCommands::ShowAddress() {
  view_.StatusText = "IP = " + session_.host.sockets.LocalAddress();
}

void ChartCommands::ShowLastMessage() {
  const std::string& message = window_.run.LastMessage;
  view_.StatusText = message.empty() ? "No Message Received " : "Last Msg: " + message;
}

void ChartCommands::UpdateAfterOptionsChange() {
  const Settings& settings = session_.settings;
  const bool loaded = window_.save.LoadedFromFile || window_.save.Loading;
  TakeLook();
  if (!loaded) {
    chart_.XAxisLabel = settings.XALabel;
    chart_.YAxisLabel = settings.YALabel;
  }
  if (!loaded && !RunOn() && !window_.run.Starting && chart_.Count() == 0) PrepareEmptyChart();
  TakeScale();
  if (settings.AutoTitle) chart_.Title.clear();
  if (RunOn() || chart_.Count() > 0) DoAutoTitle(session_, window_);
  ShowChartLegend();
  ShowArrows();
  CheckScrollEnabled();
}

void ChartCommands::PrepareEmptyChart() {
  const Settings& settings = session_.settings;
  window_.run.ChannelCount = std::max(ActiveChannels(settings), 1);
  for (int channel = 0; channel < kChannels; ++channel) chart_.ChannelName[channel] = settings.ChannelLabel[channel];
  chart_.SetChannelCount(window_.run.ChannelCount);
  chart_.Mode = ChartMode::Browsing;
  chart_.AutoScale = settings.AutoScale;
  SetRange(chart_, {chart_.XAxisMin, chart_.XAxisMax, 0, settings.AutoScale ? 1 : settings.ChartYaxisMax});
}

// A range that a person has chosen stays while the settings of the scale do.
void ChartCommands::TakeScale() {
  const Settings& settings = session_.settings;
  const bool changed = settings.AutoScale != takenAutoScale_ || settings.ChartYaxisMax != takenYaxisMax_;
  takenAutoScale_ = settings.AutoScale;
  takenYaxisMax_ = settings.ChartYaxisMax;
  if (!changed || chart_.Count() == 0) return;
  chart_.AutoScale = settings.AutoScale;
  if (chart_.AutoScale) return FitY(chart_, window_.run.ChannelCount);
  SetRange(chart_, {chart_.XAxisMin, chart_.XAxisMax, 0, settings.ChartYaxisMax});
}

void ChartCommands::TakeLook() {
  window_.look = LoadChartLook(session_);
  view_.StatusBarShown = session_.settings.ShowStatusBar;
  ++chart_.RepaintRequests;
}

void ChartCommands::ShowArrows() {
  view_.ArrowsShown = session_.settings.ArrowButtons;
  CheckArrowColors();
}

void ChartCommands::CheckArrowColors() {
  view_.ArrowsActive = !RunOn() || chart_.Mode != ChartMode::Tracking;
}

}  // namespace tarvolt
