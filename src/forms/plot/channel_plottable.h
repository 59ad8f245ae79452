// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "display/column_reduction.h"
#include "forms/plot/qcp.h"
#include "model/chart_window.h"

namespace tarvolt {

/// The edges of the columns of pixels, which all channels of a drawing share.
class SharedEdges {
 public:
  /// Those of the samples over the axis, as both are now.
  const ColumnEdges& Of(const StripChart& chart, const QCPAxis& axis);

 private:
  struct Key {
    std::int32_t count = -1;
    double firstTime = 0;
    double lastTime = 0;
    double lower = 0;
    double upper = 0;
    int width = 0;
    bool operator==(const Key&) const = default;
  };

  Key key_;
  ColumnEdges edges_;
};

/// One channel of a strip chart, drawn straight from its samples and their pyramid: nothing of the data is copied. The
/// work grows with the width in pixels and not with the samples. A value that is not a number breaks the line.
class ChannelPlottable final : public QCPAbstractPlottable {
 public:
  /// Drawn by the axes of the plot; `window` and `edges` outlive it. Channels are counted from 0.
  ChannelPlottable(QCPAxis* keyAxis, QCPAxis* valueAxis, const ChartWindow& window, SharedEdges& edges, int channel);

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
  QLineF JoinOf(const PixelColumn& from, const PixelColumn& to) const;
  void FillBars(QCPPainter* painter, const QVector<QRect>& bars) const;
  double YPixel(double value) const;

  const ChartWindow& window_;
  SharedEdges& edges_;
  int channel_;
  double scale_ = 1;
};

}  // namespace tarvolt
