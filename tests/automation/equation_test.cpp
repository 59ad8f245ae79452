// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/equation/equation.h"

#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <string>

namespace tarvolt {
namespace {

// The result as text: a number, or the number of the error and its description.
std::string ResultOf(clsEquation& equation, std::string_view text) {
  equation.Equation(text);
  try {
    equation.Solve();
  } catch (const EquationError& error) {
    EXPECT_STREQ(error.Source(), "clsEquation");
    EXPECT_EQ(error.Description(), error.what());
    return std::to_string(error.Number()) + " " + error.Description();
  }
  std::string number = std::to_string(equation.Solution());
  number.erase(number.find_last_not_of('0') + 1);
  if (number.back() == '.') number.pop_back();
  return number;
}

struct Case {
  const char* text;
  const char* result;
};

void ExpectResults(std::initializer_list<Case> cases, char decimalSeparator = '.') {
  clsEquation equation(decimalSeparator);
  equation.Var("x", 7);
  equation.Var("y", 3);
  equation.Var("x2", 100);
  equation.Var("xy", 11);
  equation.Var("_a.5", 13);
  for (const Case& c : cases) EXPECT_EQ(ResultOf(equation, c.text), c.result) << c.text;
}

TEST(Equation, HighestPriorityFirstThenLeftToRight) {
  ExpectResults({{"1+2*3", "7"},     {"2^3^2", "64"},         {"10-4-3", "3"},           {"2*3%4", "2"},
                 {"7%4+1", "4"},     {"12/2/3", "2"},         {"7\\2*2", "6"},           {"2*7\\4", "3"},
                 {"(1+2)*3", "9"},   {"2*(3+(4-1))^2", "72"}, {"10%4*3", "10"},          {"2^(-1)", "0.5"},
                 {"5 mod 3", "2"},   {"mod(5,3)", "2"},       {"5 mod 3 mod 2", "0"},    {"5 MOD 3", "2"},
                 {"-7 mod 4", "-3"}, {"7.5\\2", "4"},         {"6.5\\2", "3"},           {"2.5%9", "2"},
                 {"-7\\2", "-3"},    {"sin(0)+cos(0)", "1"},  {"max(min(5,2),-3)", "2"}, {"0^0", "1"}});
}

TEST(Equation, TheUnaryMinusBindsBetweenPowerAndProduct) {
  ExpectResults({{"-2^2", "-4"},
                 {"(-2)^2", "4"},
                 {"2*-3", "-6"},
                 {"2--3", "5"},
                 {"min(1,-2)", "-2"},
                 {"(1)-2", "-1"},
                 {"2+-3*4", "-10"},
                 {"2^-1", "1103 Invalid Equation"},
                 {"--2", "1103 Invalid Equation"},
                 {"+2", "1103 Invalid Equation"},
                 {"2*+3", "1103 Invalid Equation"},
                 {"2-", "1103 Invalid Equation"},
                 {"*2", "1103 Invalid Equation"}});
}

TEST(Equation, WhatTouchesIsMultipliedBehindANumberAlone) {
  ExpectResults({{"2x", "14"},
                 {"x2", "100"},
                 {"2(3)", "6"},
                 {"(2)(3)", "2"},
                 {"2x2", "200"},
                 {"2sin(0)", "0"},
                 {"(2)x", "2"},
                 {"1e5", "1102 Undefined Variable: e5"},
                 {"x(2)", "1101 Undefined Function: x()"}});
}

TEST(Equation, WhatMeansNothingIsNotThere) {
  ExpectResults({{"x y", "11"},
                 {"[x]", "7"},
                 {"1 2", "12"},
                 {"~x", "7"},
                 {"\x84x\xE4", "7"},
                 {"X\t+\r\nY", "10"},
                 {"_A.5", "13"},
                 {"7 MoD\t4", "1102 Undefined Variable: mod4"},
                 {"x mod mod y", "1102 Undefined Variable: mody"}});
}

TEST(Equation, FirstValueOfSeveralWins) {
  ExpectResults({{"5,6", "5"},
                 {"(1,2)+3", "1"},
                 {"3+(1,2)", "4"},
                 {"1,+2", "3"},
                 {"3+()4", "7"},
                 {"min((1,2))", "1"},
                 {"1)+2(", "1"},
                 {"((8)(9))*2", "8"},
                 {"1.2.3,4", "1103 Invalid Equation"},
                 {"(4,1.2.3)", "4"},
                 {"min(1,+2)", "1104 Invalid arguments to function: min()"}});
}

TEST(Equation, FaultsHaveTheirNumbersAndWords) {
  const std::string huge(400, '9');
  ExpectResults({{"(1", "1100 Unbalanced parenthesis"},
                 {"1)", "1100 Unbalanced parenthesis"},
                 {"foo(1)", "1101 Undefined Function: foo()"},
                 {"PI(1)", "1101 Undefined Function: pi()"},
                 {"Nothing+1", "1102 Undefined Variable: nothing"},
                 {"sin(1,2)", "1104 Invalid arguments to function: sin()"},
                 {"rnd()", "1104 Invalid arguments to function: rnd()"},
                 {"", "1103 Invalid Equation"},
                 {",", "1103 Invalid Equation"},
                 {"1..2+1", "1103 Invalid Equation"},
                 {")(", "1103 Invalid Equation"},
                 {"1/0", "11 Division by zero"},
                 {"1\\0.5", "11 Division by zero"},
                 {"0^(-1)", "11 Division by zero"},
                 {"(-8)^(1/3)", "5 Invalid argument"},
                 {"10^200*10^200", "6 Overflow"},
                 {"2147483648\\1", "6 Overflow"},
                 {"(-2147483648)\\-1", "6 Overflow"},
                 {"(-2147483648)%-1", "0"},
                 {"2147483647.4\\1", "2147483647"},
                 {huge.c_str(), "6 Overflow"}});
}

// The order list decides which of two faults is met, and not where they stand.
TEST(Equation, TheFirstFaultIsThatOfTheHighestPriority) {
  ExpectResults({{"1/0+foo(1)", "1101 Undefined Function: foo()"},
                 {"foo(1/0)", "11 Division by zero"},
                 {"nix+1/0", "1102 Undefined Variable: nix"},
                 {"nix+(1/0)", "11 Division by zero"},
                 {"nix,nox", "1102 Undefined Variable: nix"},
                 {"min(nix)", "1102 Undefined Variable: nix"}});
}

TEST(Equation, NumbersHaveTheSeparatorOfTheLocale) {
  ExpectResults({{"1,5+1", "2.5"}, {"1.5", "15"}, {"min(1,2)", "1104 Invalid arguments to function: min()"}}, ',');
  ExpectResults({{".5+5.", "5.5"}, {"0.25", "0.25"}});
}

TEST(Equation, ConstantsHideVariables) {
  clsEquation equation;
  for (const char* name : {"pi", "e", "rnd"}) equation.Var(name, 1000);
  equation.Equation("PI");
  EXPECT_EQ(equation.Solution(), 3.14159265358979);
  equation.Equation("e");
  EXPECT_EQ(equation.Solution(), 2.718281828) << "ten digits are meant";
  equation.Equation("rnd");
  EXPECT_LT(equation.Solution(), 1);
  EXPECT_EQ(equation.Var("pi"), 1000);
}

TEST(Equation, VariablesHaveNoCaseAndNoOuterBlanks) {
  clsEquation equation;
  equation.Var(" Gain_1 ", 2);
  equation.Var("\xC4rger", 4);
  EXPECT_EQ(equation.Var("GAIN_1"), 2);
  EXPECT_EQ(equation.Var("\xE4RGER"), 4);
  equation.Var("gain_1", 3);
  equation.Equation("gAin_1");
  EXPECT_EQ(equation.Solution(), 3);
  EXPECT_THROW(equation.Var("gain_2"), EquationError);
  EXPECT_THROW(equation.VarRemove("gain_2"), EquationError);
}

TEST(Equation, VariablesComeAndGoUnderAParsedEquation) {
  clsEquation equation;
  equation.Var("m", 5);
  equation.Equation("m-zz");
  EXPECT_THROW(equation.Solve(), EquationError);
  equation.Var("zz", 1);
  EXPECT_EQ(equation.Solution(), 4);
  equation.Var("a", 100);  // its name goes in front of theirs
  equation.Var("zz", 2);
  EXPECT_EQ(equation.Solution(), 3);
  equation.VarRemove("A");
  EXPECT_EQ(equation.Solution(), 3);
  equation.VarClear();
  EXPECT_THROW(equation.Solution(), EquationError);
  equation.Var("zz", 1);
  equation.Var("m", 1);
  EXPECT_EQ(equation.Solution(), 0);
}

// A random value is a new one at every evaluation, so it shows when there was one.
TEST(Equation, OnlyWhatChangesMakesTheResultStale) {
  clsEquation equation;
  EXPECT_EQ(equation.Solution(), 0) << "nothing is stale in a new one";
  EXPECT_THROW(equation.Solve(), EquationError);
  equation.Equation("RND");
  EXPECT_EQ(equation.Equation(), "rnd");
  std::set<double> seen;
  const auto evaluates = [&](auto change) {
    change();
    const double first = equation.Solution();
    EXPECT_EQ(equation.Solution(), first);
    return seen.insert(first).second;
  };
  EXPECT_TRUE(evaluates([] {}));
  EXPECT_FALSE(evaluates([&] { equation.Degrees(false); }));
  const std::function<void()> changes[] = {[&] { equation.Degrees(true); }, [&] { equation.Var("v", 1); },
                                           [&] { equation.Var("v", 1); },   [&] { equation.VarRemove("v"); },
                                           [&] { equation.VarClear(); },    [&] { equation.Equation("rnd"); },
                                           [&] { equation.Solve(); }};
  for (const auto& change : changes) EXPECT_TRUE(evaluates(change));
}

TEST(Equation, AFailedSolveLeavesTheResultAlone) {
  clsEquation equation;
  equation.Equation("ln(rnd-0.5)");
  int failed = 0;
  double last = 0;
  for (int i = 0; i < 100; ++i) {
    try {
      equation.Solve();
      last = equation.Solution();
    } catch (const EquationError&) {
      if (last == 0) continue;  // none was solved yet, so the result is stale
      ++failed;
      EXPECT_EQ(equation.Solution(), last);
    }
  }
  EXPECT_GT(failed, 10);
  EXPECT_LT(failed, 90);
}

TEST(Equation, LengthAndDepthHaveBounds) {
  clsEquation equation;
  const auto nested = [](std::size_t depth) { return std::string(depth, '(') + "3" + std::string(depth, ')'); };
  EXPECT_EQ(ResultOf(equation, nested(kDeepestNesting)), "3");
  EXPECT_EQ(ResultOf(equation, nested(kDeepestNesting + 1)), "1106 Too many parentheses inside each other");
  EXPECT_EQ(ResultOf(equation, "3" + std::string(10000, ')') + std::string(10000, '(')), "3");
  std::string ones = "1";
  while (ones.size() + 2 <= kLongestEquation) ones += "+1";
  EXPECT_EQ(ResultOf(equation, ones), "16384");
  EXPECT_EQ(ResultOf(equation, ones + " "), "1105 Equation too long");
  std::string names = "1";
  for (char c = 'a'; c <= 'z'; ++c) {
    const std::string name = std::string("v") + c;
    equation.Var(name, 1);
    names += "+" + name + "*" + name;
  }
  EXPECT_EQ(ResultOf(equation, names), "27");
}

}  // namespace
}  // namespace tarvolt
