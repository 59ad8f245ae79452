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

}  // namespace

ChannelPlottable::ChannelPlottable(QCPAxis* keyAxis, QCPAxis* valueAxis, const ChartWindow& window, int channel)
    : QCPAbstractPlottable(keyAxis, valueAxis), window_(window), channel_(channel) {
  setSelectable(QCP::stNone);
  setAntialiased(false);
}

double ChannelPlottable::selectTest(const QPointF&, bool, QVariant*) const {
  return -1;
}

QCPRange ChannelPlottable::getKeyRange(bool& foundRange, QCP::SignDomain) const {
  const StripChart& chart = window_.chart;
  foundRange = chart.Count() > 0;
  return foundRange ? QCPRange(chart.GetTime(0), chart.GetTime(chart.Count() - 1)) : QCPRange();
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

// Each column is a line from its lowest to its highest value, so that no spike is lost; the last sample of one is
// joined with the first of the next where they stand, as a drawing of every sample would have it.
void ChannelPlottable::DrawColumns(QCPPainter* painter) const {
  const StripChart& chart = window_.chart;
  const QRect area = mKeyAxis->axisRect()->rect();
  QVector<QLineF> lines;
  bool joins = false;
  QPointF end;
  for (const PixelColumn& column :
       ReduceToColumns(chart, channel_, mKeyAxis->range().lower, mKeyAxis->range().upper, area.width())) {
    const double x = area.left() + column.x;
    if (joins && !std::isnan(column.first)) {
      lines.append(QLineF(end, QPointF(mKeyAxis->coordToPixel(column.firstTime), YPixel(column.first))));
    }
    if (column.lowest <= column.highest) {
      const double low = YPixel(column.lowest);
      const double high = YPixel(column.highest);
      // A line of no length is not drawn by every painter.
      lines.append(QLineF(x, low, x, low == high ? high - 0.5 : high));
    }
    joins = !std::isnan(column.last);
    if (joins) end = QPointF(mKeyAxis->coordToPixel(column.lastTime), YPixel(column.last));
  }
  painter->drawLines(lines);
}

void ChannelPlottable::drawLegendIcon(QCPPainter* painter, const QRectF& rect) const {
  painter->setPen(mPen);
  painter->drawLine(QLineF(rect.left(), rect.center().y(), rect.right(), rect.center().y()));
}

}  // namespace tarvolt
