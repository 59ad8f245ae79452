// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/plot/chart_colors.h"

#include "forms/qt_text.h"

namespace tarvolt {

QColor ColorOf(ChartColor color) {
  return QColor(color & 0xFF, color >> 8 & 0xFF, color >> 16 & 0xFF);
}

ChartColor ChartColorOf(const QColor& color) {
  return color.red() | color.green() << 8 | color.blue() << 16;
}

QFont FontOf(const ChartFont& font) {
  QFont result(ToQString(font.name));
  result.setPointSizeF(font.size);
  result.setBold(font.bold);
  result.setItalic(font.italic);
  return result;
}

Qt::PenStyle PenStyleOf(int lineStyle) {
  switch (lineStyle) {
    case 1:
      return Qt::DashLine;
    case 2:
      return Qt::DotLine;
    case 3:
      return Qt::DashDotLine;
    case 4:
      return Qt::DashDotDotLine;
    default:
      return Qt::SolidLine;
  }
}

void ShowInColor(QWidget& widget, ChartColor color) {
  QPalette palette = widget.parentWidget()->palette();
  if (color != 0) {
    palette.setColor(QPalette::Active, QPalette::ButtonText, ColorOf(color));
    palette.setColor(QPalette::Active, QPalette::WindowText, ColorOf(color));
  }
  if (widget.palette() != palette) widget.setPalette(palette);
}

}  // namespace tarvolt
