// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QElapsedTimer>
#include <array>
#include <functional>
#include <optional>

#include "display/chart_steps.h"
#include "forms/plot/axis_tickers.h"
#include "forms/plot/channel_plottable.h"
#include "forms/plot/chart_overlay.h"
#include "forms/plot/qcp.h"
#include "model/chart_window.h"

namespace tarvolt {

/// What the mouse did over the plot, in the units of the axes.
struct PlotEvents {
  std::function<void(double x, double y)> moved;
  std::function<void(const ChartRange&)> zoomedTo;
  std::function<void(double days, double units)> panned;
  std::function<void()> fullView;
  std::function<void(int slot)> notationClicked;
};

/// The drawing of a window's strip chart. The wheel zooms about the pointer (the y axis with Shift), dragging pans, a
/// rubber band zooms with the right button or Shift or while the zoom tool is on, a double click asks for the full
/// view.
class StripChartPlot final : public QCustomPlot {
 public:
  /// `window` outlives it.
  explicit StripChartPlot(const ChartWindow& window, QWidget* parent = nullptr);

  void SetEvents(PlotEvents events) { events_ = std::move(events); }

  /// Draws another range than the chart's own, for a picture; nothing for the chart's.
  void ShowRange(std::optional<ChartRange> range) { shown_ = range; }

  /// Draws anew, at the screen's next chance, when the chart has asked for it since the last drawing. One that takes
  /// long is not drawn at each call: it then comes with a later one.
  void RefreshWhenAsked();

  /// Takes over everything that is drawn; draws nothing yet.
  void TakeOver();

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  void TakeOverRanges();
  void TakeOverLook();
  void TakeOverAxis(QCPAxis& axis, ChartColor label, ChartColor major, ChartColor minor);
  void TakeOverTexts();
  void TakeOverTitle();
  void TakeOverLegend();
  void ZoomToBand();
  double XOf(double pixel) const { return xAxis->pixelToCoord(pixel); }
  double YOf(double pixel) const { return yAxis->pixelToCoord(pixel) / scale_; }

  const ChartWindow& window_;
  PlotEvents events_;
  QSharedPointer<TimeTicker> timeTicker_;
  QSharedPointer<ValueTicker> valueTicker_;
  SharedEdges edges_;
  std::array<ChannelPlottable*, kChannels> channels_{};
  std::array<bool, kChannels> inLegend_{};
  ChartOverlay* overlay_;
  QCPTextElement* title_;
  QRubberBand band_;
  QPoint pressed_;
  QPointF dragged_;
  enum class Drag { None, Pan, Band } drag_ = Drag::None;
  double scale_ = 1;
  std::optional<ChartRange> shown_;
  std::uint64_t drawnRequests_ = 0;
  QElapsedTimer sinceDrawn_;
  bool drawnOnce_ = false;
};

}  // namespace tarvolt
