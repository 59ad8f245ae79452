// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "timebase/time_stamp.h"

namespace tarvolt {

/// Fraction of a day for exactly 8 characters "hh:mm:ss" that are a time of day; nothing for anything else.
std::optional<double> ParseHMS(std::string_view text);

/// "00:00:00.000" from the fraction of the day, to the nearest millisecond.
std::string FormatElapsedHMS(TimeStamp stamp);

/// "###00:00:00" from decimal hours, hours of any width; minutes and seconds above 59 are held at 59. Minutes and
/// seconds are cut, with a small bias upwards so that whole ones do not fall short.
std::string FormatDuration(double hours);

/// The chart's cursor read-out: "Time: hh:nn:ss  Year: YYYY   Month: MM  Day: DD".
std::string FormatChartTime(TimeStamp stamp);

/// The same stamp merely formatted by a picture of FormatDate.
std::string FormatChartTime(TimeStamp stamp, std::string_view picture);

/// The stamp in a data file's name (prefix letters, then twelve digits), with or without folders; nothing when
/// the name holds none. Years 00 to 29 are 2000 to 2029, 30 to 99 are 1930 to 1999. Hour 24, and a day that its month
/// has not, run on into the next day.
std::optional<TimeStamp> DateFromFileName(std::string_view fileName);

/// A date and time typed by a person or given on a command line, "month/day/year hour:minute:second" or
/// "year-month-day hour:minute:second", with the year in two digits (read as in file names) or four and the time
/// optional; nothing when there is no such moment.
std::optional<TimeStamp> ParseDate(std::string_view text);

/// The picture of the x axis: "hh:nn:ss" or "hh:nn:ss.zzz", with a literal " LMST" for a sidereal chart.
std::string AxisPicture(bool milliseconds, bool lmst);

}  // namespace tarvolt
