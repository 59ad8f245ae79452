#pragma once

#include "forms/plot/qcp.h"
#include "model/chart_window.h"

namespace tarvolt {

/// One channel of a strip chart, drawn straight from its samples and their pyramid: nothing of the data is copied. The
/// work grows with the width in pixels and not with the samples. A value that is not a number breaks the line.
class ChannelPlottable final : public QCPAbstractPlottable {
 public:
  /// Drawn by the axes of the plot; `window` outlives it. Channels are counted from 0.
  ChannelPlottable(QCPAxis* keyAxis, QCPAxis* valueAxis, const ChartWindow& window, int channel);

  /// Values are multiplied by it before they go to the axis, which cannot take the largest doubles.
  void SetValueScale(double scale) { scale_ = scale; }

  double selectTest(const QPointF& position, bool onlySelectable, QVariant* details) const override;
  QCPRange getKeyRange(bool& foundRange, QCP::SignDomain inSignDomain) const override;
  QCPRange getValueRange(bool& foundRange, QCP::SignDomain inSignDomain, const QCPRange& inKeyRange) const override;

 protected:
  void draw(QCPPainter* painter) override;
  void drawLegendIcon(QCPPainter* painter, const QRectF& rect) const override;

 private:
  void DrawPoints(QCPPainter* painter, std::int32_t first, std::int32_t last) const;
  void DrawColumns(QCPPainter* painter) const;
  double YPixel(double value) const;

  const ChartWindow& window_;
  int channel_;
  double scale_ = 1;
};

}  // namespace tarvolt
