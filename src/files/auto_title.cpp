// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/auto_title.h"

#include <string_view>
#include <utility>
#include <vector>

#include "text/ansi.h"
#include "timebase/time_stamp.h"

namespace tarvolt {
namespace {

constexpr const char* kDefaultFormat = "%name  %date %time";

using Tags = std::vector<std::pair<std::string_view, std::string>>;

// A run that has no sample yet starts now.
Tags TagsOf(const ChartWindow& window) {
  const RunState& run = window.run;
  const TimeStamp start = window.chart.Count() > 0 ? window.chart.GetTime(0) : run.StartStamp;
  return {{"%name", Trim(window.header.localName)},
          {"%observer", Trim(window.header.author)},
          {"%date", FormatDate(start, "YYYY/MM/DD")},
          {"%time", FormatDate(start, "hh:nn:ss")},
          {"%base", run.ChartIsLMST ? "LMST"
                    : run.ChartIsUT ? "UT"
                                    : "Local"}};
}

}  // namespace

std::string AutoTitleText(const ChartWindow& window, const std::string& format) {
  const Tags tags = TagsOf(window);
  std::string_view rest = format.empty() ? std::string_view(kDefaultFormat) : std::string_view(format);
  std::string title;
  while (!rest.empty()) {
    std::string_view taken = rest.substr(0, 1);
    std::string_view text = taken;
    for (const auto& [tag, meaning] : tags) {
      if (!rest.starts_with(tag)) continue;
      taken = tag;
      text = meaning;
    }
    title += text;
    rest.remove_prefix(taken.size());
  }
  return title;
}

void DoAutoTitle(const Session& session, ChartWindow& window) {
  if (!session.settings.chart.AutoTitle) return;
  window.chart.Title = AutoTitleText(window, session.settings.chart.AutoTitleFormat);
  ++window.chart.RepaintRequests;
}

}  // namespace tarvolt
