// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace tarvolt {

/// A colour as it is stored: blue, green and red bytes from high to low.
using ChartColor = std::int32_t;

struct ChartFont {
  std::string name = "Arial";
  double size = 10;  ///< points
  bool bold = false;
  bool italic = false;
  bool operator==(const ChartFont&) const = default;
};

/// The colours of a chart, each under its key's own name; the defaults are those of the keys.
struct ChartColors {
  static constexpr ChartColor kWhite = 0xFFFFFF;
  std::array<ChartColor, 8> PenColor{255, 16711680, 4227327, 16711935, 16512, 8388736, 32896, 65280};
  ChartColor AxisGridColor = 0;
  ChartColor BackGroundColor = kWhite;
  ChartColor GridBackGroundColor = kWhite;
  ChartColor LabelFontColor = 0;
  ChartColor TitleFontColor = 0;
  ChartColor XAxisLabelFontColor = 0;
  ChartColor YAxisLabelFontColor = 0;
  ChartColor XAxisTickMajorColor = 0;
  ChartColor XAxisTickMinorColor = 0;
  ChartColor YAxisTickMajorColor = 0;
  ChartColor YAxisTickMinorColor = 0;
  ChartColor ChannelColor = 0;
  ChartColor ToolbarActiveModeFontColor = 0;
  ChartColor ToolbarInactiveModeFontColor = 0;
  ChartColor CursorColor = 0;
  ChartColor ChartNotationColor = 0;
  bool operator==(const ChartColors&) const = default;
};

/// Ticks an axis and lines of grid and channels. A line style is 0 solid, 1 dashed, 2 dotted, 3 dash and dot, 4 dash
/// and two dots.
struct TickGrid {
  int XAxisTickMajorCount = 5;
  int XAxisTickMinorCount = 5;
  int YAxisTickMajorCount = 5;
  int YAxisTickMinorCount = 5;
  int ChannelLineStyle = 0;
  int GridLineStyle = 0;
  bool operator==(const TickGrid&) const = default;
};

struct ChartFonts {
  ChartFont title;
  ChartFont axisLabels;
  ChartFont labels;
  bool operator==(const ChartFonts&) const = default;
};

/// How a chart is drawn, apart from its data and its ranges.
struct ChartLook {
  ChartColors colors;
  TickGrid ticks;
  ChartFonts fonts;
  std::array<std::int32_t, 8> LineStyle{};  ///< of a channel; 0 takes ChannelLineStyle
  int YAxisLabelPrecision = 2;
  bool DisplayMilliseconds = false;
  bool operator==(const ChartLook&) const = default;
};

}  // namespace tarvolt
