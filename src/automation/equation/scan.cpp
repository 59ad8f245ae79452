// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/equation/scan.h"

#include <algorithm>

#include "automation/equation/equation_error.h"

namespace tarvolt {
namespace {

constexpr int kHeadPriority = 7;
constexpr int kIdentifierPriority = 6;
constexpr int kPowerPriority = 5;
constexpr int kUnaryPriority = 4;
constexpr int kProductPriority = 3;
constexpr int kRemainderPriority = 2;
constexpr int kSumPriority = 1;

bool IsLetter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
}

bool IsOperator(char c) {
  return std::string_view("(*/\\+-^%,)").find(c) != std::string_view::npos;
}

class Scanner {
 public:
  Scanner(char decimalSeparator, TokenList& list) : decimalSeparator_(decimalSeparator), list_(list) {}

  void Scan(std::string_view equation) {
    KeepWhatMeansSomething(equation);
    for (std::uint32_t at = 0; at < list_.text.size(); ++at) TakeCharacter(at);
    Finish(static_cast<std::uint32_t>(list_.text.size()));
    if (base_ != 0) Raise(EquationFault::UnbalancedParenthesis);
  }

 private:
  enum class Kind { Nothing, Identifier, Number };

  bool IsOfNumber(char c) const { return (c >= '0' && c <= '9') || c == decimalSeparator_; }

  // A dropped character ends no token: "a b" is the identifier "ab". Only the word "mod" needs its blanks.
  void KeepWhatMeansSomething(std::string_view equation) {
    constexpr std::string_view kMod = " mod ";
    for (std::size_t i = 0; i < equation.size(); ++i) {
      const char c = equation[i];
      if (equation.substr(i, kMod.size()) == kMod) {
        list_.text += '%';
        i += kMod.size() - 1;
      } else if (IsLetter(c) || IsOfNumber(c) || IsOperator(c)) {
        list_.text += c;
      }
    }
  }

  void TakeCharacter(std::uint32_t at) {
    const char c = list_.text[at];
    if (IsLetter(c)) {
      TakeLetter(at);
    } else if (IsOfNumber(c)) {
      TakeOfNumber(at);
    } else if (c == '(') {
      Open(at);
    } else {
      Finish(at);
      TakeOperator(c);
    }
  }

  void TakeLetter(std::uint32_t at) {
    if (kind_ == Kind::Number) MultiplyBy(at);
    if (kind_ == Kind::Nothing) Start(Kind::Identifier, at);
    seenOperand_ = true;
  }

  void TakeOfNumber(std::uint32_t at) {
    if (kind_ == Kind::Nothing) Start(Kind::Number, at);
    seenOperand_ = true;
  }

  void Open(std::uint32_t at) {
    if (kind_ == Kind::Identifier) {
      AddText(TokenKind::FunctionHead, at + 1, base_ + kHeadPriority);
    } else {
      if (kind_ == Kind::Number) MultiplyBy(at);
      AddOperator('(', base_ + kHeadPriority);
    }
    kind_ = Kind::Nothing;
    base_ += kPrioritiesALevel;
    if (base_ > kDeepestNesting * kPrioritiesALevel) Raise(EquationFault::TooDeep);
    seenOperand_ = false;
  }

  void TakeOperator(char c) {
    switch (c) {
      case '*':
      case '/':
      case '\\':
        AddOperator(c, base_ + kProductPriority);
        break;
      case '+':
        AddOperator(c, base_ + kSumPriority);
        break;
      case '-':
        if (seenOperand_) {
          AddOperator('-', base_ + kSumPriority);
        } else {
          AddOperator('~', base_ + kUnaryPriority);
        }
        break;
      case '^':
        AddOperator(c, base_ + kPowerPriority);
        break;
      case '%':
        AddOperator(c, base_ + kRemainderPriority);
        break;
      case ',':
        Add({TokenKind::Separator, 0, 0, 0, 0});
        break;
      case ')':
        AddOperator(c, base_);
        base_ -= kPrioritiesALevel;
        break;
    }
    seenOperand_ = c == ')';
  }

  // The number under construction ends at `at` and stands in front of what begins there: "2x", "2(".
  void MultiplyBy(std::uint32_t at) {
    Finish(at);
    AddOperator('*', base_ + kProductPriority);
  }

  void Start(Kind kind, std::uint32_t at) {
    kind_ = kind;
    start_ = at;
  }

  void Finish(std::uint32_t end) {
    if (kind_ == Kind::Identifier) AddText(TokenKind::Identifier, end, base_ + kIdentifierPriority);
    if (kind_ == Kind::Number) AddText(TokenKind::Number, end, 0);
    kind_ = Kind::Nothing;
  }

  void AddText(TokenKind kind, std::uint32_t end, int priority) {
    Add({kind, 0, Listed(priority), start_, end - start_});
  }

  void AddOperator(char symbol, int priority) { Add({TokenKind::Operator, symbol, Listed(priority), 0, 0}); }

  void Add(const Token& token) { list_.tokens.push_back(token); }

  // Behind a stray ")" priorities fall below zero; nothing below 1 is ever evaluated, so how far does not matter.
  static std::int16_t Listed(int priority) { return static_cast<std::int16_t>(std::max(priority, 0)); }

  char decimalSeparator_;
  TokenList& list_;
  Kind kind_ = Kind::Nothing;
  std::uint32_t start_ = 0;
  int base_ = 0;
  bool seenOperand_ = false;
};

}  // namespace

void ScanEquation(std::string_view equation, char decimalSeparator, TokenList& list) {
  list.text.clear();
  list.tokens.clear();
  if (equation.size() > kLongestEquation) Raise(EquationFault::TooLong);
  Scanner(decimalSeparator, list).Scan(equation);
}

}  // namespace tarvolt
