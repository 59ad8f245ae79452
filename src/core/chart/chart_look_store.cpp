// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/chart/chart_look_store.h"

#include <algorithm>
#include <cmath>

#include "text/number.h"

namespace tarvolt {
namespace {

struct ColorKey {
  const char* key;
  ChartColor ChartColors::*member;
};

constexpr ColorKey kColorKeys[] = {
    {"AxisGridColor", &ChartColors::AxisGridColor},
    {"BackGroundColor", &ChartColors::BackGroundColor},
    {"GridBackGroundColor", &ChartColors::GridBackGroundColor},
    {"LabelFontColor", &ChartColors::LabelFontColor},
    {"TitleFontColor", &ChartColors::TitleFontColor},
    {"XAxisLabelFontColor", &ChartColors::XAxisLabelFontColor},
    {"YAxisLabelFontColor", &ChartColors::YAxisLabelFontColor},
    {"XAxisTickMajorColor", &ChartColors::XAxisTickMajorColor},
    {"XAxisTickMinorColor", &ChartColors::XAxisTickMinorColor},
    {"YAxisTickMajorColor", &ChartColors::YAxisTickMajorColor},
    {"YAxisTickMinorColor", &ChartColors::YAxisTickMinorColor},
    {"ChannelColor", &ChartColors::ChannelColor},
    {"ToolbarActiveModeFontColor", &ChartColors::ToolbarActiveModeFontColor},
    {"ToolbarInactiveModeFontColor", &ChartColors::ToolbarInactiveModeFontColor},
    {"CursorColor", &ChartColors::CursorColor},
    {"ChartNotationColor", &ChartColors::ChartNotationColor},
};

struct TickKey {
  const char* key;
  int TickGrid::*member;
  int lowest;
  int highest;
};

constexpr TickKey kTickKeys[] = {
    {"XAxisTickMajorCount", &TickGrid::XAxisTickMajorCount, 1, 50},
    {"XAxisTickMinorCount", &TickGrid::XAxisTickMinorCount, 0, 50},
    {"YAxisTickMajorCount", &TickGrid::YAxisTickMajorCount, 1, 50},
    {"YAxisTickMinorCount", &TickGrid::YAxisTickMinorCount, 0, 50},
    {"ChannelLineStyle", &TickGrid::ChannelLineStyle, 0, 4},
    {"GridLineStyle", &TickGrid::GridLineStyle, 0, 4},
};

struct FontKey {
  const char* base;
  ChartFont ChartFonts::*member;
};

constexpr FontKey kFontKeys[] = {
    {"TitleFont", &ChartFonts::title}, {"XYLabelFont", &ChartFonts::axisLabels}, {"LabelFont", &ChartFonts::labels}};

std::string NumberOf(std::int32_t value) {
  return NumberText(std::int64_t{value});
}

std::string WordOf(bool value) {
  return value ? "True" : "False";
}

ChartFont ReadFont(const SettingsStore& store, const std::string& base) {
  ChartFont font;
  font.name = store.GetSetting(Section::Settings, base + "Name");
  const double size = Val(store.GetSetting(Section::Settings, base + "Size"));
  font.size = std::isfinite(size) ? std::clamp(size, 4.0, 72.0) : 10;
  font.bold = store.GetSetting(Section::Settings, base + "Bold") == "True";
  font.italic = store.GetSetting(Section::Settings, base + "Italic") == "True";
  return font;
}

}  // namespace

ChartColors GetStripChartColors(const Session& session) {
  ChartColors colors;
  for (const ColorKey& row : kColorKeys)
    colors.*row.member = RoundToInt32(Val(session.store.GetSetting(Section::Colors, row.key))) & 0xFFFFFF;
  for (std::size_t i = 0; i < colors.PenColor.size(); ++i)
    colors.PenColor[i] = session.settings.channels.PenColor[i] & 0xFFFFFF;
  return colors;
}

TickGrid GetTickGrid(const Session& session) {
  TickGrid ticks;
  for (const TickKey& row : kTickKeys) {
    const std::int32_t count = RoundToInt32(Val(session.store.GetSetting(Section::TickGrid, row.key)));
    ticks.*row.member = std::clamp(count, row.lowest, row.highest);
  }
  return ticks;
}

ChartFonts GetFonts(const Session& session) {
  ChartFonts fonts;
  for (const FontKey& row : kFontKeys) fonts.*row.member = ReadFont(session.store, row.base);
  return fonts;
}

ChartLook LoadChartLook(const Session& session) {
  ChartLook look;
  look.colors = GetStripChartColors(session);
  look.ticks = GetTickGrid(session);
  look.fonts = GetFonts(session);
  look.LineStyle = session.settings.channels.LineStyle;
  look.YAxisLabelPrecision = std::clamp(session.settings.chart.YAxisLabelPrecision, 0, 12);
  look.DisplayMilliseconds = session.settings.chart.DisplayMilliseconds;
  return look;
}

void SaveColors(Session& session, const ChartColors& colors) {
  session.store.BeginBatch();
  for (const ColorKey& row : kColorKeys)
    session.store.SaveSetting(Section::Colors, row.key, NumberOf(colors.*row.member));
  for (std::size_t i = 0; i < colors.PenColor.size(); ++i) {
    session.settings.channels.PenColor[i] = colors.PenColor[i];
    const std::string key = "Channel" + NumberText(static_cast<std::int64_t>(i)) + "PenColor";
    session.store.SaveSetting(Section::Colors, key, NumberOf(colors.PenColor[i]));
  }
  session.store.EndBatch();
}

void SaveTickGrid(Session& session, const TickGrid& ticks) {
  session.store.BeginBatch();
  for (const TickKey& row : kTickKeys)
    session.store.SaveSetting(Section::TickGrid, row.key, NumberOf(ticks.*row.member));
  session.store.EndBatch();
}

void SaveFonts(Session& session, const ChartFonts& fonts) {
  session.settings.chart.XYLabelFontName = fonts.axisLabels.name;
  session.settings.chart.XYLabelFontSize = fonts.axisLabels.size;
  session.settings.chart.XYLabelFontBold = fonts.axisLabels.bold;
  session.settings.chart.XYLabelFontItalic = fonts.axisLabels.italic;
  session.store.BeginBatch();
  for (const FontKey& row : kFontKeys) {
    const ChartFont& font = fonts.*row.member;
    const std::string base = row.base;
    session.store.SaveSetting(Section::Settings, base + "Name", font.name);
    session.store.SaveSetting(Section::Settings, base + "Size", NumberText(font.size));
    session.store.SaveSetting(Section::Settings, base + "Bold", WordOf(font.bold));
    session.store.SaveSetting(Section::Settings, base + "Italic", WordOf(font.italic));
  }
  session.store.EndBatch();
}

}  // namespace tarvolt
