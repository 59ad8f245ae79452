// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/chart/view_commands.h"

#include <algorithm>
#include <cmath>

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

ViewCommands::ViewCommands(Session& session, ChartWindow& window)
    : session_(session), window_(window), chart_(window.chart), view_(window.view) {}

// Auto-scroll goes off as well, so that one click brings the newest sample back.
void ViewCommands::EndManualScroll() {
  if (RunOn()) {
    chart_.Mode = ChartMode::Browsing;
    chart_.AutoScroll = false;
  }
  ++chart_.RepaintRequests;
  view_.LeftStatus.clear();
  if (RunOn() || !chart_.AutoScroll) view_.Status.Say(kDragStatus);
}

void ViewCommands::IncX() {
  tarvolt::IncX(chart_, session_.settings.chart.ClickInc);
  EndManualScroll();
}

void ViewCommands::DecX() {
  tarvolt::DecX(chart_, session_.settings.chart.ClickInc);
  EndManualScroll();
}

void ViewCommands::IncY() {
  chart_.AutoScale = false;
  tarvolt::IncY(chart_, session_.settings.chart.ClickInc);
  EndManualScroll();
}

void ViewCommands::DecY() {
  chart_.AutoScale = false;
  tarvolt::DecY(chart_, session_.settings.chart.ClickInc);
  EndManualScroll();
}

void ViewCommands::ScrollLeft() {
  session_.settings.chart.ArrowsReverse ? tarvolt::ScrollRight(chart_) : tarvolt::ScrollLeft(chart_);
  EndManualScroll();
}

void ViewCommands::ScrollRight() {
  session_.settings.chart.ArrowsReverse ? tarvolt::ScrollLeft(chart_) : tarvolt::ScrollRight(chart_);
  EndManualScroll();
}

void ViewCommands::ScrollUp() {
  chart_.AutoScale = false;
  session_.settings.chart.ArrowsReverse ? tarvolt::ScrollDown(chart_) : tarvolt::ScrollUp(chart_);
  EndManualScroll();
}

void ViewCommands::ScrollDown() {
  chart_.AutoScale = false;
  session_.settings.chart.ArrowsReverse ? tarvolt::ScrollUp(chart_) : tarvolt::ScrollDown(chart_);
  EndManualScroll();
}

void ViewCommands::ZoomTo(const ChartRange& range) {
  if (range.yMin != chart_.YAxisMin || range.yMax != chart_.YAxisMax) chart_.AutoScale = false;
  SetRange(chart_, range);
  EndManualScroll();
}

void ViewCommands::Pan(double days, double units) {
  ChartRange range = RangeOf(chart_);
  range.xMin += days;
  range.xMax += days;
  range.yMin += units;
  range.yMax += units;
  ZoomTo(range);
}

void ViewCommands::cmdAutoScrollEnable() {
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
  ++chart_.RepaintRequests;
}

void ViewCommands::cmdAutoScale() {
  if (!chart_.AutoScale) return AutoScaleOn();
  chart_.AutoScale = false;
  ++chart_.RepaintRequests;
}

void ViewCommands::AutoScaleOn() {
  chart_.AutoScale = true;
  FitY(chart_, window_.run.ChannelCount);
  ++chart_.RepaintRequests;
}

void ViewCommands::RestoreFullView() {
  if (!window_.views.full) return;
  SetRange(chart_, *window_.views.full);
  EndManualScroll();
}

void ViewCommands::cmdFullView() {
  if (chart_.Count() < 1) return;
  window_.views.full = RangeOf(chart_);
  FitY(chart_, window_.run.ChannelCount);
  FitX(chart_);
  window_.views.fvMinX = chart_.XAxisMin;
  window_.views.fvMaxX = chart_.XAxisMax;
  if (RunOn()) EndManualScroll();
}

bool ViewCommands::SetChartView(const ChartViewRequest& request) {
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
  return true;
}

void ViewCommands::SaveChartViewParams() {
  window_.views.saved = RangeOf(chart_);
}

void ViewCommands::RestoreChartViewParams() {
  if (window_.views.saved) ZoomTo(*window_.views.saved);
}

void ViewCommands::mnuRememberXY() {
  window_.views.remembered = RangeOf(chart_);
  view_.mnuRecallXY = true;
}

void ViewCommands::RememberYMax() {
  if (!window_.views.remembered) return mnuRememberXY();
  window_.views.remembered->yMax = chart_.YAxisMax;
  view_.mnuRecallXY = true;
}

void ViewCommands::mnuRecallXY() {
  if (window_.views.remembered) ZoomTo(*window_.views.remembered);
}

void ViewCommands::mnuRestoreXYtoDefaults() {
  chart_.AutoScale = false;
  SetRange(chart_, {chart_.XAxisMin, chart_.XAxisMax, 0, session_.settings.chart.ChartYaxisMax});
}

void ViewCommands::mnuSetYminToZero() {
  chart_.AutoScale = false;
  SetRange(chart_, {chart_.XAxisMin, chart_.XAxisMax, 0, chart_.YAxisMax});
}

void ViewCommands::mnuChartView() {
  view_.ChartViewShown = true;
}

void ViewCommands::HideChartView() {
  view_.ChartViewShown = false;
}

void ViewCommands::CloseChartViews() {
  HideChartView();
  window_.views.saved.reset();
  window_.views.full.reset();
}

}  // namespace tarvolt
