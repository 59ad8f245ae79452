// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <optional>
#include <string>

#include "automation/channel_equations/equation_state.h"
#include "automation/channel_equations/rewriting.h"

namespace tarvolt {

enum class Comparison { None, AtLeast, AtMost, NotEqual, Above, Below, Equal, And, Or };

/// The comparison that stands between the brackets of a condition, such as " >= " or "and". The first that is found in
/// the text holds: "xor" is an "or" (meant). None for any other text.
Comparison ComparisonOf(std::string_view text);

/// Whether the comparison holds. And and Or round to 32 bits and raise Overflow beyond.
bool Compare(Comparison comparison, double first, double second);

/// A condition taken apart. Without brackets it is one expression.
template <class Text>
struct Condition {
  std::optional<Text> first;  ///< nothing: a bracket does not close, and the condition is false
  Text between;               ///< the comparison
  std::optional<Text> second;
};

template <class Text>
Condition<Text> TakeCondition(const Text& text) {
  Condition<Text> condition;
  const std::size_t open = text.find('[');
  if (open == Text::npos) {
    condition.first = text;
    return condition;
  }
  const std::size_t close = text.find(']', open);
  if (close == Text::npos) return condition;
  condition.first = text.substr(open + 1, close - open - 1);
  const std::size_t secondOpen = text.find('[', close);
  if (secondOpen == Text::npos) return condition;
  const std::size_t secondClose = text.find(']', secondOpen);
  if (secondClose == Text::npos) {
    condition.first.reset();
    return condition;
  }
  condition.between = text.substr(close + 1, secondOpen - close - 1);
  condition.second = text.substr(secondOpen + 1, secondClose - secondOpen - 1);
  return condition;
}

/// Whether a condition such as "[x] > [100]" or "x-100" holds; a bare expression does when it is not 0. The solution of
/// the state becomes that of the last expression (meant). Raises EquationError where it cannot be evaluated: it counts
/// as one that does not hold then.
bool EqCompare(EquationState& state, const std::string& text);

}  // namespace tarvolt
