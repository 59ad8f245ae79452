#pragma once

#include <QColor>
#include <QFont>

#include "display/chart_look.h"

namespace tarvolt {

/// Between the stored form of colours and fonts and Qt's.
QColor ColorOf(ChartColor color);
ChartColor ChartColorOf(const QColor& color);
QFont FontOf(const ChartFont& font);
Qt::PenStyle PenStyleOf(int lineStyle);

}  // namespace tarvolt
