#pragma once

#include <QWidget>

namespace tarvolt {

/// An upright bar of a level in decibels of full scale, with a line for the average in it, a mark above it and a scale
/// beside it.
class LevelBar final : public QWidget {
 public:
  explicit LevelBar(QWidget* parent);

  /// All in decibels of full scale.
  void Show(double peak, double average, double mark);

  QSize sizeHint() const override { return {86, 260}; }
  QSize minimumSizeHint() const override { return {70, 120}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QRectF Bar() const;
  double YOf(double decibels) const;
  void PaintScale(QPainter& painter) const;

  double peak_;
  double average_;
  double mark_;
};

}  // namespace tarvolt
