// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <functional>

#include "model/chart_window.h"
#include "model/session.h"

class QPlainTextEdit;
class QTableWidget;

namespace tarvolt {

/// What a data file, or the chart on display, says of itself: header, notes, metadata and notations.
class FormFileInfo final : public QWidget {
 public:
  explicit FormFileInfo(QWidget* parent);

  /// Shows the window's chart as it is now, longitudes counted as the station counts them.
  void Fill(const Session& session, const ChartWindow& window);

  /// Called when a person closes it.
  void OnClosed(std::function<void()> closed) { closed_ = std::move(closed); }

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  std::function<void()> closed_;
  QTableWidget* header_;
  QPlainTextEdit* notes_;
  QTableWidget* metadata_;
  QTableWidget* notations_;
};

}  // namespace tarvolt
