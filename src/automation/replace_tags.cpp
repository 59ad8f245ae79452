// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/replace_tags.h"

#include "text/ansi.h"
#include "text/number.h"
#include "timebase/time_base.h"

namespace tarvolt {
namespace {

constexpr std::string_view kAddress = "[INTERNET IP]";
constexpr std::string_view kSampleNumber = "[SAMPLE NUMBER]";
constexpr std::string_view kDateFormat = "[DATE FORMAT ";
constexpr std::string_view kDateTime = "[DATE TIME]";

bool Holds(const std::string& text, std::string_view tag) {
  return text.find(tag) != std::string::npos;
}

std::string WithDateFormat(std::string text, TimeStamp now) {
  const std::size_t tag = text.find(kDateFormat);
  if (tag == std::string::npos) return text;
  const std::size_t begin = tag + kDateFormat.size();
  const std::size_t end = text.find(']', begin);
  if (end != std::string::npos) {
    text.replace(tag, end + 1 - tag, FormatDate(now, std::string_view(text).substr(begin, end - begin)));
  }
  return ReplaceAll(ReplaceAll(text, kDateFormat, ""), "]", "");
}

}  // namespace

// The address is looked up only where it is asked for: the system may have to be asked.
std::string ReplaceTags(std::string_view text, const Host& host, const RunState& run) {
  std::string expanded(text);
  if (Holds(expanded, kAddress)) expanded = ReplaceAll(expanded, kAddress, host.sockets.LocalAddress());
  if (Holds(expanded, kSampleNumber)) {
    expanded = ReplaceAll(expanded, kSampleNumber, WireNumber(static_cast<double>(run.TotalSamples)));
  }
  if (!Holds(expanded, "[DATE ")) return expanded;
  const TimeStamp now = NowPrecise(host.clock) + run.time.utOffset;
  expanded = WithDateFormat(std::move(expanded), now);
  return ReplaceAll(expanded, kDateTime, FormatDate(now, "YYMMDDHHnnSS"));
}

}  // namespace tarvolt
