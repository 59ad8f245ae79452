// SPDX-License-Identifier: GPL-3.0-or-later
#include "logs/observer_log.h"

#include "text/ansi.h"
#include "timebase/time_base.h"
#include "timebase/time_text.h"

namespace tarvolt {
namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kVerbose = "VERBOSE";

}  // namespace

TimeStamp OLogTime(Clock& clock, const Settings& settings) {
  return NowPrecise(clock) - (settings.observerLog.OLogUT ? settings.place.TZ / 24 : 0);
}

std::string GetTimeStamp(Clock& clock, const Settings& settings) {
  const TimeStamp now = OLogTime(clock, settings);
  const std::string text = settings.observerLog.oDateFormat == kVerbose
                               ? FormatChartTime(now)
                               : FormatDate(now, "HH:NN:SS " + settings.observerLog.oDateFormat);
  return "<" + text + (settings.observerLog.OLogUT ? " UT>" : ">") + std::string(kLineEnd);
}

std::string NameOLogFile(Clock& clock, const Settings& settings) {
  return FormatDate(OLogTime(clock, settings), "YYMMDDHHnn") + "Log.txt";
}

std::optional<std::string> OLogDateFormat(std::string_view entered) {
  const std::string format = Upper(Trim(entered));
  if (format == "MM/DD/YYYY" || format == "DD/MM/YYYY" || format == kVerbose) return format;
  return std::nullopt;
}

std::string OnNewLine(std::string_view tail, std::string_view text) {
  const bool inMidLine = tail.size() >= 2 && !tail.ends_with(kLineEnd);
  return std::string(inMidLine ? kLineEnd : "").append(text);
}

std::string IdentityBlock(IdentityMode mode, const StationIdentity& station) {
  std::string block;
  const auto add = [&block](std::string_view caption, std::string_view value) {
    block.append(caption).append(value).append(kLineEnd);
  };
  add(mode == IdentityMode::Local ? "Local Identity Information" : "Client Connection Identity Information", "");
  add("Local Name: ", Trim(station.name));
  add("Observer: ", Trim(station.observer));
  add("Latitude: ", station.latitude);
  add("Longitude: ", station.longitude);
  add("Location: ", Trim(station.location));
  add("Notes: ", std::string_view(station.notes).substr(0, station.notes.find("*[[*")));
  return block + "End of Identity Information";
}

}  // namespace tarvolt
