// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/channel_equations/compiled_expression.h"

#include <algorithm>
#include <cmath>

namespace tarvolt {
namespace {

bool IsOfNumber(char16_t c) {
  return (c >= u'0' && c <= u'9') || c == u'.';
}

// More characters than any number of the text can have, blanks inside it or not.
std::size_t CountOfDigits(const SlottedText& text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), IsOfNumber));
}

}  // namespace

CompiledExpression::CompiledExpression(SlottedText text) : text_(std::move(text)) {
  for (const char16_t c : text_) {
    if (!IsSlot(c)) continue;
    ++occurrences_;
    if (std::find(used_.begin(), used_.end(), SlotOf(c)) == used_.end()) used_.push_back(SlotOf(c));
  }
  nines_.assign(CountOfDigits(text_) + 1, '9');
}

bool CompiledExpression::IsShortEnough() const {
  return text_.size() + occurrences_ * std::max(kLongestNumber, nines_.size() + 8) <= kLongestEquation;
}

double CompiledExpression::Solve(EquationState& state, const Slots& slots, const std::vector<PlacedNumber>& numbers) {
  Shape& shape = ShapeFor(state, slots, numbers);
  if (shape.asText) return state.Solve(WithNumbers(slots, numbers));
  if (shape.fault) throw EquationError(*shape.fault);
  for (const Place& place : shape.places) shape.parsed.plan.values[place.value] = std::abs(numbers[place.slot].printed);
  return state.Solve(shape.parsed);
}

CompiledExpression::Shape& CompiledExpression::ShapeFor(const EquationState& state, const Slots& slots,
                                                        const std::vector<PlacedNumber>& numbers) {
  std::uint32_t negatives = 0;
  if (used_.size() <= kMostNumbers) {
    for (std::size_t i = 0; i < used_.size(); ++i) {
      if (numbers[used_[i]].printed < 0) negatives |= std::uint32_t{1} << i;
    }
  }
  if (last_ < shapes_.size() && shapes_[last_]->negatives == negatives) return *shapes_[last_];
  const auto known = std::find_if(shapes_.begin(), shapes_.end(),
                                  [negatives](const auto& shape) { return shape->negatives == negatives; });
  last_ = static_cast<std::size_t>(known - shapes_.begin());
  if (known != shapes_.end()) return **known;

  if (shapes_.size() == kMostShapes) shapes_.clear();
  shapes_.push_back(std::make_unique<Shape>());
  last_ = shapes_.size() - 1;
  shapes_[last_]->negatives = negatives;
  Build(state, slots, *shapes_[last_]);
  return *shapes_[last_];
}

// Parses the formula with a number of its own for each slot, and finds those numbers again among the tokens. A slot
// whose number is not found as it went in has grown together with what stands beside it: "2X" with an X of 1.5 is
// 21.5, and that is a matter of text.
void CompiledExpression::Build(const EquationState& state, const Slots& slots, Shape& shape) const {
  shape.asText = used_.size() > kMostNumbers;
  if (shape.asText) return;
  try {
    state.Parse(WithTags(slots, shape.negatives), shape.parsed);
  } catch (const EquationError& error) {
    shape.fault = std::make_unique<EquationError>(error);
    return;
  }
  const TokenList& list = shape.parsed.tokens;
  for (std::size_t at = 0; at < list.tokens.size(); ++at) {
    if (list.tokens[at].kind != TokenKind::Number) continue;
    for (std::size_t i = 0; i < used_.size(); ++i) {
      if (list.TextOf(list.tokens[at]) == TagOf(i)) shape.places.push_back({at, used_[i]});
    }
  }
  shape.asText = shape.places.size() != occurrences_;
}

std::string CompiledExpression::TagOf(std::size_t used) const {
  const char tens = static_cast<char>('0' + used / 10);
  const char ones = static_cast<char>('0' + used % 10);
  return nines_ + '.' + tens + ones;
}

std::string CompiledExpression::WithTags(const Slots& slots, std::uint32_t negatives) const {
  std::string text;
  for (const char16_t c : text_) {
    if (!IsSlot(c)) {
      text += static_cast<char>(c);
      continue;
    }
    const auto used = static_cast<std::size_t>(std::find(used_.begin(), used_.end(), SlotOf(c)) - used_.begin());
    const bool negative = ((negatives >> used) & 1) != 0;
    if (negative) text += '-';
    if (!negative && HasWireForm(slots[SlotOf(c)])) text += ' ';
    text += TagOf(used);
  }
  return text;
}

std::string CompiledExpression::WithNumbers(const Slots& slots, const std::vector<PlacedNumber>& numbers) const {
  std::string text;
  for (const char16_t c : text_) {
    if (IsSlot(c)) {
      text += TextOf(slots[SlotOf(c)], numbers[SlotOf(c)].raw);
    } else {
      text += static_cast<char>(c);
    }
  }
  return text;
}

}  // namespace tarvolt
