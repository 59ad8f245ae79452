// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "model/chart_window.h"
#include "model/session.h"

namespace tarvolt {

/// Names the channels in the window's legend, by their labels or their numbers.
void ShowChartLegend(ChartWindow& window);

/// What a window shows beside the samples themselves: which channels, legend, notations, file information, the value
/// display, the status line, colours and fonts.
class LookCommands {
 public:
  /// Both outlive it.
  LookCommands(Session& session, ChartWindow& window);

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

  /// Shows the value of a channel in LBLCHVAL; the same channel again, or one outside the chart, shows none.
  void mnuCH(int channel);
  void ClearValueDisplay();

  /// Shift with F3, F4 and F5.
  void ToggleStatusLine();
  void ShowAddress();
  void ShowLastMessage();
  /// Shows a text in the status line for as long as such messages stand.
  void ShowStatus(const std::string& text) { view_.Status.Hold(text); }

  /// Takes the look and the settings of the display over. With a run going nothing of its data or its channels changes.
  void UpdateAfterOptionsChange();

  /// Colours, ticks, fonts and line styles as they are stored now.
  void TakeLook();

  /// Shows or hides the scroll and step buttons by ArrowButtons.
  void ShowArrows();

 private:
  void PrepareEmptyChart();
  void TakeScale();
  bool RunOn() const { return window_.run.ChartRunning(); }

  Session& session_;
  ChartWindow& window_;
  StripChart& chart_;
  WindowState& view_;
  bool takenAutoScale_ = true;  // as the chart has the settings of its scale
  double takenYaxisMax_ = 0;
};

}  // namespace tarvolt
