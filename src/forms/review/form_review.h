// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMainWindow>

#include "core/chart/review_window.h"
#include "forms/chart/chart_side_windows.h"
#include "forms/chart/chart_status_bar.h"
#include "forms/chart/chart_tool_bar.h"
#include "forms/chart/menu_items.h"
#include "forms/plot/strip_chart_plot.h"

namespace tarvolt {

/// The person in front of a review window.
class ReviewPerson final : public Person {
 public:
  explicit ReviewPerson(QWidget* window) : window_(window) {}
  bool ChooseLoadOptions(Session& session, LoadOptions& options) override;
  std::optional<ChannelAnswer> ChooseChannels(const ChannelQuestion& question) override;

 private:
  QWidget* window_;
};

/// The window of one review chart. A file dropped on it is loaded.
class FormReview final : public QMainWindow {
 public:
  /// `applyAll` shows a view by numbers in all open chart windows.
  FormReview(Session& session, int number, FormChartView::Apply applyAll);

  FrmReview& Review() { return review_; }
  void Refresh();

 protected:
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void MakeFileMenu();

  Session& session_;
  ReviewPerson person_;
  FrmReview review_;
  StripChartPlot* plot_;
  ChartToolBar* tools_;
  ChartStatusBar* status_;
  MenuItems items_;
  ChartSideWindows side_;
};

}  // namespace tarvolt
