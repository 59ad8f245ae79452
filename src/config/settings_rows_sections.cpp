// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/settings_row.h"

namespace tarvolt {
namespace {

constexpr SettingRow kRows[] = {
    Row("AxisGridColor", "0").In(Section::Colors),
    Row("BackGroundColor", "&HFFFFFF").In(Section::Colors),
    Row("ChannelColor", "0").In(Section::Colors),
    Row("ChartNotationColor", "0").In(Section::Colors),
    Row("CursorColor", "0").In(Section::Colors),
    Row("GridBackGroundColor", "&HFFFFFF").In(Section::Colors),
    Row("LabelFontColor", "0").In(Section::Colors),
    Row("PenColor", "").In(Section::Colors),
    Row("TitleFontColor", "0").In(Section::Colors),
    Row("ToolbarActiveModeFontColor", "0").In(Section::Colors),
    Row("ToolbarInactiveModeFontColor", "0").In(Section::Colors),
    Row("XAxisLabelFontColor", "0").In(Section::Colors),
    Row("XAxisTickMajorColor", "0").In(Section::Colors),
    Row("XAxisTickMinorColor", "0").In(Section::Colors),
    Row("YAxisLabelFontColor", "0").In(Section::Colors),
    Row("YAxisTickMajorColor", "0").In(Section::Colors),
    Row("YAxisTickMinorColor", "0").In(Section::Colors),
    Row("ChannelLineStyle", "0").In(Section::TickGrid),
    Row("GridLineStyle", "0").In(Section::TickGrid),
    Row("XAxisTickMajorCount", "5").In(Section::TickGrid),
    Row("XAxisTickMinorCount", "5").In(Section::TickGrid),
    Row("YAxisTickMajorCount", "5").In(Section::TickGrid),
    Row("YAxisTickMinorCount", "5").In(Section::TickGrid),
    Row("RecentLoaded#", "").Numbered(1, 5).In(Section::Recent),
    Row("RecentSaved#", "").Numbered(1, 5).In(Section::Recent),
    Row("ProfileFile#", "").Numbered(1, 4).In(Section::Recent),
    Row<&ObserverLogSettings::LAllChat>("LAllChat", "").In(Section::LogEntries),
    Row<&ObserverLogSettings::LChatMacros>("LChatMacros", "").In(Section::LogEntries),
    Row<&ObserverLogSettings::LClientIdentity>("LClientIdentity", "").In(Section::LogEntries),
    Row<&ObserverLogSettings::LClientTimes>("LClientTimes", "").In(Section::LogEntries),
    Row<&ObserverLogSettings::LImages>("LImages", "").In(Section::LogEntries),
    Row<&ObserverLogSettings::LLocalStart>("LLocalStart", "").In(Section::LogEntries),
    Row<&ObserverLogSettings::LMsgs>("LMsgs", "").In(Section::LogEntries),
    Row<&ObserverLogSettings::LocalIdentity>("LocalIdentity", "").In(Section::LogEntries),
    Row<&ObserverLogSettings::LWaveRecord>("LWaveRecord", "").In(Section::LogEntries),
    Row("ExpCustomTxt", "").In(Section::Export),
    Row("ExpDataCustom", "#########0.00###").In(Section::Export),
    Row("ExpDataFormat", "0").In(Section::Export),
    Row("ExpDateCustom", "").In(Section::Export),
    Row("ExpDateFormat", "0").In(Section::Export),
    Row("ExpDelimiter", "Tab").In(Section::Export),
    Row("ExpFileName", "").In(Section::Export),
    Row("ExpHdrSaveType", "None").In(Section::Export),
    Row("ExpHeaderFileName", "").In(Section::Export),
    Row("ExpObserverName", "0").In(Section::Export),
    Row("ExpRegion", "ALL").In(Section::Export),
    Row("ExpTimeCustom", "").In(Section::Export),
    Row("ExpTimeFormat", "0").In(Section::Export),
    Row("ExpUseCustom", "0").In(Section::Export),
    Row("ExpUseDataSource", "0").In(Section::Export),
    Row("ExpUseLat", "0").In(Section::Export),
    Row("ExpUseLng", "0").In(Section::Export),
    Row("ExpUseLocalName", "0").In(Section::Export),
    Row("ExpUseLocation", "0").In(Section::Export),
    Row("ExpUseMetaData", "0").In(Section::Export),
    Row("ExpUseNotes", "0").In(Section::Export),
    Row("ExpUseTZ", "0").In(Section::Export),
};

}  // namespace

std::span<const SettingRow> SectionRows() {
  return kRows;
}

}  // namespace tarvolt
