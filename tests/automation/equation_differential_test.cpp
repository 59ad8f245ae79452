#include <gtest/gtest.h>

#include <array>
#include <map>
#include <random>
#include <string>

#include "automation/equation/equation.h"
#include "slow_evaluator.h"

namespace tarvolt {
namespace {

const std::map<std::string, double> kVariables = {{"x", 1.5}, {"y", -2}, {"x2", 0}, {"_k", 1e200}, {"n", 7}};

class Dice {
 public:
  explicit Dice(unsigned seed) : engine_(seed) {}
  int Upto(int count) { return static_cast<int>(engine_() % static_cast<unsigned>(count)); }
  template <typename Choices>
  auto Of(const Choices& choices) {
    return choices[static_cast<std::size_t>(Upto(static_cast<int>(choices.size())))];
  }

 private:
  std::mt19937 engine_;
};

SlowResult Solve(clsEquation& equation, const std::string& text, bool degrees) {
  equation.Degrees(degrees);
  equation.Equation(text);
  try {
    equation.Solve();
    return {0, equation.Solution(), ""};
  } catch (const EquationError& error) {
    return {error.Number(), 0, error.Description()};
  }
}

constexpr std::array kFunctionNames = {"not", "sin", "atn", "arcsin", "exp", "int", "log", "sqr"};
constexpr std::array kFunctionsOfTwo = {"min", "mod", "logn"};

// Pieces of equations one after the other, mostly with parentheses that match in number.
std::string Rubble(Dice& dice) {
  static const std::array<std::string, 42> kPieces = {
      "1",  "2", "0", "2.5", "0.5", "3000000000", "1.2.3", ".",    "x",    "Y",    "x2", "_k", "n",     "nix",
      "pi", "E", "+", "-",   "-",   "*",          "/",     "\\",   "^",    "%",    ",",  " ",  " mod ", "mod",
      "<",  "[", "~", "(",   "(",   "sin(",       "min(",  "int(", "sqr(", "foo(", ")",  ")",  ")",     "x("};
  std::string text;
  int open = 0;
  const int count = 1 + dice.Upto(14);
  for (int i = 0; i < count; ++i) {
    const std::string piece = dice.Of(kPieces);
    if (piece == ")" && open == 0 && dice.Upto(8) != 0) continue;
    open += piece.back() == '(' ? 1 : piece == ")" ? -1 : 0;
    text += piece;
  }
  for (; open > 0 && dice.Upto(30) != 0; --open) text += ')';
  for (; open < 0 && dice.Upto(30) != 0; ++open) text += '(';
  return text;
}

// Operand, operator, operand and so on, with functions and parentheses: mostly has a value.
std::string Sensible(Dice& dice, int depth) {
  static const std::array<std::string, 8> kOperands = {"1", "2", "0.5", "2.5x", "x", "y", "n", "pi"};
  static const std::array<std::string, 9> kOperators = {"+", "-", "*", "/", "\\", "%", "^", "*-", " mod "};
  std::string text = dice.Upto(6) == 0 ? "-" : "";
  const int operands = 1 + dice.Upto(4);
  for (int i = 0; i < operands; ++i) {
    if (i > 0) text += dice.Of(kOperators);
    const int form = depth > 0 ? dice.Upto(6) : 0;
    if (form < 3) {
      text += dice.Of(kOperands);
    } else if (form == 3) {
      const std::string second = dice.Upto(4) == 0 ? "," + Sensible(dice, depth - 1) : "";
      text += "(" + Sensible(dice, depth - 1) + second + ")";
    } else if (form == 4) {
      text += dice.Of(kFunctionNames) + std::string("(") + Sensible(dice, depth - 1) + ")";
    } else {
      text += dice.Of(kFunctionsOfTwo) + std::string("(") + Sensible(dice, depth - 1) + "," +
              Sensible(dice, depth - 1) + ")";
    }
  }
  return text;
}

TEST(Differential, AgreesWithTheRulesFollowedToTheLetter) {
  clsEquation equation;
  for (const auto& [name, value] : kVariables) equation.Var(name, value);
  Dice dice(20260601);
  std::map<int, int> faults;
  for (int i = 0; i < 60000 && !HasFailure(); ++i) {
    const std::string text = i % 2 == 0 ? Rubble(dice) : Sensible(dice, 3);
    const bool degrees = dice.Upto(2) == 0;
    const SlowResult expected = EvaluateSlowly(text, kVariables, degrees);
    const SlowResult found = Solve(equation, text, degrees);
    EXPECT_EQ(found.fault, expected.fault) << text << "\n" << found.words;
    EXPECT_EQ(expected.fault >= 1100 ? found.words : "", expected.words) << text;
    EXPECT_DOUBLE_EQ(found.value, expected.value) << text;
    ++faults[expected.fault];
  }
  for (const int fault : {5, 6, 11, 1100, 1101, 1102, 1103, 1104}) EXPECT_GT(faults[fault], 100) << fault;
  EXPECT_GT(faults[0], 10000) << "too few have a value";
}

}  // namespace
}  // namespace tarvolt
