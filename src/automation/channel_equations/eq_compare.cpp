// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/channel_equations/eq_compare.h"

#include "automation/equation/arithmetic.h"
#include "text/ansi.h"

namespace tarvolt {

Comparison ComparisonOf(std::string_view text) {
  struct Sign {
    std::string_view sign;
    Comparison comparison;
  };
  static constexpr Sign kSigns[] = {
      {"=>", Comparison::AtLeast},  {">=", Comparison::AtLeast}, {"=<", Comparison::AtMost}, {"<=", Comparison::AtMost},
      {"<>", Comparison::NotEqual}, {">", Comparison::Above},    {"<", Comparison::Below},   {"=", Comparison::Equal},
      {"AND", Comparison::And},     {"OR", Comparison::Or},
  };
  const std::string sought = Upper(text);
  for (const Sign& sign : kSigns) {
    if (sought.find(sign.sign) != std::string::npos) return sign.comparison;
  }
  return Comparison::None;
}

bool Compare(Comparison comparison, double first, double second) {
  switch (comparison) {
    case Comparison::None:
      return false;
    case Comparison::AtLeast:
      return first >= second;
    case Comparison::AtMost:
      return first <= second;
    case Comparison::NotEqual:
      return first != second;
    case Comparison::Above:
      return first > second;
    case Comparison::Below:
      return first < second;
    case Comparison::Equal:
      return first == second;
    case Comparison::And:
      return (ToLong(first) & ToLong(second)) != 0;
    case Comparison::Or:
      return (ToLong(first) | ToLong(second)) != 0;
  }
  return false;
}

bool EqCompare(EquationState& state, const std::string& text) {
  const Condition<std::string> condition = TakeCondition(text);
  if (!condition.first) return false;
  const double first = state.Solve(*condition.first);
  if (!condition.second) return first != 0;
  const double second = state.Solve(*condition.second);
  return Compare(ComparisonOf(condition.between), first, second);
}

}  // namespace tarvolt
