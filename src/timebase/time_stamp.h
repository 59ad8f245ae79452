// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

#include "platform/clock.h"

namespace tarvolt {

/// Whole days since midnight of 30 December 1899, the time of day as the fraction of a day.
using TimeStamp = double;

inline constexpr double kSecondsPerDay = 86400;
inline constexpr double kMillisecond = 1 / (1000 * kSecondsPerDay);  ///< of a stamp

/// The calendar fields of a stamp; the same record as a clock's reading.
using DateFields = WallTime;

/// Breaks a stamp into its fields, rounded to the nearest millisecond. A stamp outside the years 100 to 9999,
/// or one that is not a number, gives the fields of stamp 0.
DateFields FieldsOf(TimeStamp stamp);

/// The stamp of calendar fields: date + hours/24 + minutes/1440 + seconds/86400 + milliseconds/86400000. A month or day
/// beyond its range runs on into the next.
TimeStamp StampOf(const DateFields& fields);

/// The whole-day part, towards minus infinity.
double WholeDay(TimeStamp stamp);

/// Formats a stamp by a picture. Letters in either case: "yyyy", "yy", "mm", "dd", "hh", "nn" (minutes), "ss",
/// "zzz" (milliseconds); text in single quotes is literal, any other character stands for itself. Seconds are
/// cut, not rounded, unless "zzz" is in the picture, as a clock shows them; a stamp is first rounded to the
/// millisecond.
std::string FormatDate(TimeStamp stamp, std::string_view picture);

/// Twelve digits: year, month, day, hour, minute, second.
std::string FileNameFromDate(TimeStamp stamp);

}  // namespace tarvolt
