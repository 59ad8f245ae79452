// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/system_clock.h"

#include <algorithm>
#include <optional>

namespace tarvolt {
namespace {

std::optional<std::tm> Broken(std::time_t moment) {
  ::tzset();  // localtime_r alone would keep the zone of the program's start
  std::tm fields{};
  if (::localtime_r(&moment, &fields) == nullptr) return std::nullopt;
  return fields;
}

}  // namespace

WallTime LocalTimeAt(const timespec& moment) {
  const auto fields = Broken(moment.tv_sec);
  if (!fields) return {};
  WallTime time;
  time.year = fields->tm_year + 1900;
  time.month = fields->tm_mon + 1;
  time.day = fields->tm_mday;
  time.hour = fields->tm_hour;
  time.minute = fields->tm_min;
  time.second = std::min(fields->tm_sec, 59);  // zones that count leap seconds have a second 60
  time.millisecond = static_cast<int>(moment.tv_nsec / 1'000'000);
  return time;
}

ZoneInfo ZoneAt(std::time_t moment) {
  const auto fields = Broken(moment);
  if (!fields || fields->tm_isdst < 0) return {};
  ZoneInfo zone;
  const int minutesWest = -static_cast<int>(fields->tm_gmtoff / 60);
  if (fields->tm_isdst == 0) {
    zone.state = ::daylight != 0 ? ZoneState::Standard : ZoneState::NoDaylightInformation;
    zone.biasMinutes = minutesWest;
    return zone;
  }
  zone.state = ZoneState::Daylight;
  zone.biasMinutes = static_cast<int>(::timezone / 60);
  zone.daylightBiasMinutes = minutesWest - zone.biasMinutes;
  return zone;
}

WallTime SystemClock::LocalNow() {
  timespec now{};
  ::clock_gettime(CLOCK_REALTIME, &now);
  return LocalTimeAt(now);
}

ZoneInfo SystemClock::Zone() {
  return ZoneAt(std::time(nullptr));
}

double SystemClock::MonotonicMilliseconds() {
  return MillisecondsSinceBoot();
}

double MillisecondsSinceBoot() {
  timespec now{};
  ::clock_gettime(CLOCK_BOOTTIME, &now);
  return 1e3 * static_cast<double>(now.tv_sec) + 1e-6 * static_cast<double>(now.tv_nsec);
}

}  // namespace tarvolt
