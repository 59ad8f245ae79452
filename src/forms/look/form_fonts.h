// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <array>

#include "display/chart_look.h"

class QPushButton;

namespace tarvolt {

/// The fonts of the charts: title, axis titles, and the labels of ticks, legend and notations.
class FormFonts final : public QDialog {
 public:
  FormFonts(const ChartFonts& fonts, QWidget* parent);

  const ChartFonts& Fonts() const { return fonts_; }

 private:
  void Show(std::size_t row);
  void Pick(std::size_t row);

  ChartFonts fonts_;
  std::array<QPushButton*, 3> buttons_{};
};

}  // namespace tarvolt
