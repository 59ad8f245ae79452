// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/channel_equations/printed_number.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

#include "text/number.h"

namespace tarvolt {
namespace {

/// Whole numbers up to here are doubles, and so their quotient with a power of ten below is rounded once, as a reader
/// of the digits does it.
constexpr double kWholeLimit = 9007199254740992.0;

constexpr std::array<double, 17> kTens = {1e0, 1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7, 1e8,
                                          1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16};
constexpr int kMostDigits = 17;

/// The fewest digits that tell a double from all others: `digits` times ten to the power -`places`.
struct ShortestDigits {
  std::uint64_t digits = 0;
  int places = 0;
};

ShortestDigits DigitsOf(double magnitude) {
  std::array<char, 32> text;
  const auto end = std::to_chars(text.data(), text.data() + text.size(), magnitude, std::chars_format::scientific).ptr;
  ShortestDigits result;
  const char* at = text.data();
  int behindPoint = 0;
  bool point = false;
  for (; *at != 'e'; ++at) {
    if (*at == '.') {
      point = true;
      continue;
    }
    result.digits = result.digits * 10 + static_cast<std::uint64_t>(*at - '0');
    behindPoint += point ? 1 : 0;
  }
  int exponent = 0;
  ++at;
  std::from_chars(*at == '+' ? at + 1 : at, end, exponent);
  result.places = behindPoint - exponent;
  return result;
}

std::uint64_t TenToThe(int power) {
  std::uint64_t result = 1;
  for (int i = 0; i < power; ++i) result *= 10;
  return result;
}

const char* PictureOf(int places) {
  return places == kDayPlaces ? kDayPicture : kValuePicture;
}

}  // namespace

double AsPrinted(double value, int places) {
  const double magnitude = std::abs(value);
  const double scale = kTens[static_cast<std::size_t>(places)];
  // Seventeen digits tell every double: with enough of them in front of the point none is cut off behind it.
  if (magnitude >= kTens[16] / scale) return value;
  const double whole = std::nearbyint(magnitude * scale);
  if (whole < kWholeLimit && whole / scale == magnitude) return value == 0 ? 0 : value;

  const ShortestDigits shortest = DigitsOf(magnitude);
  if (shortest.places <= places) return value;
  const int cut = shortest.places - places;
  if (cut > kMostDigits) return 0;
  const std::uint64_t unit = TenToThe(cut);
  const std::uint64_t left = shortest.digits / unit + (shortest.digits % unit >= unit / 2 ? 1 : 0);
  if (left == 0) return 0;
  if (static_cast<double>(left) >= kWholeLimit) return Val(FormatNumber(value, PictureOf(places)));
  return std::copysign(static_cast<double>(left) / scale, value);
}

WirePrint AsWirePrinted(double value) {
  const std::string text = WireNumber(value);
  return {Val(text), text.find('E') == std::string::npos};
}

}  // namespace tarvolt
