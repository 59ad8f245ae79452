// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/plot/channel_plottable.h"

#include <algorithm>
#include <cmath>

#include "display/chart_steps.h"
#include "display/column_reduction.h"

namespace tarvolt {
namespace {

/// What lies further outside than this is drawn at this distance: painters take no larger numbers.
constexpr double kPixelLimit = 30000;

/// Up to so many samples a pixel the points themselves are joined.
constexpr double kPointsAPixel = 2;

// True when a line between the two adds no pixel to their bars, or when there is none: a value that is not a number
// breaks it.
bool JoinIsCovered(const PixelColumn& from, const PixelColumn& to) {
  if (std::isnan(from.last) || std::isnan(to.first)) return true;
  const bool neighbours = to.x == from.x + 1;
  return neighbours && to.first >= from.lowest && to.first <= from.highest && from.last >= to.lowest &&
         from.last <= to.highest;
}

// The same pixels in fewer and wider rectangles, which fill much faster: what some neighbouring bars have in common is
// one of them, and what each has above or below it is left over.
QVector<QRect> JoinedBars(const QVector<QRect>& bars) {
  constexpr qsizetype kNeighbours = 8;
  QVector<QRect> joined;
  for (qsizetype begin = 0; begin < bars.size();) {
    qsizetype end = begin + 1;
    int top = bars[begin].top();
    int bottom = bars[begin].bottom();
    while (end < bars.size() && end - begin < kNeighbours && bars[end].left() == bars[end - 1].left() + 1 &&
           std::max(top, bars[end].top()) <= std::min(bottom, bars[end].bottom())) {
      top = std::max(top, bars[end].top());
      bottom = std::min(bottom, bars[end].bottom());
      ++end;
    }
    joined.append(QRect(QPoint(bars[begin].left(), top), QPoint(bars[end - 1].left(), bottom)));
    for (; begin < end; ++begin) {
      const QRect& bar = bars[begin];
      if (bar.top() < top) joined.append(QRect(bar.left(), bar.top(), 1, top - bar.top()));
      if (bar.bottom() > bottom) joined.append(QRect(bar.left(), bottom + 1, 1, bar.bottom() - bottom));
    }
  }
  return joined;
}

}  // namespace

const ColumnEdges& SharedEdges::Of(const StripChart& chart, const QCPAxis& axis) {
  const Key key{chart.Count(),
                chart.Count() > 0 ? chart.GetTime(0) : 0,
                chart.Count() > 0 ? chart.GetTime(chart.Count() - 1) : 0,
                axis.range().lower,
                axis.range().upper,
                axis.axisRect()->width()};
  if (key != key_) edges_ = FindColumnEdges(chart, key.lower, key.upper, key.width);
  key_ = key;
  return edges_;
}

ChannelPlottable::ChannelPlottable(QCPAxis* keyAxis, QCPAxis* valueAxis, const ChartWindow& window, SharedEdges& edges,
                                   int channel)
    : QCPAbstractPlottable(keyAxis, valueAxis), window_(window), edges_(edges), channel_(channel) {
  setSelectable(QCP::stNone);
  setAntialiased(false);
}

double ChannelPlottable::selectTest(const QPointF&, bool, QVariant*) const {
  return -1;
}

QCPRange ChannelPlottable::getKeyRange(bool& foundRange, QCP::SignDomain) const {
  const StripChart& chart = window_.chart;
  const MinMax& times = chart.Samples().TimeSpan();
  foundRange = !times.IsEmpty();
  return foundRange ? QCPRange(times.lowest, times.highest) : QCPRange();
}

QCPRange ChannelPlottable::getValueRange(bool& foundRange, QCP::SignDomain, const QCPRange&) const {
  foundRange = window_.chart.Count() > 0;
  return QCPRange(window_.chart.ChannelMin(channel_) * scale_, window_.chart.ChannelMax(channel_) * scale_);
}

double ChannelPlottable::YPixel(double value) const {
  return std::clamp(mValueAxis->coordToPixel(value * scale_), -kPixelLimit, kPixelLimit);
}

void ChannelPlottable::draw(QCPPainter* painter) {
  const StripChart& chart = window_.chart;
  if (chart.Count() == 0 || channel_ >= chart.ChannelCount() || !chart.ChannelVisible[channel_]) return;
  applyDefaultAntialiasingHint(painter);
  painter->setPen(mPen);
  painter->setBrush(Qt::NoBrush);
  const std::int32_t first = std::max(FindXaxisMinIndex(chart, mKeyAxis->range().lower) - 1, 0);
  const std::int32_t last = std::min(FindXaxisMaxIndex(chart, mKeyAxis->range().upper) + 1, chart.Count() - 1);
  if (last < first) return;
  const double samples = static_cast<double>(last) - first;
  if (samples <= kPointsAPixel * mKeyAxis->axisRect()->width()) {
    DrawPoints(painter, first, last);
  } else {
    DrawColumns(painter);
  }
}

// The neighbours outside the view are drawn as well, so that lines run to its edges.
void ChannelPlottable::DrawPoints(QCPPainter* painter, std::int32_t first, std::int32_t last) const {
  const StripChart& chart = window_.chart;
  QPolygonF line;
  const auto drawLine = [&] {
    if (line.size() == 1) painter->drawPoint(line.front());
    if (line.size() > 1) painter->drawPolyline(line);
    line.clear();
  };
  for (std::int32_t i = first; i <= last; ++i) {
    const double value = chart.GetValue(channel_, i);
    if (std::isnan(value)) {
      drawLine();
      continue;
    }
    const double x = std::clamp(mKeyAxis->coordToPixel(chart.GetTime(i)), -kPixelLimit, kPixelLimit);
    line.append(QPointF(x, YPixel(value)));
  }
  drawLine();
}

// Each column is a bar from its lowest to its highest value, so that no spike is lost; the last sample of one is joined
// with the first of the next where they stand, as a drawing of every sample would have it. Joins that the bars cover
// are left out, and bars are filled and not stroked: that is most of the time of a dense picture.
void ChannelPlottable::DrawColumns(QCPPainter* painter) const {
  const int left = mKeyAxis->axisRect()->left();
  QVector<QLineF> joins;
  QVector<QRect> bars;
  const PixelColumn* before = nullptr;
  const auto columns = ReduceToColumns(window_.chart, channel_, edges_.Of(window_.chart, *mKeyAxis));
  for (const PixelColumn& column : columns) {
    if (before != nullptr && !JoinIsCovered(*before, column)) joins.append(JoinOf(*before, column));
    before = &column;
    if (column.lowest > column.highest) continue;
    const double top = YPixel(column.highest);
    const double bottom = YPixel(column.lowest);
    const int upper = static_cast<int>(std::floor(std::min(top, bottom)));
    const int lower = static_cast<int>(std::floor(std::max(top, bottom)));
    bars.append(QRect(left + column.x, upper, 1, lower - upper + 1));
  }
  painter->drawLines(joins);
  FillBars(painter, bars);
}

QLineF ChannelPlottable::JoinOf(const PixelColumn& from, const PixelColumn& to) const {
  return QLineF(mKeyAxis->coordToPixel(from.lastTime), YPixel(from.last), mKeyAxis->coordToPixel(to.firstTime),
                YPixel(to.first));
}

// A picture in vectors has its bars as lines, which keep their place at any scale; dashed pens dash them. There they
// are as wide as a column, and a little more, so that no white shows between neighbours on a page of another size.
void ChannelPlottable::FillBars(QCPPainter* painter, const QVector<QRect>& bars) const {
  const bool vectors = painter->modes().testFlag(QCPPainter::pmVectorized);
  if (!vectors && mPen.style() == Qt::SolidLine) {
    painter->setPen(Qt::NoPen);
    painter->setBrush(mPen.color());
    painter->drawRects(JoinedBars(bars));
    return;
  }
  if (vectors) {
    QPen wide = mPen;
    wide.setCosmetic(false);
    wide.setWidthF(1.1);
    painter->setPen(wide);
  }
  QVector<QLineF> lines;
  for (const QRect& bar : bars) lines.append(QLineF(bar.left(), bar.top(), bar.left(), bar.bottom() + 0.5));
  painter->drawLines(lines);
}

void ChannelPlottable::drawLegendIcon(QCPPainter* painter, const QRectF& rect) const {
  painter->setPen(mPen);
  painter->drawLine(QLineF(rect.left(), rect.center().y(), rect.right(), rect.center().y()));
}

}  // namespace tarvolt
