// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QToolBar>
#include <functional>
#include <vector>

#include "core/chart/chart_commands.h"

class QAction;

namespace tarvolt {

/// The buttons that work on a chart, for the main window and the review windows: view, tools, scrolling and steps.
/// Those that step repeat while they are held.
class ChartToolBar final : public QToolBar {
 public:
  /// `window` and `commands` outlive it.
  ChartToolBar(const ChartWindow& window, ChartCommands& commands, QWidget* parent);

  /// Shows the state of the window.
  void Refresh();

 private:
  QAction* Add(const char* name, const QString& caption, const QString& tip, std::function<void()> act);
  QAction* AddStep(const char* name, const QString& caption, const QString& tip, std::function<void()> act);

  void SetColor(QAction* action, bool active);

  const ChartWindow& window_;
  ChartCommands& commands_;
  QAction* fullView_;
  QAction* autoScroll_;
  QAction* autoScale_;
  QAction* cursor_;
  QAction* zoom_;
  std::vector<QAction*> arrows_;
};

}  // namespace tarvolt
