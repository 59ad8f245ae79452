// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QGridLayout>
#include <QPushButton>
#include <array>

#include "forms/options/option_page.h"

namespace tarvolt {

/// The page Data Source: a row for each channel.
class SourcePage final : public QWidget {
 public:
  /// `fields` outlives it.
  SourcePage(OptionFields& fields, QWidget* parent);

  /// Hints of the rows, and which of them count, for the settings as they would be.
  void SetDsrcToolTip(const Settings& draft);

 private:
  struct Row {
    QComboBox* source;
    QComboBox* channel;
    QComboBox* detection;
    std::vector<QWidget*> rest;
  };

  void AddHeadings();
  void AddRow(int row);
  void AddSource(int row);
  QComboBox* AddList(int row, int column, const char* key, const std::vector<OptionPage::Item>& items);
  QLineEdit* AddLine(int row, int column, const QString& key, int width);
  void AddPen(int row, int column);

  OptionFields& fields_;
  QGridLayout* grid_;
  std::array<Row, kChannels> rows_{};
};

}  // namespace tarvolt
