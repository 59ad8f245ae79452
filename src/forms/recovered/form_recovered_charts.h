// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <vector>

#include "core/chart/recovered_charts.h"

namespace tarvolt {

/// The charts in the recovery folder, to open, keep or delete one.
class FormRecoveredCharts final : public QDialog {
 public:
  /// `charts` outlives it. Deletes itself when it is closed.
  FormRecoveredCharts(RecoveredCharts& charts, QWidget* parent);

 private:
  using Command = bool (RecoveredCharts::*)(const RecoveredChart& chart);

  QPushButton* Button(const char* name, const QString& caption, Command command);
  void Do(Command command);
  void FillIn();
  void Enable();

  RecoveredCharts& charts_;
  std::vector<RecoveredChart> listed_;
  QLabel* words_;
  QTreeWidget* list_;
  QPushButton* open_;
  QPushButton* keep_;
  QPushButton* delete_;
};

}  // namespace tarvolt
