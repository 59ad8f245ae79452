// SPDX-License-Identifier: GPL-3.0-or-later
#include "timebase/time_text.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>

#include "text/ansi.h"
#include "text/number.h"

namespace tarvolt {
namespace {

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

/// The number of a text of digits alone, at most nine of them.
std::optional<int> WholeNumber(std::string_view digits) {
  if (digits.empty() || digits.size() > 9) return std::nullopt;
  int number = 0;
  for (const char c : digits) {
    if (!IsDigit(c)) return std::nullopt;
    number = number * 10 + (c - '0');
  }
  return number;
}

int YearOfTwoDigits(int year) {
  return year < 30 ? 2000 + year : 1900 + year;
}

/// Three numbers of digits with `separator` between them.
std::optional<std::array<int, 3>> ThreeNumbers(std::string_view text, char separator) {
  const std::size_t first = text.find(separator);
  if (first == std::string_view::npos) return std::nullopt;
  const std::size_t second = text.find(separator, first + 1);
  if (second == std::string_view::npos) return std::nullopt;
  const auto a = WholeNumber(text.substr(0, first));
  const auto b = WholeNumber(text.substr(first + 1, second - first - 1));
  const auto c = WholeNumber(text.substr(second + 1));
  if (!a || !b || !c) return std::nullopt;
  return std::array<int, 3>{*a, *b, *c};
}

/// The year of its typed digits: two mean the years around now, four mean themselves.
std::optional<int> YearOfText(int year, std::size_t digits) {
  if (digits == 2) return YearOfTwoDigits(year);
  if (digits == 4 && year >= 100) return year;
  return std::nullopt;
}

/// Fills the date from "month/day/year" or "year-month-day". False when there is no such day.
bool TakeDate(std::string_view text, DateFields& fields) {
  std::optional<int> year;
  if (const auto slashes = ThreeNumbers(text, '/')) {
    year = YearOfText((*slashes)[2], text.size() - text.rfind('/') - 1);
    fields.month = (*slashes)[0];
    fields.day = (*slashes)[1];
  } else if (const auto dashes = ThreeNumbers(text, '-')) {
    year = YearOfText((*dashes)[0], text.find('-'));
    fields.month = (*dashes)[1];
    fields.day = (*dashes)[2];
  }
  if (!year || fields.month > 12 || fields.day > 31) return false;
  fields.year = *year;
  return (std::chrono::year(fields.year) / fields.month / fields.day).ok();
}

/// Fills the time of day from "hour:minute:second". False when there is no such time.
bool TakeTime(std::string_view text, DateFields& fields) {
  const auto time = ThreeNumbers(text, ':');
  if (!time || (*time)[0] > 23 || (*time)[1] > 59 || (*time)[2] > 59) return false;
  fields.hour = (*time)[0];
  fields.minute = (*time)[1];
  fields.second = (*time)[2];
  return true;
}

/// The first twelve characters of a name's stamp, without folders and prefix letters.
std::string_view StampPartOfName(std::string_view name) {
  const std::size_t folder = name.find_last_of("\\/");
  if (folder != std::string_view::npos) name.remove_prefix(folder + 1);
  while (name.size() > 10 && static_cast<unsigned char>(name[0]) > '9') name.remove_prefix(1);
  return name.substr(0, 12);
}

}  // namespace

std::optional<double> ParseHMS(std::string_view text) {
  DateFields fields;
  if (text.size() != 8 || text[2] != ':' || text[5] != ':' || !TakeTime(text, fields)) return std::nullopt;
  return fields.hour / 24.0 + fields.minute / 1440.0 + fields.second / 86400.0;
}

std::string FormatElapsedHMS(TimeStamp stamp) {
  return FormatDate(stamp, "hh:nn:ss.zzz");
}

std::string FormatDuration(double hours) {
  if (!std::isfinite(hours)) return FormatNumber(hours, "###00");
  double whole = 0;
  const double rest = std::modf(std::abs(hours), &whole);
  const double minutes = std::trunc(rest * 60.001);
  const double seconds = std::trunc((rest - minutes / 60) * 3600.0 + 0.001);
  return (hours < 0 ? "-" : "") + FormatNumber(whole, "###00") + ":" + FormatNumber(std::min(minutes, 59.0), "00") +
         ":" + FormatNumber(std::min(seconds, 59.0), "00");
}

std::string FormatChartTime(TimeStamp stamp) {
  return FormatDate(stamp, "'Time: 'hh:nn:ss'  Year: 'yyyy'   Month: 'mm'  Day: 'dd");
}

std::string FormatChartTime(TimeStamp stamp, std::string_view picture) {
  return FormatDate(stamp, picture);
}

std::optional<TimeStamp> DateFromFileName(std::string_view fileName) {
  constexpr std::size_t kDigits = 12;
  if (fileName.size() < kDigits) return std::nullopt;
  const std::string_view digits = StampPartOfName(fileName);
  if (digits.size() != kDigits || !std::all_of(digits.begin(), digits.end(), IsDigit)) return std::nullopt;

  const auto pair = [&](std::size_t place) { return *WholeNumber(digits.substr(place * 2, 2)); };
  const DateFields fields{.year = YearOfTwoDigits(pair(0)),
                          .month = pair(1),
                          .day = pair(2),
                          .hour = pair(3),
                          .minute = pair(4),
                          .second = pair(5)};
  if (fields.month < 1 || fields.month > 12 || fields.day < 1 || fields.day > 31) return std::nullopt;
  // Hour 24, and a day that its month has not, run on into the next day (meant).
  if (fields.hour > 24 || fields.minute > 59 || fields.second > 59) return std::nullopt;
  return StampOf(fields);
}

std::optional<TimeStamp> ParseDate(std::string_view text) {
  const std::string trimmed = Trim(text);
  const std::size_t blank = trimmed.find(' ');
  DateFields fields;
  if (!TakeDate(std::string_view(trimmed).substr(0, blank), fields)) return std::nullopt;
  if (blank != std::string::npos && !TakeTime(Trim(std::string_view(trimmed).substr(blank)), fields))
    return std::nullopt;
  return StampOf(fields);
}

std::string AxisPicture(bool milliseconds, bool lmst) {
  std::string picture = milliseconds ? "hh:nn:ss.zzz" : "hh:nn:ss";
  if (lmst) picture += "' LMST'";
  return picture;
}

}  // namespace tarvolt
