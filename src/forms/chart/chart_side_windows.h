// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

#include "core/chart/chart_commands.h"
#include "forms/chart_view/form_chart_view.h"
#include "forms/file_info/form_file_info.h"
#include "model/session.h"

namespace tarvolt {

/// The windows beside a chart window: its view by numbers and its file's information. They come and go as the window's
/// state says.
class ChartSideWindows {
 public:
  /// All outlive it; `owner` is the chart window, `applyAll` shows a view in all open chart windows.
  ChartSideWindows(const Session& session, const ChartWindow& window, ChartCommands& commands,
                   FormChartView::Apply applyAll, QWidget* owner);

  void Refresh();

 private:
  void ShowChartView(bool shown);
  void ShowInfo(bool shown);

  const Session& session_;
  const ChartWindow& window_;
  ChartCommands& commands_;
  FormChartView::Apply applyAll_;
  QWidget* owner_;
  FormChartView* chartView_ = nullptr;  // both are the owner's children
  FormFileInfo* info_ = nullptr;
  bool chartViewShown_ = false;
  bool infoShown_ = false;
  int infoOpenings_ = 0;
};

}  // namespace tarvolt
