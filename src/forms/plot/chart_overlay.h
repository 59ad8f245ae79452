// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/plot/qcp.h"
#include "model/chart_window.h"

namespace tarvolt {

/// What is drawn over the channels: the time marker, the cursor and the notations at their samples.
class ChartOverlay final : public QCPLayerable {
 public:
  ChartOverlay(QCustomPlot* plot, const ChartWindow& window);

  void SetValueScale(double scale) { scale_ = scale; }

  /// Slot of the notation drawn at a position; -1 for none.
  int NotationAt(const QPointF& position) const;

 protected:
  void applyDefaultAntialiasingHint(QCPPainter* painter) const override;
  void draw(QCPPainter* painter) override;
  QRect clipRect() const override;

 private:
  void DrawMarker(QCPPainter* painter) const;
  void DrawCursor(QCPPainter* painter) const;
  void DrawNotations(QCPPainter* painter);
  QPointF PixelOf(double x, double y) const;

  struct Drawn {
    int slot;
    QRectF area;
  };

  const ChartWindow& window_;
  double scale_ = 1;
  std::vector<Drawn> drawn_;
};

}  // namespace tarvolt
