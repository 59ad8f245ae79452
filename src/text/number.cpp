// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/number.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

namespace tarvolt {
namespace {

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

int HexDigit(char c) {
  if (IsDigit(c)) return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

/// The characters of a text one after the other, without its blanks and tabs.
class Reader {
 public:
  explicit Reader(std::string_view text) : text_(text) { SkipBlanks(); }

  /// The next character, or 0 at the end.
  char Peek() const { return at_ < text_.size() ? text_[at_] : '\0'; }
  char Take() {
    const char c = Peek();
    ++at_;
    SkipBlanks();
    return c;
  }

 private:
  void SkipBlanks() {
    while (at_ < text_.size() && (text_[at_] == ' ' || text_[at_] == '\t')) ++at_;
  }

  std::string_view text_;
  std::size_t at_ = 0;
};

/// Takes the digits at the reader's place; their count.
std::size_t TakeDigits(Reader& reader, std::string& digits) {
  std::size_t count = 0;
  for (; IsDigit(reader.Peek()); ++count) digits += reader.Take();
  return count;
}

/// The exponent at the reader's place in the form that the standard library reads; empty when there is none.
std::string TakeExponent(Reader reader) {
  const char letter = reader.Peek();
  if (letter != 'E' && letter != 'e' && letter != 'D' && letter != 'd') return {};
  reader.Take();
  std::string exponent = "e";
  if (reader.Peek() == '-' || reader.Peek() == '+') exponent += reader.Take();
  return TakeDigits(reader, exponent) > 0 ? exponent : std::string();
}

double TakeHexadecimal(Reader& reader) {
  reader.Take();
  double value = 0;
  for (int digit = HexDigit(reader.Peek()); digit >= 0; digit = HexDigit(reader.Peek())) {
    value = value * 16 + digit;
    reader.Take();
  }
  return std::isfinite(value) ? value : 0;
}

double TakeDecimal(Reader& reader) {
  std::string number;
  if (reader.Peek() == '-' || reader.Peek() == '+') {
    if (reader.Take() == '-') number = "-";
  }
  std::size_t digits = TakeDigits(reader, number);
  if (reader.Peek() == '.') {
    number += reader.Take();
    digits += TakeDigits(reader, number);
  }
  if (digits == 0) return 0;
  number += TakeExponent(reader);
  double value = 0;
  const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
  return result.ec == std::errc() ? value : 0;
}

/// A finite number in decimal: 0.d1d2d3... times ten to the power `point`. Zero has no digits.
struct Decimal {
  bool negative = false;
  std::string digits;  ///< neither the first nor the last is "0"
  int point = 0;       ///< digits in front of the decimal point; may lie outside `digits`
};

void DropOuterZeros(Decimal& decimal) {
  const std::size_t last = decimal.digits.find_last_not_of('0');
  if (last == std::string::npos) {
    decimal = Decimal();
    return;
  }
  decimal.digits.resize(last + 1);
}

/// The digits of `value`: `significant` of them, or as few as read back as the same number when it is 0.
Decimal DecimalOf(double value, int significant) {
  std::array<char, 64> buffer;
  const double magnitude = std::abs(value);
  char* const end = buffer.data() + buffer.size();
  const auto result = significant > 0
                          ? std::to_chars(buffer.data(), end, magnitude, std::chars_format::scientific, significant - 1)
                          : std::to_chars(buffer.data(), end, magnitude, std::chars_format::scientific);
  const std::string_view text(buffer.data(), static_cast<std::size_t>(result.ptr - buffer.data()));
  const std::size_t e = text.find('e');

  Decimal decimal;
  decimal.negative = value < 0;
  for (const char c : text.substr(0, e)) {
    if (IsDigit(c)) decimal.digits += c;
  }
  const char* exponent = text.data() + e + (text[e + 1] == '+' ? 2 : 1);
  std::from_chars(exponent, result.ptr, decimal.point);
  ++decimal.point;
  DropOuterZeros(decimal);
  return decimal;
}

/// Rounds half away from zero to `places` digits behind the point.
void RoundToPlaces(Decimal& decimal, int places) {
  const int keep = decimal.point + places;
  if (keep >= static_cast<int>(decimal.digits.size())) return;
  const bool up = keep >= 0 && decimal.digits[static_cast<std::size_t>(keep)] >= '5';
  decimal.digits.resize(static_cast<std::size_t>(std::max(keep, 0)));
  if (up) {
    std::size_t nines = decimal.digits.size();
    while (nines > 0 && decimal.digits[nines - 1] == '9') --nines;
    decimal.digits.resize(nines);
    if (nines > 0) {
      ++decimal.digits[nines - 1];
    } else {
      decimal.digits = "1";
      ++decimal.point;
    }
  }
  DropOuterZeros(decimal);
}

/// The digits in front of the point; none for a number below 1.
std::string WholeDigits(const Decimal& decimal) {
  if (decimal.point <= 0) return {};
  const auto width = static_cast<std::size_t>(decimal.point);
  std::string whole = decimal.digits.substr(0, width);
  whole.resize(width, '0');
  return whole;
}

/// The digits behind the point; none for a whole number.
std::string FractionDigits(const Decimal& decimal) {
  if (decimal.point <= 0) return std::string(static_cast<std::size_t>(-decimal.point), '0') + decimal.digits;
  const auto whole = static_cast<std::size_t>(decimal.point);
  return whole < decimal.digits.size() ? decimal.digits.substr(whole) : std::string();
}

std::string ExponentText(const Decimal& decimal) {
  std::string text = decimal.digits.substr(0, 1);
  if (decimal.digits.size() > 1) text += "." + decimal.digits.substr(1);
  const int exponent = decimal.point - 1;
  text += exponent < 0 ? "E-" : "E+";
  if (std::abs(exponent) < 10) text += "0";
  return text + NumberText(static_cast<std::int64_t>(std::abs(exponent)));
}

std::optional<std::string> TextOfNonFinite(double value) {
  if (std::isnan(value)) return "NaN";
  if (std::isinf(value)) return value < 0 ? "-Inf" : "Inf";
  return std::nullopt;
}

/// A picture taken apart. What stands before and behind the placeholders is literal.
struct Picture {
  std::string_view before;
  std::string_view whole;
  std::string_view fraction;
  std::string_view behind;
  bool point = false;
  bool thousands = false;
};

Picture TakeApart(std::string_view text) {
  Picture picture;
  std::size_t start = text.find_first_of("0#");
  if (start == std::string_view::npos) {
    picture.before = text;
    return picture;
  }
  if (start > 0 && text[start - 1] == '.') --start;
  picture.before = text.substr(0, start);
  text.remove_prefix(start);

  picture.whole = text.substr(0, text.find_first_not_of("0#,"));
  picture.thousands = picture.whole.find(',') != std::string_view::npos;
  text.remove_prefix(picture.whole.size());

  picture.point = !text.empty() && text[0] == '.';
  if (picture.point) {
    text.remove_prefix(1);
    picture.fraction = text.substr(0, text.find_first_not_of("0#"));
    text.remove_prefix(picture.fraction.size());
  }
  picture.behind = text;
  return picture;
}

/// How many digits the leftmost "0" of the whole part asks for.
std::size_t LeastWholeDigits(std::string_view whole) {
  const std::size_t zero = whole.find('0');
  if (zero == std::string_view::npos) return 0;
  return static_cast<std::size_t>(
      std::count_if(whole.begin() + static_cast<std::ptrdiff_t>(zero), whole.end(), [](char c) { return c != ','; }));
}

std::string GroupThousands(const std::string& digits) {
  std::string grouped;
  for (std::size_t i = 0; i < digits.size(); ++i) {
    if (i > 0 && (digits.size() - i) % 3 == 0) grouped += ',';
    grouped += digits[i];
  }
  return grouped;
}

template <typename Integer>
Integer RoundTo(double value) {
  if (std::isnan(value)) return 0;
  constexpr double kLowest = std::numeric_limits<Integer>::min();
  constexpr double kHighest = std::numeric_limits<Integer>::max();
  return static_cast<Integer>(std::clamp(std::nearbyint(value), kLowest, kHighest));
}

}  // namespace

double Val(std::string_view text) {
  Reader reader(text);
  if (reader.Peek() != '&') return TakeDecimal(reader);
  reader.Take();
  return reader.Peek() == 'H' || reader.Peek() == 'h' ? TakeHexadecimal(reader) : 0;
}

std::optional<double> ParseNumber(std::string_view text) {
  std::string number(text);
  const auto blank = [](char c) { return c == ' ' || c == '\t'; };
  while (!number.empty() && blank(number.back())) number.pop_back();
  number.erase(0, std::find_if_not(number.begin(), number.end(), blank) - number.begin());
  std::replace(number.begin(), number.end(), ',', '.');
  if (number.starts_with('+') && !number.starts_with("+-")) number.erase(0, 1);
  double value = 0;
  const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
  const bool whole = result.ec == std::errc() && result.ptr == number.data() + number.size();
  if (!whole || !std::isfinite(value)) return std::nullopt;
  return value;
}

std::int32_t ValLong(std::string_view text) {
  return RoundToInt32(Val(text));
}

std::string NumberText(double value) {
  if (auto text = TextOfNonFinite(value)) return *text;
  const Decimal decimal = DecimalOf(value, 0);
  if (decimal.digits.empty()) return "0";
  const std::string sign = decimal.negative ? "-" : "";
  if (decimal.point > 15 || decimal.point < -4) return sign + ExponentText(decimal);
  const std::string whole = WholeDigits(decimal);
  const std::string fraction = FractionDigits(decimal);
  return sign + (whole.empty() ? "0" : whole) + (fraction.empty() ? "" : "." + fraction);
}

std::string NumberText(std::int64_t value) {
  std::array<char, 24> buffer;
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
  return {buffer.data(), result.ptr};
}

std::string WireNumber(double value) {
  if (auto text = TextOfNonFinite(value)) return value < 0 ? *text : " " + *text;
  constexpr int kSignificant = 15;
  const Decimal decimal = DecimalOf(value, kSignificant);
  if (decimal.digits.empty()) return " 0";
  const std::string sign = decimal.negative ? "-" : " ";
  const std::string fraction = FractionDigits(decimal);
  if (decimal.point > kSignificant || fraction.size() > kSignificant) return sign + ExponentText(decimal);
  return sign + WholeDigits(decimal) + (fraction.empty() ? "" : "." + fraction);
}

std::int16_t RoundToInt16(double value) {
  return RoundTo<std::int16_t>(value);
}

std::int32_t RoundToInt32(double value) {
  return RoundTo<std::int32_t>(value);
}

bool HoldsNumber(std::string_view text) {
  Reader reader(text);
  if (reader.Peek() == '&') {
    reader.Take();
    const char letter = reader.Take();
    return (letter == 'H' || letter == 'h') && HexDigit(reader.Peek()) >= 0;
  }
  if (reader.Peek() == '-' || reader.Peek() == '+') reader.Take();
  if (reader.Peek() == '.') reader.Take();
  return IsDigit(reader.Peek());
}

std::string FormatNumber(double value, std::string_view pictureText) {
  const Picture picture = TakeApart(pictureText);
  if (picture.whole.empty() && picture.fraction.empty()) return std::string(picture.before);
  if (auto text = TextOfNonFinite(value)) return *text;

  Decimal decimal = DecimalOf(value, 0);
  RoundToPlaces(decimal, static_cast<int>(std::min<std::size_t>(picture.fraction.size(), 400)));

  std::string whole = WholeDigits(decimal);
  const std::size_t least = LeastWholeDigits(picture.whole);
  if (whole.size() < least) whole.insert(0, least - whole.size(), '0');
  if (picture.thousands) whole = GroupThousands(whole);

  std::string fraction = FractionDigits(decimal);
  const std::size_t leastPlaces = picture.fraction.rfind('0') + 1;  // npos + 1 is 0: no "0" asks for a digit
  if (fraction.size() < leastPlaces) fraction.resize(leastPlaces, '0');

  std::string text(picture.before);
  if (decimal.negative) text += '-';
  text += whole;
  if (picture.point) text += '.';
  return text + fraction + std::string(picture.behind);
}

}  // namespace tarvolt
