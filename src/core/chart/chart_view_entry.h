// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

#include "core/chart/view_commands.h"

namespace tarvolt {

/// What stands in the fields of the chart view by numbers.
struct ChartViewEntry {
  static constexpr const char* kStartOfData = "Start of Data";
  static constexpr const char* kEndOfData = "End of Data";

  bool byWidth = false;  ///< OptWidth: the view ends `width` seconds after `from`; else OptTimes: it ends at `to`
  std::string from = kStartOfData;  ///< those words, or what ReadViewTime reads
  std::string to = kEndOfData;
  std::string width;
  bool autoY = false;     ///< ChkAutoY: the y range follows the data
  bool specifyY = false;  ///< ChkSpecifyY: it goes from yLow to yHigh
  std::string yLow;
  std::string yHigh;
};

/// A date with a time, or a time alone, with milliseconds or without; nothing when it is none. A time alone belongs to
/// the day of the earliest sample, or to the next one when the data begin later in the day.
std::optional<TimeStamp> ReadViewTime(std::string_view text, const StripChart& chart);

/// A time as the fields show it: "YYYY-MM-DD hh:nn:ss.zzz".
std::string ViewTimeText(TimeStamp stamp);

/// The fields as they describe the view on display.
ChartViewEntry DescribeView(const ChartWindow& window, double widthSeconds);

/// Reads the fields. What is wrong with them in words; empty when they are fine, and `request` is filled.
std::string ValuesOK(const ChartViewEntry& entry, const StripChart& chart, ChartViewRequest& request);

/// Shows the view. What is wrong in words; empty when it is shown.
std::string ApplyChartView(const ChartViewEntry& entry, const ChartWindow& window, ViewCommands& commands);

}  // namespace tarvolt
