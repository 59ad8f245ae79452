// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/plot/strip_chart_plot.h"

#include <algorithm>
#include <cmath>

#include "forms/plot/chart_colors.h"
#include "forms/qt_text.h"

namespace tarvolt {
namespace {

/// Half of the least width of the x axis, in days: below it the stamps themselves have no more digits.
constexpr double kLeastHalfWidth = 0.0005 / 86400;

/// The axis refuses what is larger; such values are shown scaled down and labelled as they are.
constexpr double kLargestOnAxis = 1e200;

constexpr double kWheelStep = 1.25;

/// Between two drawings there is a pause of so many times what one took: a busy picture must not take the machine.
constexpr double kRests = 9;

}  // namespace

StripChartPlot::StripChartPlot(const ChartWindow& window, QWidget* parent)
    : QCustomPlot(parent),
      window_(window),
      timeTicker_(new TimeTicker),
      valueTicker_(new ValueTicker),
      overlay_(new ChartOverlay(this, window)),
      title_(new QCPTextElement(this)),
      band_(QRubberBand::Rectangle, this) {
  setObjectName(QStringLiteral("iStripChartX1"));
  setMouseTracking(true);
  setNoAntialiasingOnDrag(true);
  plotLayout()->setRowSpacing(0);
  axisRect()->setupFullAxesBox();
  xAxis->setTicker(timeTicker_);
  yAxis->setTicker(valueTicker_);
  setAutoAddPlottableToLegend(false);
  for (int channel = 0; channel < kChannels; ++channel)
    channels_[channel] = new ChannelPlottable(xAxis, yAxis, window, edges_, channel);
  legend->setVisible(true);
  axisRect()->insetLayout()->setInsetAlignment(0, Qt::AlignTop | Qt::AlignRight);
}

void StripChartPlot::RefreshWhenAsked() {
  const std::uint64_t requests = window_.chart.RepaintRequests;
  if (drawnOnce_ && (requests == drawnRequests_ || sinceDrawn_.elapsed() < kRests * replotTime())) return;
  drawnOnce_ = true;
  sinceDrawn_.start();
  drawnRequests_ = requests;
  TakeOver();
  replot(QCustomPlot::rpQueuedReplot);
}

void StripChartPlot::TakeOver() {
  TakeOverRanges();
  TakeOverLook();
  TakeOverTexts();
}

void StripChartPlot::TakeOverRanges() {
  ChartRange range = shown_ ? *shown_ : RangeOf(window_.chart);
  if (range.yMin == range.yMax) {
    range.yMin -= 0.1;
    range.yMax += 0.1;
  }
  double xMin = range.xMin;
  double xMax = range.xMax;
  if (!(xMax - xMin > 2 * kLeastHalfWidth)) {
    const double middle = (xMin + xMax) / 2;
    xMin = middle - kLeastHalfWidth;
    xMax = middle + kLeastHalfWidth;
  }
  xAxis->setRange(xMin, xMax);
  const double largest = std::max(std::abs(range.yMin), std::abs(range.yMax));
  scale_ = largest > kLargestOnAxis ? 1e-150 : 1;
  yAxis->setRange(range.yMin * scale_, range.yMax * scale_);
  valueTicker_->scale = scale_;
  overlay_->SetValueScale(scale_);
  for (ChannelPlottable* channel : channels_) channel->SetValueScale(scale_);
}

void StripChartPlot::TakeOverLook() {
  const ChartLook& look = window_.look;
  const ChartColors& colors = look.colors;
  setBackground(ColorOf(colors.BackGroundColor));
  axisRect()->setBackground(ColorOf(colors.GridBackGroundColor));
  TakeOverAxis(*xAxis, colors.XAxisLabelFontColor, colors.XAxisTickMajorColor, colors.XAxisTickMinorColor);
  TakeOverAxis(*yAxis, colors.YAxisLabelFontColor, colors.YAxisTickMajorColor, colors.YAxisTickMinorColor);
  for (QCPAxis* axis : {xAxis2, yAxis2}) axis->setBasePen(QPen(ColorOf(colors.AxisGridColor), 0));
  for (QCPAxis* axis : {xAxis2, yAxis2}) axis->setTicks(false);
  timeTicker_->setTickCount(look.ticks.XAxisTickMajorCount);
  timeTicker_->minorCount = look.ticks.XAxisTickMinorCount;
  timeTicker_->milliseconds = look.DisplayMilliseconds;
  timeTicker_->sidereal = window_.run.ChartIsLMST;
  valueTicker_->setTickCount(look.ticks.YAxisTickMajorCount);
  valueTicker_->minorCount = look.ticks.YAxisTickMinorCount;
  valueTicker_->decimals = look.YAxisLabelPrecision;
  for (int channel = 0; channel < kChannels; ++channel) {
    const int own = std::clamp(window_.chart.ChannelPen[channel], 0, kChannels - 1);
    const int style = look.LineStyle[own] != 0 ? look.LineStyle[own] : look.ticks.ChannelLineStyle;
    QPen pen(ColorOf(colors.PenColor[own]));
    pen.setWidth(1);
    pen.setCosmetic(true);
    pen.setStyle(PenStyleOf(style));
    channels_[channel]->setPen(pen);
  }
}

void StripChartPlot::TakeOverAxis(QCPAxis& axis, ChartColor label, ChartColor major, ChartColor minor) {
  const ChartLook& look = window_.look;
  axis.setBasePen(QPen(ColorOf(look.colors.AxisGridColor), 0));
  axis.setTickPen(QPen(ColorOf(major), 0));
  axis.setSubTickPen(QPen(ColorOf(minor), 0));
  axis.setSubTicks(true);
  axis.setLabelColor(ColorOf(label));
  axis.setTickLabelColor(ColorOf(label));
  axis.setLabelFont(FontOf(look.fonts.axisLabels));
  axis.setTickLabelFont(FontOf(look.fonts.labels));
  QColor grid = ColorOf(look.colors.AxisGridColor);
  grid.setAlpha(60);
  axis.grid()->setPen(QPen(grid, 0, PenStyleOf(look.ticks.GridLineStyle)));
  axis.grid()->setZeroLinePen(QPen(grid, 0));
}

void StripChartPlot::TakeOverTexts() {
  const StripChart& chart = window_.chart;
  TakeOverTitle();
  xAxis->setLabel(ToQString(chart.XAxisLabel));
  yAxis->setLabel(ToQString(chart.YAxisLabel));
  QColor behind = ColorOf(window_.look.colors.GridBackGroundColor);
  behind.setAlpha(200);
  legend->setBrush(behind);
  legend->setBorderPen(QPen(ColorOf(window_.look.colors.AxisGridColor), 0));
  legend->setFont(FontOf(window_.look.fonts.labels));
  legend->setTextColor(ColorOf(window_.look.colors.LabelFontColor));
  TakeOverLegend();
}

// A channel that comes back stands in its old place: the items are taken out and put in again in their order.
void StripChartPlot::TakeOverLegend() {
  const StripChart& chart = window_.chart;
  std::array<bool, kChannels> shown{};
  for (int channel = 0; channel < kChannels; ++channel) {
    shown[channel] = channel < chart.ChannelCount() && chart.ChannelVisible[channel] && chart.Count() > 0;
    channels_[channel]->setName(ToQString(window_.view.Legend[channel]));
  }
  if (shown != inLegend_) {
    for (ChannelPlottable* channel : channels_) channel->removeFromLegend();
    for (int channel = 0; channel < kChannels; ++channel) {
      if (shown[channel]) channels_[channel]->addToLegend();
    }
    inLegend_ = shown;
  }
  legend->setVisible(chart.LegendShown && legend->itemCount() > 0);
}

// An empty title would still take its row.
void StripChartPlot::TakeOverTitle() {
  const QString text = ToQString(window_.chart.Title);
  const bool hasRow = title_->layout() != nullptr;
  if (text.isEmpty() && hasRow) {
    plotLayout()->take(title_);
    plotLayout()->simplify();
  } else if (!text.isEmpty() && !hasRow) {
    plotLayout()->insertRow(0);
    plotLayout()->addElement(0, 0, title_);
  }
  title_->setVisible(!text.isEmpty());
  title_->setText(text);
  title_->setFont(FontOf(window_.look.fonts.title));
  title_->setTextColor(ColorOf(window_.look.colors.TitleFontColor));
}

// The mouse works on the chart as it is, which may be ahead of its last drawing.
void StripChartPlot::mousePressEvent(QMouseEvent* event) {
  TakeOverRanges();
  pressed_ = event->pos();
  const int slot = overlay_->NotationAt(event->position());
  if (slot >= 0 && events_.notationClicked) return events_.notationClicked(slot);
  if (!axisRect()->rect().contains(pressed_)) return;
  const bool band = event->button() == Qt::RightButton || window_.chart.Mode == ChartMode::Zoom ||
                    event->modifiers().testFlag(Qt::ShiftModifier);
  drag_ = band ? Drag::Band : Drag::Pan;
  dragged_ = event->position();
  if (!band) return;
  band_.setGeometry(QRect(pressed_, QSize()));
  band_.show();
}

void StripChartPlot::mouseMoveEvent(QMouseEvent* event) {
  TakeOverRanges();
  const QPointF at = event->position();
  if (drag_ == Drag::Band) {
    band_.setGeometry(QRect(pressed_, event->pos()).normalized().intersected(axisRect()->rect()));
  } else if (drag_ == Drag::Pan) {
    if (events_.panned) events_.panned(XOf(dragged_.x()) - XOf(at.x()), YOf(dragged_.y()) - YOf(at.y()));
    dragged_ = at;
  } else if (events_.moved && axisRect()->rect().contains(event->pos())) {
    events_.moved(XOf(at.x()), YOf(at.y()));
  }
}

void StripChartPlot::mouseReleaseEvent(QMouseEvent*) {
  TakeOverRanges();
  if (drag_ == Drag::Band) ZoomToBand();
  drag_ = Drag::None;
  band_.hide();
}

// A band of a few pixels is a click that slipped.
void StripChartPlot::ZoomToBand() {
  constexpr int kLeast = 5;
  const QRect area = band_.geometry();
  if (area.width() < kLeast || area.height() < kLeast || !events_.zoomedTo) return;
  events_.zoomedTo({XOf(area.left()), XOf(area.right()), YOf(area.bottom()), YOf(area.top())});
}

void StripChartPlot::mouseDoubleClickEvent(QMouseEvent*) {
  drag_ = Drag::None;
  if (events_.fullView) events_.fullView();
}

void StripChartPlot::wheelEvent(QWheelEvent* event) {
  const QPoint turned = event->angleDelta();
  const int steps = turned.y() != 0 ? turned.y() : turned.x();
  if (steps == 0 || !events_.zoomedTo) return;
  TakeOverRanges();
  const double factor = std::pow(kWheelStep, -steps / 120.0);
  ChartRange range = RangeOf(window_.chart);
  if (event->modifiers().testFlag(Qt::ShiftModifier)) {
    const double y = YOf(event->position().y());
    range.yMin = y + (range.yMin - y) * factor;
    range.yMax = y + (range.yMax - y) * factor;
  } else {
    const double x = XOf(event->position().x());
    range.xMin = x + (range.xMin - x) * factor;
    range.xMax = x + (range.xMax - x) * factor;
  }
  events_.zoomedTo(range);
  event->accept();
}

}  // namespace tarvolt
