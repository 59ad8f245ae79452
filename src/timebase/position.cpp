// SPDX-License-Identifier: GPL-3.0-or-later
#include "timebase/position.h"

#include <clocale>
#include <cmath>

#include "text/ansi.h"
#include "text/number.h"

namespace tarvolt {
namespace {

/// "d:m" or "d:m:s" as degrees without a sign; `firstColon` is the place of the first ":".
double DegreesOfParts(std::string_view text, std::size_t firstColon) {
  const double degrees = std::abs(static_cast<double>(ValLong(text.substr(0, firstColon))));
  const std::string_view rest = text.substr(firstColon + 1);
  const std::size_t secondColon = rest.find(':');
  if (secondColon == std::string_view::npos) return ValWithComma(rest) / 60 + degrees;
  const double minutes = ValLong(rest.substr(0, secondColon));
  return minutes / 60 + degrees + ValWithComma(rest.substr(secondColon + 1)) / 3600;
}

/// What latitude and longitude differ in when they are written.
struct Axis {
  double minuteFactor;  ///< of the fraction of a degree, in minutes times minuteDivisor
  double minuteDivisor;
  double secondFactor;
  double limit;  ///< degrees that a rounding up shows as 0
};

// 6000.5 and 60000.5, 3600.005 and 3600.05: the bias upwards is meant, 6000 and 3600 fall short of whole minutes.
constexpr Axis kLatitude{6000.5, 100, 3600.005, 90};
constexpr Axis kLongitude{60000.5, 1000, 3600.05, 360};

std::string FormatPosition(double x, const Axis& axis) {
  if (!std::isfinite(x)) return NumberText(x);
  const double whole = std::trunc(x);
  const double fraction = std::abs(std::abs(whole) - std::abs(x));
  double minutes = std::trunc(std::trunc(fraction * axis.minuteFactor) / axis.minuteDivisor);
  double seconds = (fraction - minutes / 60) * axis.secondFactor;

  // The sign of a value between -1 and 0 is lost here (meant).
  std::string degrees = FormatNumber(whole, "0");
  if (Val(FormatNumber(seconds, "00.0")) >= 60) {
    seconds -= 60;
    minutes += 1;
  }
  if (Val(FormatNumber(minutes, "00")) >= 60) {
    minutes = 0;
    const double next = std::abs(whole) + 1;
    // The limit itself shows as 0 (meant).
    degrees = FormatNumber(next >= axis.limit ? 0 : std::copysign(next, whole), "0");
  }
  return degrees + ":" + FormatNumber(minutes, "00") + ":" + FormatNumber(seconds, "00.0");
}

}  // namespace

double ParseLatitude(std::string_view text) {
  const std::string trimmed = Trim(text);
  const std::size_t colon = trimmed.find(':');
  if (colon == std::string::npos) return ValWithComma(trimmed);
  const double sign = trimmed.starts_with('-') ? -1 : 1;
  const double degrees = DegreesOfParts(trimmed, colon) * sign;
  return degrees >= -90 && degrees <= 90 ? degrees : kUnsetPosition;
}

double ParseLongitude(std::string_view text) {
  std::string trimmed = Trim(text);
  const bool negative = trimmed.starts_with('-');
  if (negative || trimmed.starts_with('+')) trimmed.erase(0, 1);
  const std::size_t colon = trimmed.find(':');
  if (colon == std::string::npos) return negative ? -ValWithComma(trimmed) : ValWithComma(trimmed);
  const double degrees = DegreesOfParts(trimmed, colon);
  const double west = negative ? 360 - degrees : degrees;
  return west >= 0 && west <= 360 ? west : kUnsetPosition;
}

std::string CheckLatitude(std::string_view text) {
  return ParseLatitude(text) <= kUnsetPosition ? std::string() : std::string(text);
}

std::string CheckLongitude(std::string_view text) {
  return ParseLongitude(text) <= kUnsetPosition ? std::string() : std::string(text);
}

std::string FormatLatitude(double degrees) {
  return FormatPosition(degrees, kLatitude);
}

std::string FormatLongitude(double degrees) {
  return FormatPosition(degrees, kLongitude);
}

double LongitudeFromEntry(std::string_view text, bool displayWest) {
  const double entered = ParseLongitude(text);
  if (entered <= kUnsetPosition) return kUnsetPosition;
  const double west = displayWest ? entered : 360 - entered;
  return west == 360 ? 0 : west;
}

std::string LongitudeForDisplay(double userLng, bool displayWest) {
  if (userLng <= kUnsetPosition) return "unknown";
  return displayWest ? FormatLongitude(userLng) + " W" : FormatLongitude(360 - userLng) + " E";
}

double ValWithComma(std::string_view text) {
  return Val(ReplaceAll(text, ",", "."));
}

char DecimalSeparator() {
  const char* separator = std::localeconv()->decimal_point;
  return separator != nullptr && *separator != '\0' ? *separator : '.';
}

}  // namespace tarvolt
