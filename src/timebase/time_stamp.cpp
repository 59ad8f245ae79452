// SPDX-License-Identifier: GPL-3.0-or-later
#include "timebase/time_stamp.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>

namespace tarvolt {
namespace {

using std::chrono::days;
using std::chrono::sys_days;

constexpr sys_days kDayZero = std::chrono::year(1899) / 12 / 30;
constexpr sys_days kFirstDay = std::chrono::year(100) / 1 / 1;
constexpr sys_days kEndDay = std::chrono::year(10000) / 1 / 1;
constexpr std::int64_t kMillisecondsPerDay = 86400000;

/// Milliseconds since day zero, nearest.
std::int64_t MillisecondsOf(TimeStamp stamp) {
  const double day = std::floor(stamp);
  // The day and the fraction apart: their product in one double would lose the last digits of the milliseconds.
  return static_cast<std::int64_t>(day) * kMillisecondsPerDay + std::llround((stamp - day) * kMillisecondsPerDay);
}

DateFields FieldsOfMilliseconds(std::int64_t milliseconds) {
  std::int64_t day = milliseconds / kMillisecondsPerDay;
  if (milliseconds % kMillisecondsPerDay < 0) --day;
  const int ofDay = static_cast<int>(milliseconds - day * kMillisecondsPerDay);
  const std::chrono::year_month_day date(kDayZero + days(day));
  return {.year = static_cast<int>(date.year()),
          .month = static_cast<int>(static_cast<unsigned>(date.month())),
          .day = static_cast<int>(static_cast<unsigned>(date.day())),
          .hour = ofDay / 3600000,
          .minute = ofDay / 60000 % 60,
          .second = ofDay / 1000 % 60,
          .millisecond = ofDay % 1000};
}

/// `number`, 0 or above, in at least `width` digits.
std::string Digits(int number, std::size_t width) {
  std::string digits;
  for (; number > 0 || digits.size() < width; number /= 10)
    digits.insert(digits.begin(), static_cast<char>('0' + number % 10));
  return digits;
}

/// Appends the field that `rest` (in lower case) begins with. The characters used up, 0 when it begins with none.
std::size_t AppendField(std::string_view rest, const DateFields& fields, std::string& text) {
  struct FieldPicture {
    std::string_view letters;
    int number;
  };
  const FieldPicture pictures[] = {{"yyyy", fields.year}, {"yy", fields.year % 100},  {"mm", fields.month},
                                   {"dd", fields.day},    {"hh", fields.hour},        {"nn", fields.minute},
                                   {"ss", fields.second}, {"zzz", fields.millisecond}};
  for (const FieldPicture& picture : pictures) {
    if (!rest.starts_with(picture.letters)) continue;
    text += Digits(picture.number, picture.letters.size());
    return picture.letters.size();
  }
  return 0;
}

}  // namespace

DateFields FieldsOf(TimeStamp stamp) {
  constexpr std::int64_t kFirst = (kFirstDay - kDayZero).count() * kMillisecondsPerDay;
  constexpr std::int64_t kEnd = (kEndDay - kDayZero).count() * kMillisecondsPerDay;
  constexpr double kFarthest = 1e7;  // days; beyond any year held, and small enough to count in milliseconds
  if (!(std::abs(stamp) < kFarthest)) return FieldsOfMilliseconds(0);
  const std::int64_t milliseconds = MillisecondsOf(stamp);
  return FieldsOfMilliseconds(milliseconds < kFirst || milliseconds >= kEnd ? 0 : milliseconds);
}

TimeStamp StampOf(const DateFields& fields) {
  const auto month = std::chrono::year(fields.year) / 1 + std::chrono::months(fields.month - 1);
  const sys_days date = sys_days(month / 1) + days(fields.day - 1);
  const auto day = static_cast<double>((date - kDayZero).count());
  return day + fields.hour / 24.0 + fields.minute / 1440.0 + fields.second / 86400.0 + fields.millisecond / 86400000.0;
}

double WholeDay(TimeStamp stamp) {
  return std::floor(stamp);
}

std::string FormatDate(TimeStamp stamp, std::string_view picture) {
  const DateFields fields = FieldsOf(stamp);
  std::string text;
  std::string letters(picture);
  std::transform(letters.begin(), letters.end(), letters.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 0x20) : c; });
  bool literal = false;
  for (std::size_t at = 0; at < picture.size();) {
    if (picture[at] == '\'') {
      literal = !literal;
      ++at;
      continue;
    }
    const std::size_t used = literal ? 0 : AppendField(std::string_view(letters).substr(at), fields, text);
    if (used == 0) text += picture[at];
    at += std::max<std::size_t>(used, 1);
  }
  return text;
}

std::string FileNameFromDate(TimeStamp stamp) {
  return FormatDate(stamp, "yymmddhhnnss");
}

}  // namespace tarvolt
