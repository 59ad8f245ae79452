// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/equation/walk.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string>

namespace tarvolt {
namespace {

/// The number that the text of a number token is. Two decimal separators or no digit make no number.
double ReadNumber(std::string_view text, char decimalSeparator) {
  std::string number(text);
  std::replace(number.begin(), number.end(), decimalSeparator, '.');
  double value = 0;
  const char* const end = number.data() + number.size();
  const auto read = std::from_chars(number.data(), end, value);
  if (read.ptr != end || read.ec == std::errc::invalid_argument) Raise(EquationFault::InvalidEquation);
  if (read.ec == std::errc() && std::isfinite(value)) return value;
  if (number.find_first_not_of('0') < number.find('.')) Raise(EquationFault::Overflow);
  return 0;  // too small
}

Action ActionOf(char symbol) {
  switch (symbol) {
    case '*':
      return Action::Multiply;
    case '/':
      return Action::Divide;
    case '\\':
      return Action::DivideWhole;
    case '%':
      return Action::Remainder;
    case '+':
      return Action::Add;
    case '-':
      return Action::Subtract;
    default:
      return Action::Power;
  }
}

class Walk {
 public:
  Walk(const TokenList& list, char decimalSeparator, Plan& plan)
      : list_(list), decimalSeparator_(decimalSeparator), plan_(plan), end_(static_cast<Position>(list.tokens.size())) {
    LineUp();
  }

  void Follow(const std::vector<Position>& order) {
    for (std::size_t at = 0; at < order.size(); ++at) {
      const Position position = order[at];
      const Token& token = list_.tokens[position];
      if (token.kind == TokenKind::Identifier) {
        Identify(position);
      } else if (token.kind == TokenKind::FunctionHead) {
        Call(position, order[++at]);
      } else if (token.symbol == '(') {
        Enclose(position, order[++at]);
      } else if (token.symbol == '~') {
        Negate(position);
      } else {
        Combine(position, ActionOf(token.symbol));
      }
    }
    plan_.result = Take(Next(end_));
  }

 private:
  /// What a position holds. The surviving positions are a ring, in the order of the text; `end_` closes it.
  struct Cell {
    enum class Holds : std::uint8_t { Text, Number, Value } holds = Holds::Text;
    Position place = 0;  ///< of a value among the plan's; of the text of a number that is not read yet
    Position next = 0;
    Position previous = 0;
  };

  void LineUp() {
    cells_.resize(end_ + 1);
    Position last = end_;
    for (Position position = 0; position < end_; ++position) {
      const TokenKind kind = list_.tokens[position].kind;
      if (kind == TokenKind::Separator) continue;
      cells_[position].holds = kind == TokenKind::Number ? Cell::Holds::Number : Cell::Holds::Text;
      cells_[position].place = position;
      cells_[position].previous = last;
      cells_[last].next = position;
      last = position;
    }
    cells_[last].next = end_;
    cells_[end_].previous = last;
  }

  Position Next(Position position) const { return cells_[position].next; }
  Position Previous(Position position) const { return cells_[position].previous; }

  void Remove(Position position) {
    const Cell& cell = cells_[position];
    cells_[cell.previous].next = cell.next;
    cells_[cell.next].previous = cell.previous;
  }

  /// The place of the value at a position. What holds no value, such as an operator or the end, is a fault.
  Position Take(Position position) {
    Cell& cell = cells_[position];
    if (cell.holds == Cell::Holds::Number) {
      plan_.values[cell.place] = ReadNumber(list_.TextOf(list_.tokens[cell.place]), decimalSeparator_);
      cell.holds = Cell::Holds::Value;
    }
    if (cell.holds != Cell::Holds::Value) Raise(EquationFault::InvalidEquation);
    return cell.place;
  }

  void Put(Position position, Position place) {
    cells_[position].holds = Cell::Holds::Value;
    cells_[position].place = place;
  }

  void Identify(Position position) {
    const std::string_view name = list_.TextOf(list_.tokens[position]);
    if (name == "pi") {
      plan_.values[position] = kEquationPi;
    } else if (name == "e") {
      plan_.values[position] = kEquationE;
    } else if (name == "rnd") {
      Emit(Action::Random, position);
    } else {
      Put(position, Load(name, position));
      return;
    }
    Put(position, position);
  }

  /// The place of a variable's value. It is fetched once; only the first few names are looked through for that, so
  /// that a text full of names costs no more than its length.
  Position Load(std::string_view name, Position position) {
    constexpr std::size_t kLookedThrough = 8;
    const auto end = plan_.loads.begin() + static_cast<std::ptrdiff_t>(std::min(plan_.loads.size(), kLookedThrough));
    const auto known =
        std::find_if(plan_.loads.begin(), end, [name](const VariableLoad& load) { return load.name == name; });
    if (known != end) return known->place;
    plan_.loads.push_back({name, position, static_cast<Position>(plan_.steps.size())});
    return position;
  }

  void Emit(Action action, Position to, Position a = 0, Position b = 0, FunctionBody function = nullptr) {
    const bool chained = !plan_.steps.empty() && plan_.steps.back().to == a;
    plan_.steps.push_back({action, chained, to, a, b, function});
  }

  // A power binds higher, so in 2^-1 it meets the "~" itself and fails: meant so.
  void Negate(Position position) {
    const Position operand = Next(position);
    Emit(Action::Negate, position, Take(operand));
    Put(operand, position);
    Remove(position);
  }

  void Combine(Position position, Action action) {
    const Position left = Previous(position);
    const Position right = Next(position);
    const Position a = Take(left);
    const Position b = Take(right);
    Emit(action, position, a, b);
    Put(left, position);
    Remove(position);
    Remove(right);
  }

  // Only the first value goes; others stay where they are, as neighbours of what stands behind the parenthesis.
  void Enclose(Position open, Position close) {
    const Position inner = Next(open);
    if (inner == close) {
      Remove(open);
    } else {
      cells_[open].holds = cells_[inner].holds;
      cells_[open].place = cells_[inner].place;
      Remove(inner);
    }
    Remove(close);
  }

  void Call(Position head, Position close) {
    const std::string_view text = list_.TextOf(list_.tokens[head]);
    const EquationFunction* function = FindFunction(text);
    if (function == nullptr) Raise(EquationFault::UndefinedFunction, text);
    int count = 0;
    std::array<Position, 2> arguments = {};
    for (Position inner = Next(head); inner != close; inner = Next(inner)) {
      if (count == function->arguments) Raise(EquationFault::InvalidFunctionArguments, text);
      arguments[static_cast<std::size_t>(count++)] = inner;
    }
    if (count != function->arguments) Raise(EquationFault::InvalidFunctionArguments, text);
    const Position a = Take(arguments[0]);
    const Position b = count == 2 ? Take(arguments[1]) : a;
    Emit(Action::Call, head, a, b, function->body);
    Put(head, head);
    for (int i = 0; i < count; ++i) Remove(arguments[static_cast<std::size_t>(i)]);
    Remove(close);
  }

  const TokenList& list_;
  char decimalSeparator_;
  Plan& plan_;
  Position end_;
  std::vector<Cell> cells_;
};

}  // namespace

void WalkOrderList(const TokenList& list, const std::vector<Position>& order, char decimalSeparator, Plan& plan) {
  plan.values.assign(list.tokens.size(), 0);
  plan.steps.clear();
  plan.loads.clear();
  plan.failure.reset();
  try {
    Walk(list, decimalSeparator, plan).Follow(order);
  } catch (const EquationError& error) {
    plan.failure = error;
  }
}

}  // namespace tarvolt
