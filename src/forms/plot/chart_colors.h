// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QFont>
#include <QWidget>

#include "display/chart_look.h"

namespace tarvolt {

/// Between the stored form of colours and fonts and Qt's.
QColor ColorOf(ChartColor color);
ChartColor ChartColorOf(const QColor& color);
QFont FontOf(const ChartFont& font);
Qt::PenStyle PenStyleOf(int lineStyle);

/// Shows a widget's text in a colour of the chart. Black is the default of those colours and stands for the text colour
/// of the desktop, light or dark.
void ShowInColor(QWidget& widget, ChartColor color);

}  // namespace tarvolt
