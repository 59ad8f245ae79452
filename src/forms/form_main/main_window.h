// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLabel>
#include <QMainWindow>
#include <QTimer>
#include <functional>
#include <memory>
#include <vector>

#include "core/form_main.h"
#include "forms/chart/chart_side_windows.h"
#include "forms/chart/chart_status_bar.h"
#include "forms/chart/chart_tool_bar.h"
#include "forms/chart/menu_items.h"
#include "forms/form_main/desktop_person.h"
#include "forms/form_main/offset_frame.h"
#include "forms/logs/form_session_log.h"
#include "forms/observer_log/form_observer_log.h"
#include "forms/plot/strip_chart_plot.h"
#include "forms/review/form_review.h"
#include "forms/sound/sound_windows.h"
#include "forms/triggers/form_trigger_monitor.h"

class QPushButton;

namespace tarvolt {

/// The main window: shows what the recorder's window state says and passes commands on. Thirty times a second at most
/// it copies what has changed; recording never waits for it.
class MainWindow final : public QMainWindow {
 public:
  /// All outlive it. `person` sits at this window until it goes.
  MainWindow(Session& session, FormMain& form, DesktopPerson& person);

  /// What is unsaved in the observer log is saved without a question.
  /// Keeps its place on the screen for the next start.
  ~MainWindow() override;

  /// Copies the state to the widgets; draws when the chart has asked for it.
  void Refresh();

  // What the person at the window is asked or shown (main_dialogs.cpp).
  void ShowSoundFormats() { sound_.ShowFormats(); }
  bool EditEquations(const EquationsRequest& request, EquationSet& set);
  bool DrawChart(const std::filesystem::path& file, bool fullView, std::string& problem);
  void OpenObserverLog();
  bool ObserverLogMayEnd();

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
  void MakeChannelsMenu();
  void MakeOptionsMenu();
  void MakePriorityMenu(QMenu& options);
  void MakeToolsMenu();
  void MakeLogsMenu();
  void MakeHelpMenu();
  QAction* Add(QMenu& menu, const char* name, const QString& caption, const QKeySequence& key, Command command,
               Test enabled = {}, Test checked = {});
  void FillProfiles(QMenu& menu);

  void MakeToolBar();
  void AddButton(const char* name, const QString& caption, const QString& tip, Command command, Test enabled);
  void NewReview();
  std::string ApplyViewToAll(const ChartViewEntry& entry);

  // Dialogs and further windows (main_dialogs.cpp).
  void TakeLookEverywhere();
  void ShowTickGrid();
  void ShowColors();
  void ShowFonts();
  void ShowHelp();
  void RestoreGeometry();
  void StoreGeometry();
  bool HasSamples() const { return window_.chart.Count() > 0; }

  Session& session_;
  FormMain& form_;
  DesktopPerson& person_;
  const ChartWindow& window_;
  StripChartPlot* plot_;
  ChartToolBar* tools_;
  QToolBar* main_;
  ChartStatusBar* status_;
  QLabel* value_;
  OffsetFrame* offsets_;
  FormSessionLog* log_;
  FormTriggerMonitor* monitor_;
  SoundWindows sound_;
  QPushButton* start_;
  QPointer<FormObserverLog> olog_;
  QAction* startMenu_;
  MenuItems items_;
  std::vector<QPointer<FormReview>> reviews_;
  ChartSideWindows side_;
  QTimer refresh_;
};

}  // namespace tarvolt
