// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/look/color_button.h"

#include <QColorDialog>

#include "forms/plot/chart_colors.h"

namespace tarvolt {

ColorButton::ColorButton(ChartColor color, QWidget* parent) : QToolButton(parent) {
  setIconSize(QSize(48, 16));
  SetColor(color);
  connect(this, &QToolButton::clicked, this, [this] { Pick(); });
}

void ColorButton::SetColor(ChartColor color) {
  color_ = color;
  QPixmap swatch(iconSize() * devicePixelRatioF());
  swatch.setDevicePixelRatio(devicePixelRatioF());
  swatch.fill(ColorOf(color));
  setIcon(swatch);
  setToolTip(ColorOf(color).name());
}

void ColorButton::Pick() {
  const QColor color = QColorDialog::getColor(ColorOf(color_), this);
  if (color.isValid()) SetColor(ChartColorOf(color));
}

}  // namespace tarvolt
