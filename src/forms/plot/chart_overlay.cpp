// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/plot/chart_overlay.h"

#include <algorithm>

#include "forms/plot/chart_colors.h"
#include "forms/qt_text.h"

namespace tarvolt {

ChartOverlay::ChartOverlay(QCustomPlot* plot, const ChartWindow& window)
    : QCPLayerable(plot, QStringLiteral("overlay")), window_(window) {}

void ChartOverlay::applyDefaultAntialiasingHint(QCPPainter* painter) const {
  painter->setAntialiasing(false);
}

QRect ChartOverlay::clipRect() const {
  return mParentPlot->axisRect()->rect();
}

QPointF ChartOverlay::PixelOf(double x, double y) const {
  return {mParentPlot->xAxis->coordToPixel(x), mParentPlot->yAxis->coordToPixel(y * scale_)};
}

void ChartOverlay::draw(QCPPainter* painter) {
  DrawMarker(painter);
  DrawCursor(painter);
  DrawNotations(painter);
}

void ChartOverlay::DrawMarker(QCPPainter* painter) const {
  if (!window_.chart.TimeMarker) return;
  const QRect area = clipRect();
  const double x = mParentPlot->xAxis->coordToPixel(*window_.chart.TimeMarker);
  painter->setPen(QPen(ColorOf(window_.look.colors.CursorColor), 0, Qt::DashLine));
  painter->drawLine(QLineF(x, area.top(), x, area.bottom()));
}

void ChartOverlay::DrawCursor(QCPPainter* painter) const {
  const StripChart& chart = window_.chart;
  if (chart.Mode != ChartMode::Cursor || chart.CursorChannel < 0) return;
  const QRect area = clipRect();
  const QPointF at = PixelOf(chart.CursorX, chart.CursorY);
  painter->setPen(QPen(ColorOf(window_.look.colors.CursorColor), 0));
  painter->drawLine(QLineF(at.x(), area.top(), at.x(), area.bottom()));
  painter->drawLine(QLineF(area.left(), at.y(), area.right(), at.y()));
  const int own = std::clamp(chart.ChannelPen[chart.CursorChannel], 0, kChannels - 1);
  painter->setPen(QPen(ColorOf(window_.look.colors.PenColor[own]), 2));
  painter->drawEllipse(at, 4, 4);
}

void ChartOverlay::DrawNotations(QCPPainter* painter) {
  drawn_.clear();
  const StripChart& chart = window_.chart;
  if (!chart.NotationsShown) return;
  painter->setFont(FontOf(window_.look.fonts.labels));
  const QFontMetricsF metrics(painter->font());
  for (int slot = 0; slot < std::min(window_.notations.count, Notations::kSlots); ++slot) {
    const Notation& notation = window_.notations.slots[slot];
    if (notation.text.empty() || notation.text == kDeletedNotation) continue;
    const std::int32_t index = notation.index - window_.run.StoreStart;
    if (index < 0 || index >= chart.Count()) continue;
    const int channel = std::clamp<int>(notation.channel, 0, chart.ChannelCount() - 1);
    if (!chart.ChannelVisible[channel]) continue;
    const QPointF at = PixelOf(chart.GetTime(index), chart.GetValue(channel, index));
    if (!clipRect().contains(at.toPoint())) continue;
    const QString text = ToQString(notation.text);
    QRectF area(at.x() + 6, at.y() - metrics.height() - 6, metrics.horizontalAdvance(text) + 6, metrics.height() + 2);
    if (area.right() > clipRect().right()) area.moveRight(at.x() - 6);
    if (area.top() < clipRect().top()) area.moveTop(at.y() + 6);
    const QColor color = ColorOf(window_.look.colors.ChartNotationColor);
    painter->setPen(QPen(color, 0));
    painter->setBrush(ColorOf(window_.look.colors.GridBackGroundColor));
    painter->drawLine(at, area.center());
    painter->drawRect(area);
    painter->drawText(area, Qt::AlignCenter, text);
    drawn_.push_back({slot, area});
  }
}

int ChartOverlay::NotationAt(const QPointF& position) const {
  for (const Drawn& drawn : drawn_) {
    if (drawn.area.contains(position)) return drawn.slot;
  }
  return -1;
}

}  // namespace tarvolt
