#pragma once

#include <QLabel>
#include <QMainWindow>
#include <QTimer>
#include <functional>
#include <memory>
#include <vector>

#include "core/form_main.h"
#include "forms/chart/chart_status_bar.h"
#include "forms/chart/chart_tool_bar.h"
#include "forms/chart/menu_items.h"
#include "forms/file_info/info_view.h"
#include "forms/form_main/offset_frame.h"
#include "forms/logs/form_session_log.h"
#include "forms/plot/strip_chart_plot.h"
#include "forms/review/form_review.h"

namespace tarvolt {

/// The main window: shows what the recorder's window state says and passes commands on. Thirty times a second at most
/// it copies what has changed; recording never waits for it.
class MainWindow final : public QMainWindow {
 public:
  /// Both outlive it.
  MainWindow(Session& session, FormMain& form);

  /// Copies the state to the widgets; draws when the chart has asked for it.
  void Refresh();

  /// The menus' and buttons' commands. They run outside of the click that asked for them, so that one which waits
  /// inside does not hold the button down.
  using Command = MenuItems::Command;
  using Test = MenuItems::Test;

 protected:
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  // The menus (main_menus.cpp).
  void MakeMenus();
  void MakeFileMenu();
  void MakeModeMenu();
  void MakeViewMenu();
  void MakeChannelsMenu();
  void MakeOptionsMenu();
  void MakeLogsMenu();
  void MakeHelpMenu();
  QAction* Add(QMenu& menu, const char* name, const QString& caption, const QKeySequence& key, Command command,
               Test enabled = {}, Test checked = {});
  void FillProfiles(QMenu& menu);

  void MakeToolBar();
  void NewReview();
  void ShowHelp();
  void RestoreGeometry();
  void StoreGeometry();
  bool HasSamples() const { return window_.chart.Count() > 0; }

  Session& session_;
  FormMain& form_;
  const ChartWindow& window_;
  StripChartPlot* plot_;
  ChartToolBar* tools_;
  QToolBar* main_;
  ChartStatusBar* status_;
  QLabel* value_;
  OffsetFrame* offsets_;
  FormSessionLog* log_;
  QAction* start_;
  QAction* startMenu_;
  MenuItems items_;
  InfoView info_;
  std::vector<QPointer<FormReview>> reviews_;
  QTimer refresh_;
};

}  // namespace tarvolt
