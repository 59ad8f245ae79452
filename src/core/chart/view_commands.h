// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>

#include "model/chart_window.h"
#include "model/session.h"

namespace tarvolt {

/// Arguments of SetChartView. Nothing for `start` means the whole days from the first sample's midnight on, nothing
/// for `end` the last sample.
struct ChartViewRequest {
  std::optional<TimeStamp> start;
  std::optional<TimeStamp> end;
  std::optional<double> yLow;
  std::optional<double> yHigh;
};

/// The range of the chart with the x range that is asked for; a side that is not asked for is that of the data, the
/// left one at the begin of its day.
ChartRange RangeOfView(const ChartViewRequest& request, const StripChart& chart);

/// What a person does with the stretch of a chart that is in view. Looking back never stops a run: the chart only
/// ceases to follow it until cmdAutoScrollEnable.
class ViewCommands {
 public:
  /// Both outlive it.
  ViewCommands(Session& session, ChartWindow& window);

  // Steps; each counts as a manual scroll.
  void IncX();
  void DecX();
  void IncY();
  void DecY();
  void ScrollLeft();
  void ScrollRight();
  void ScrollUp();
  void ScrollDown();

  /// The mouse: a new range, or the range moved by so many days and units.
  void ZoomTo(const ChartRange& range);
  void Pan(double days, double units);

  /// Toggles AutoScroll. Switched on during a run the chart follows the newest sample over ChartWidth again.
  void cmdAutoScrollEnable();
  /// Toggles AutoScale.
  void cmdAutoScale();
  /// Puts the y range to the data and keeps it there.
  void AutoScaleOn();

  /// All samples and the extremes of the channels; the range before it is kept.
  void cmdFullView();
  /// Back to the range before the last cmdFullView.
  void RestoreFullView();

  /// False, and reported in the status line, with fewer than five samples or a range that is none.
  bool SetChartView(const ChartViewRequest& request);
  void SaveChartViewParams();
  void RestoreChartViewParams();

  void mnuRememberXY();
  /// At the end of a run: the top of the y axis goes into the remembered range, all of it when there is none.
  void RememberYMax();
  void mnuRecallXY();
  void mnuRestoreXYtoDefaults();
  void mnuSetYminToZero();

  /// Opens the window of the view by numbers; HideChartView is its closing by a person.
  void mnuChartView();
  void HideChartView();
  /// Another chart comes: closes that window and forgets the ranges to come back to.
  void CloseChartViews();

 private:
  void EndManualScroll();
  bool RunOn() const { return window_.run.ChartRunning(); }

  Session& session_;
  ChartWindow& window_;
  StripChart& chart_;
  WindowState& view_;
};

}  // namespace tarvolt
