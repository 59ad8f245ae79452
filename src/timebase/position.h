// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace tarvolt {

/// Stands for an unset or unreadable position.
inline constexpr double kUnsetPosition = -999;

/// Degrees, north positive, from "d", "d:m" or "d:m:s" with "." or "," for the decimal point. -999 outside
/// -90..90; a text without ":" is not range-tested (meant).
double ParseLatitude(std::string_view text);

/// Degrees, west positive, from the same forms; a negative one of the forms with ":" becomes 360 minus its value.
/// -999 outside 0..360; a text without ":" is neither wrapped nor range-tested (meant).
double ParseLongitude(std::string_view text);

/// The text, or the empty string when it does not parse.
std::string CheckLatitude(std::string_view text);
std::string CheckLongitude(std::string_view text);

/// "d:mm:ss.s". Carries a small upward bias so that whole minutes do not fall just short (meant). A value between
/// -1 and 0 loses its sign, and a latitude that rounds up to 90 shows 0 degrees, a longitude that rounds up to 360
/// likewise (both meant). A rounding up to the next degree goes away from zero. Through the bias a value less than half
/// a second short of a whole minute may show that minute and negative seconds; it reads back as it was.
std::string FormatLatitude(double degrees);
std::string FormatLongitude(double degrees);

/// The longitude to store for an entered value: as it is with `displayWest`, else 360 minus it; 360 becomes 0. Text
/// that does not parse stays unset.
double LongitudeFromEntry(std::string_view text, bool displayWest);

/// The stored longitude as shown: "d:mm:ss.s W", or 360 minus it as "d:mm:ss.s E"; "unknown" when unset.
std::string LongitudeForDisplay(double userLng, bool displayWest);

/// Val of a text that may have "," for the decimal point; 0 for empty text.
double ValWithComma(std::string_view text);

/// The character that the machine's locale puts in 1.1.
char DecimalSeparator();

}  // namespace tarvolt
