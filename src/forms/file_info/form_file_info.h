#pragma once

#include <QWidget>

#include "model/chart_window.h"

class QPlainTextEdit;
class QTableWidget;

namespace tarvolt {

/// What a data file, or the chart on display, tells of itself: header, notes, metadata and notations.
class FormFileInfo final : public QWidget {
 public:
  FormFileInfo(const ChartWindow& window, QWidget* parent);

  /// Shows the window's chart as it is now.
  void Fill(const ChartWindow& window);

 private:
  QTableWidget* header_;
  QPlainTextEdit* notes_;
  QTableWidget* metadata_;
  QTableWidget* notations_;
};

}  // namespace tarvolt
