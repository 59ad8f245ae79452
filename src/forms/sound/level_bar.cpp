// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/sound/level_bar.h"

#include <QPainter>
#include <algorithm>
#include <array>

#include "analysis/level_meter.h"

namespace tarvolt {
namespace {

constexpr double kBottom = -72;  // of the scale; the noise of a quiet 16-bit input lies about there
constexpr int kStep = 12;
constexpr double kLoud = -12;
constexpr double kClose = -3;  // to the end of the scale

struct Zone {
  double low;
  double high;
  QColor color;
};

const std::array<Zone, 3>& Zones() {
  static const std::array<Zone, 3> kZones = {Zone{kBottom, kLoud, QColor(0x2e, 0xa0, 0x43)},
                                             Zone{kLoud, kClose, QColor(0xd8, 0xa4, 0x00)},
                                             Zone{kClose, 0, QColor(0xd0, 0x2c, 0x2c)}};
  return kZones;
}

}  // namespace

LevelBar::LevelBar(QWidget* parent)
    : QWidget(parent), peak_(kLowestDecibels), average_(kLowestDecibels), mark_(kLowestDecibels) {}

void LevelBar::Show(double peak, double average, double mark, bool clips) {
  if (peak == peak_ && average == average_ && mark == mark_ && clips == clips_) return;
  clips_ = clips;
  peak_ = peak;
  average_ = average;
  mark_ = mark;
  update();
}

// Room for the numbers on the left, for the lamp and half a line of numbers above, and for half a line below.
QRectF LevelBar::Bar() const {
  const QFontMetrics metrics(font());
  const double left = metrics.horizontalAdvance(QStringLiteral("-72")) + 10;
  const double half = metrics.height() / 2.0;
  const double top = metrics.height() + half;
  return QRectF(left, top, width() - left - 6, height() - top - half);
}

QRectF LevelBar::Lamp() const {
  const QRectF bar = Bar();
  const int line = QFontMetrics(font()).height();
  return QRectF(bar.left(), 0, bar.width(), line + 2);
}

double LevelBar::YOf(double decibels) const {
  const QRectF bar = Bar();
  return bar.top() + std::clamp(decibels / kBottom, 0.0, 1.0) * bar.height();
}

void LevelBar::PaintScale(QPainter& painter) const {
  const QFontMetrics metrics(font());
  const QRectF bar = Bar();
  painter.setPen(palette().color(QPalette::WindowText));
  for (int decibels = 0; decibels >= static_cast<int>(kBottom); decibels -= kStep) {
    const double y = YOf(decibels);
    painter.drawText(QRectF(0, y - metrics.height() / 2.0, bar.left() - 6, metrics.height()),
                     Qt::AlignRight | Qt::AlignVCenter, QString::number(decibels));
    painter.drawLine(QPointF(bar.left() - 4, y), QPointF(bar.left() - 1, y));
  }
}

void LevelBar::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QRectF bar = Bar();
  PaintScale(painter);
  painter.fillRect(bar, QColor(0x20, 0x24, 0x28));
  for (const Zone& zone : Zones()) {
    const double top = YOf(std::min(peak_, zone.high));
    const double bottom = YOf(zone.low);
    if (peak_ > zone.low) painter.fillRect(QRectF(bar.left(), top, bar.width(), bottom - top), zone.color);
  }
  const auto line = [&](double decibels, const QColor& color, double thickness) {
    if (decibels <= kBottom) return;
    painter.fillRect(QRectF(bar.left(), YOf(decibels) - thickness / 2, bar.width(), thickness), color);
  };
  painter.fillRect(Lamp(), clips_ ? QColor(0xd0, 0x2c, 0x2c) : QColor(0x20, 0x24, 0x28));
  if (clips_) {
    painter.setPen(Qt::white);
    painter.drawText(Lamp(), Qt::AlignCenter, QStringLiteral("CLIP"));
  }
  line(average_, QColor(0x10, 0x10, 0x10), 2);
  line(mark_, QColor(Qt::white), 2);
}

}  // namespace tarvolt
