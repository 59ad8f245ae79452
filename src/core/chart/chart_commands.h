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

/// Names the channels in the window's legend, by their labels or their numbers.
void ShowChartLegend(ChartWindow& window);

/// What a person does with the chart of a window, the main one or a review window. Looking back never stops a run: the
/// chart only ceases to follow it until cmdAutoScrollEnable.
class ChartCommands {
 public:
  /// Both outlive it.
  ChartCommands(Session& session, ChartWindow& window);

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
  void CheckScrollEnabled();

  /// All samples and the extremes of the channels; the range before it is kept.
  void cmdFullView();
  /// All samples; the y range stays.
  void DoFullView();
  /// Back to the range before the last cmdFullView.
  void RestoreFullView();
  void SaveFullViewParams();

  /// False, and told in the status line, with fewer than five samples or a range that is none.
  bool SetChartView(const ChartViewRequest& request);
  void SaveChartViewParams();
  void RestoreChartViewParams();

  void mnuRememberXY();
  /// At the end of a run: the top of the y axis goes into the remembered range, all of it when there is none.
  void RememberYMax();
  void mnuRecallXY();
  void mnuRestoreXYtoDefaults();
  void mnuSetYminToZero();

  /// The cursor and zoom tools, on and off. Browsing or tracking comes back when one is left.
  void cmdCursor();
  void cmdZoom();

  /// Puts the cursor to the sample nearest in time to `x`, on the visible channel nearest to `y`, and tells it in the
  /// status line. Does nothing without samples or when the cursor is not on.
  void MoveCursor(double x, double y);
  void mnuSetTimeMarker();
  void mnuRemoveTimeMarker();
  void mnuTimeMilliseconds();

  /// Channels are counted from 0.
  void mnuVisCH(int channel);
  void mnuShowAllChannels();
  void ShowChartLegend() { tarvolt::ShowChartLegend(window_); }
  void mnuShowLegend();
  void mnuShowChartNotations();

  /// Opens the view of the file information where there is one; UnloadMyInfoFile takes it away with the chart it tells
  /// of. The window's state says so, and the form follows.
  void mnuDataFileInfo();
  void UnloadMyInfoFile();

  /// Opens the window of the view by numbers. CloseChartViews closes it and forgets the range kept by
  /// SaveChartViewParams: both are of an earlier chart.
  void mnuChartView();
  void CloseChartViews();

  /// Shows the value of a channel in LBLCHVAL; the same channel again, or one outside the chart, shows none.
  void mnuCH(int channel);
  void ClearValueDisplay();

  /// Shift with F3, F4 and F5.
  void ToggleStatusLine();
  void ShowAddress();
  void ShowLastMessage();

  /// Takes the look and the settings of the display over. With a run going nothing of its data or its channels changes.
  void UpdateAfterOptionsChange();

  /// Colours, ticks, fonts and line styles as they are stored now.
  void TakeLook();

  /// Shows or hides the scroll and step buttons by ArrowButtons.
  void ShowArrows();
  /// The buttons are drawn as active while the chart does not follow its run.
  void CheckArrowColors();

 private:
  void EndManualScroll();
  void LeaveTool();
  void PrepareEmptyChart();
  void TakeScale();
  bool RunOn() const { return window_.run.ChartRunning(); }
  std::string CursorText(std::int32_t index) const;
  int NearestChannel(std::int32_t index, double y) const;

  Session& session_;
  ChartWindow& window_;
  StripChart& chart_;
  WindowState& view_;
  bool takenAutoScale_ = true;  // as the chart has the settings of its scale
  double takenYaxisMax_ = 0;
};

}  // namespace tarvolt
