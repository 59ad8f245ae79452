// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QToolButton>
#include <functional>

#include "display/chart_look.h"

namespace tarvolt {

/// A label of a colour: a click on it picks another.
class ColorButton final : public QToolButton {
 public:
  ColorButton(ChartColor color, QWidget* parent);

  ChartColor Color() const { return color_; }
  void SetColor(ChartColor color);

 private:
  void Pick();

  ChartColor color_ = 0;
};

}  // namespace tarvolt
