// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <functional>

#include "core/chart/chart_view_entry.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QRadioButton;

namespace tarvolt {

/// The view of a chart by numbers: from and to times or a width, and the y range. One for each chart window.
class FormChartView final : public QWidget {
 public:
  /// Shows the view of this window, or of all open ones, by these fields; what is wrong in words, or empty.
  using Apply = std::function<std::string(const ChartViewEntry&)>;

  FormChartView(const ChartWindow& window, Apply apply, Apply applyAll, QWidget* parent);

  void Fill(const ChartViewEntry& entry);

  /// Called when a person closes it.
  void OnClosed(std::function<void()> closed) { closed_ = std::move(closed); }

  /// The fields as they stand.
  ChartViewEntry Entry() const;

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  QWidget* MakeX();
  QWidget* MakeY();
  QWidget* WithDateButton(QComboBox* field, const QString& prompt);
  void EnableFields();
  void ApplyWith(const Apply& apply);

  const ChartWindow& window_;
  std::function<void()> closed_;
  QRadioButton* optTimes_;
  QRadioButton* optWidth_;
  QComboBox* from_;
  QComboBox* to_;
  QLineEdit* width_;
  QCheckBox* autoY_;
  QCheckBox* specifyY_;
  QLineEdit* yLow_;
  QLineEdit* yHigh_;
  QLabel* problem_;
};

}  // namespace tarvolt
