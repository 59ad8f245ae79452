// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

namespace tarvolt {

/// An upright bar of a level in decibels of full scale, with a line for the average in it, a mark above it, a scale
/// beside it and a lamp on top that shows samples at the end of the scale.
class LevelBar final : public QWidget {
 public:
  explicit LevelBar(QWidget* parent);

  /// All in decibels of full scale. `clips` lights the lamp above the bar.
  void Show(double peak, double average, double mark, bool clips);

  QSize sizeHint() const override { return {86, 260}; }
  QSize minimumSizeHint() const override { return {70, 120}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QRectF Lamp() const;
  QRectF Bar() const;
  double YOf(double decibels) const;
  void PaintScale(QPainter& painter) const;

  double peak_;
  double average_;
  double mark_;
  bool clips_ = false;
};

}  // namespace tarvolt
