// SPDX-License-Identifier: GPL-3.0-or-later
#include "sim/sim_clock.h"

#include <algorithm>

namespace tarvolt {

namespace {

constexpr std::int64_t kMillisecondsPerDay = 86'400'000;

std::int64_t WallMilliseconds(const WallTime& time) {
  const std::chrono::year_month_day date{std::chrono::year(time.year), std::chrono::month(time.month),
                                         std::chrono::day(time.day)};
  const std::int64_t days = std::chrono::sys_days(date).time_since_epoch().count();
  const std::int64_t seconds = (time.hour * 60 + time.minute) * 60 + time.second;
  return days * kMillisecondsPerDay + seconds * 1000 + time.millisecond;
}

WallTime FieldsOfWall(std::int64_t wall) {
  const auto day = std::chrono::floor<std::chrono::days>(std::chrono::milliseconds(wall));
  const std::chrono::year_month_day date{std::chrono::sys_days(day)};
  const int inDay = static_cast<int>(wall - day.count() * kMillisecondsPerDay);
  WallTime fields;
  fields.year = static_cast<int>(date.year());
  fields.month = static_cast<int>(static_cast<unsigned>(date.month()));
  fields.day = static_cast<int>(static_cast<unsigned>(date.day()));
  fields.hour = inDay / 3'600'000;
  fields.minute = inDay / 60'000 % 60;
  fields.second = inDay / 1000 % 60;
  fields.millisecond = inDay % 1000;
  return fields;
}

}  // namespace

SimClock::SimClock(const WallTime& ut) : wallOffset_(WallMilliseconds(ut)) {}

WallTime SimClock::LocalNow() {
  if (++readsSinceProgress_ > kReadsBeforeSpin) ++now_;
  return FieldsOfWall(UtWall() - std::int64_t{WestMinutes()} * 60'000);
}

WallTime SimClock::UtNow() const {
  return FieldsOfWall(UtWall());
}

ZoneInfo SimClock::Zone() {
  ZoneInfo info;
  info.biasMinutes = zone_.biasMinutes;
  info.standardBiasMinutes = zone_.standardBiasMinutes;
  info.daylightBiasMinutes = zone_.daylightBiasMinutes;
  if (changes_.empty()) {
    info.state = ZoneState::NoDaylightInformation;
  } else {
    info.state = DaylightInForce() ? ZoneState::Daylight : ZoneState::Standard;
  }
  return info;
}

void SimClock::SetZone(const SimZone& zone) {
  zone_ = zone;
  changes_.clear();
  for (const SimZone::Change& change : zone.changes) {
    changes_.push_back({WallMilliseconds(change.ut), change.daylight});
  }
}

void SimClock::AdvanceTo(std::int64_t when) {
  now_ = std::max(now_, when);
}

bool SimClock::DaylightInForce() const {
  if (changes_.empty()) return false;
  bool daylight = !changes_.front().daylight;
  for (const ChangeInstant& change : changes_) {
    if (change.wall > UtWall()) break;
    daylight = change.daylight;
  }
  return daylight;
}

int SimClock::WestMinutes() const {
  return zone_.biasMinutes + (DaylightInForce() ? zone_.daylightBiasMinutes : zone_.standardBiasMinutes);
}

}  // namespace tarvolt
