#include "core/chart/chart_commands.h"

#include <algorithm>
#include <cmath>

#include "text/number.h"
#include "timebase/time_stamp.h"

namespace tarvolt {
namespace {

constexpr const char* kDragStatus = "Drag Mode - Plot Button Resumes";

}  // namespace

ChartRange RangeOfView(const ChartViewRequest& request, const StripChart& chart) {
  const MinMax& times = chart.Samples().TimeSpan();
  ChartRange range = RangeOf(chart);
  range.xMin = request.start.value_or(std::floor(times.lowest));
  range.xMax = request.end.value_or(times.highest);
  return range;
}

void ShowChartLegend(ChartWindow& window) {
  for (int channel = 0; channel < kChannels; ++channel) {
    const std::string& label = window.chart.ChannelName[channel];
    window.view.Legend[channel] = label.empty() ? "CH" + NumberText(std::int64_t{channel + 1}) : label;
  }
  window.view.mnuChannelVisibility = window.chart.ChannelCount() > 1;
  ++window.chart.RepaintRequests;
}

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
    view_.Status.Say(kDragStatus);
    CheckScrollEnabled();
  }
}

void ChartCommands::IncX() {
  tarvolt::IncX(chart_, session_.settings.chart.ClickInc);
  EndManualScroll();
}

void ChartCommands::DecX() {
  tarvolt::DecX(chart_, session_.settings.chart.ClickInc);
  EndManualScroll();
}

void ChartCommands::IncY() {
  chart_.AutoScale = false;
  tarvolt::IncY(chart_, session_.settings.chart.ClickInc);
  EndManualScroll();
}

void ChartCommands::DecY() {
  chart_.AutoScale = false;
  tarvolt::DecY(chart_, session_.settings.chart.ClickInc);
  EndManualScroll();
}

void ChartCommands::ScrollLeft() {
  session_.settings.chart.ArrowsReverse ? tarvolt::ScrollRight(chart_) : tarvolt::ScrollLeft(chart_);
  EndManualScroll();
}

void ChartCommands::ScrollRight() {
  session_.settings.chart.ArrowsReverse ? tarvolt::ScrollLeft(chart_) : tarvolt::ScrollRight(chart_);
  EndManualScroll();
}

void ChartCommands::ScrollUp() {
  chart_.AutoScale = false;
  session_.settings.chart.ArrowsReverse ? tarvolt::ScrollDown(chart_) : tarvolt::ScrollUp(chart_);
  EndManualScroll();
}

void ChartCommands::ScrollDown() {
  chart_.AutoScale = false;
  session_.settings.chart.ArrowsReverse ? tarvolt::ScrollUp(chart_) : tarvolt::ScrollDown(chart_);
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
      const double width = std::max(session_.settings.timing.ChartWidth, 1.0) / kSecondsPerDay;
      chart_.XAxisMax = std::max(chart_.GetTime(chart_.Count() - 1), chart_.GetTime(0) + width);
      chart_.XAxisMin = chart_.XAxisMax - width;
    }
    if (view_.Status.Text() == kDragStatus || view_.Status.Text().starts_with("Press Plot")) view_.Status.Clear();
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
    view_.Status.Say("Not enough data loaded for Manual Chart View entry.");
    return false;
  }
  ChartRange range = RangeOfView(request, chart_);
  if (!(range.xMin < range.xMax)) {
    view_.Status.Say("The chart view must end after it starts.");
    return false;
  }
  if (!RunOn() && request.yLow && request.yHigh) {
    if (!(*request.yLow <= *request.yHigh)) {
      view_.Status.Say("The top of the chart view must be above its bottom.");
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
  SetRange(chart_, {chart_.XAxisMin, chart_.XAxisMax, 0, session_.settings.chart.ChartYaxisMax});
  CheckScrollEnabled();
}

void ChartCommands::mnuSetYminToZero() {
  chart_.AutoScale = false;
  SetRange(chart_, {chart_.XAxisMin, chart_.XAxisMax, 0, chart_.YAxisMax});
  CheckScrollEnabled();
}

}  // namespace tarvolt
