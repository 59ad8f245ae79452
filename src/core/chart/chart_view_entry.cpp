// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/chart/chart_view_entry.h"

#include <cmath>

#include "text/ansi.h"
#include "text/number.h"
#include "timebase/time_stamp.h"
#include "timebase/time_text.h"

namespace tarvolt {
namespace {

// Takes ".z" to ".zzz" behind whole seconds off the text: the milliseconds in days, 0 for none.
std::optional<double> TakeMilliseconds(std::string_view& text) {
  const std::size_t point = text.find('.');
  if (point == std::string_view::npos) return 0;
  const std::string_view digits = text.substr(point + 1);
  const bool areDigits = digits.find_first_not_of("0123456789") == std::string_view::npos;
  if (digits.empty() || digits.size() > 3 || !areDigits || text.rfind(':', point) == std::string_view::npos)
    return std::nullopt;
  const auto seconds = ParseNumber(std::string(text.substr(point)));
  text = text.substr(0, point);
  return seconds.value_or(0) / kSecondsPerDay;
}

std::string NotATime(const char* field, const std::string& text) {
  return std::string(field) + " \"" + text +
         "\" is no time: use YYYY-MM-DD hh:nn:ss.zzz, or hh:nn:ss.zzz for a time of the first day.";
}

std::string ReadX(const ChartViewEntry& entry, const StripChart& chart, ChartViewRequest& request) {
  if (entry.from != ChartViewEntry::kStartOfData) {
    request.start = ReadViewTime(entry.from, chart);
    if (!request.start) return NotATime("From", entry.from);
  }
  if (entry.byWidth) {
    const auto width = ParseNumber(entry.width);
    if (!width || !(*width > 0)) return "The width must be a number of seconds above 0.";
    const TimeStamp start = request.start ? *request.start : WholeDay(chart.Samples().TimeSpan().lowest);
    request.end = start + *width / kSecondsPerDay;
    return "";
  }
  if (entry.to != ChartViewEntry::kEndOfData) {
    request.end = ReadViewTime(entry.to, chart);
    if (!request.end) return NotATime("To", entry.to);
  }
  return "";
}

std::string ReadY(const ChartViewEntry& entry, ChartViewRequest& request) {
  if (!entry.specifyY) return "";
  request.yLow = ParseNumber(entry.yLow);
  request.yHigh = ParseNumber(entry.yHigh);
  if (!request.yLow || !request.yHigh) return "The bottom and the top of the y axis must be numbers.";
  if (*request.yLow > *request.yHigh) return "The top of the chart view must be above its bottom.";
  return "";
}

}  // namespace

std::optional<TimeStamp> ReadViewTime(std::string_view text, const StripChart& chart) {
  const std::string trimmed = Trim(text);
  std::string_view whole = trimmed;
  const auto milliseconds = TakeMilliseconds(whole);
  if (!milliseconds) return std::nullopt;
  if (const auto timeOfDay = ParseHMS(whole)) {
    const auto& [first, last] = chart.Samples().TimeSpan();
    const TimeStamp stamp = WholeDay(first) + *timeOfDay + *milliseconds;
    const bool nextDay = stamp < first && stamp + 1 <= last;
    return nextDay ? stamp + 1 : stamp;
  }
  const auto date = ParseDate(whole);
  return date ? std::optional(*date + *milliseconds) : std::nullopt;
}

std::string ViewTimeText(TimeStamp stamp) {
  return FormatDate(stamp, "YYYY-MM-DD hh:nn:ss.zzz");
}

ChartViewEntry DescribeView(const ChartWindow& window, double widthSeconds) {
  const StripChart& chart = window.chart;
  ChartViewEntry entry;
  if (chart.Count() > 0) {
    entry.from = ViewTimeText(chart.XAxisMin);
    entry.to = ViewTimeText(chart.XAxisMax);
  }
  entry.width = NumberText(widthSeconds);
  entry.autoY = chart.AutoScale;
  entry.yLow = NumberText(chart.YAxisMin);
  entry.yHigh = NumberText(chart.YAxisMax);
  return entry;
}

std::string ValuesOK(const ChartViewEntry& entry, const StripChart& chart, ChartViewRequest& request) {
  request = {};
  if (chart.Count() < 5) return "Not enough data loaded for Manual Chart View entry.";
  const std::string problem = ReadX(entry, chart, request);
  return problem.empty() ? ReadY(entry, request) : problem;
}

std::string ApplyChartView(const ChartViewEntry& entry, const ChartWindow& window, ViewCommands& commands) {
  ChartViewRequest request;
  const std::string problem = ValuesOK(entry, window.chart, request);
  if (!problem.empty()) return problem;
  if (!commands.SetChartView(request)) return window.view.Status.Text();
  if (entry.autoY && !entry.specifyY) commands.AutoScaleOn();
  return "";
}

}  // namespace tarvolt
