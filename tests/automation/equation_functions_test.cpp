// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "automation/equation/equation.h"

namespace tarvolt {
namespace {

constexpr bool kRadians = false;
constexpr bool kDegrees = true;

struct Case {
  const char* text;
  double value;
  bool degrees = kRadians;
};

void ExpectValues(std::initializer_list<Case> cases) {
  for (const Case& c : cases) {
    clsEquation equation;
    equation.Degrees(c.degrees);
    equation.Equation(c.text);
    try {
      EXPECT_NEAR(equation.Solution(), c.value, 1e-13 * std::max(1.0, std::abs(c.value))) << c.text;
    } catch (const EquationError& error) {
      ADD_FAILURE() << c.text << ": " << error.what();
    }
  }
}

int FaultOf(const std::string& text) {
  clsEquation equation;
  equation.Equation(text);
  try {
    equation.Solve();
  } catch (const EquationError& error) {
    return error.Number();
  }
  return 0;
}

TEST(EquationFunctions, Arithmetic) {
  ExpectValues({{"not(5)", -6},
                {"not(-1)", 0},
                {"not(2.5)", -3},
                {"abs(-2.5)", 2.5},
                {"fix(-2.7)", -2},
                {"fix(2.7)", 2},
                {"int(-2.3)", -3},
                {"int(2.7)", 2},
                {"sgn(-3)", -1},
                {"sgn(0)", 0},
                {"sgn(0.1)", 1},
                {"sqr(2)", 1.4142135623730951},
                {"min(2,-3)", -3},
                {"max(2,-3)", 2},
                {"mod(-7.5,3)", -2},
                {"mod(7,-3)", 1},
                {"exp(1)", 2.718281828459045},
                {"log(10)", 2.302585092994046},
                {"ln(10)", 2.302585092994046},
                {"logn(8,2)", 3},
                {"log10(1000)", 3},
                {"log2(8)", 3}});
}

TEST(EquationFunctions, AnglesInBothUnits) {
  ExpectValues({{"sin(1)", 0.8414709848078965},
                {"cos(1)", 0.5403023058681398},
                {"tan(1)", 1.5574077246549023},
                {"sec(1)", 1.8508157176809255},
                {"cosec(1)", 1.1883951057781212},
                {"cotan(1)", 0.6420926159343306},
                {"atn(1)", 0.7853981633974483},
                {"arctan(-1)", -0.7853981633974483},
                {"arcsin(0.5)", 0.5235987755982989},
                {"arccos(0.5)", 1.0471975511965979},
                {"arccotan(1)", 2.356194490192345},
                {"sin(90)", 1, kDegrees},
                {"cos(60)", 0.5, kDegrees},
                {"tan(45)", 1, kDegrees},
                {"sec(60)", 2, kDegrees},
                {"cosec(30)", 2, kDegrees},
                {"cotan(45)", 1, kDegrees},
                {"atn(1)", 45, kDegrees},
                {"arctan(1)", 45, kDegrees},
                {"arcsin(0.5)", 30, kDegrees},
                {"arccos(0.5)", 60, kDegrees},
                {"deg(2)", 114.59155902616476, kDegrees},
                {"rad(180)", 3.14159265358979}});
}

// Values that differ from the textbook's and are meant to.
TEST(EquationFunctions, DeliberateOddities) {
  ExpectValues({{"cosh(0)", 0},
                {"cosh(1)", 0.7615941559557649},
                {"arcsec(2)", 2.4278682746450277},
                {"arcsec(-2)", -2.4278682746450277},
                {"arccosec(2)", 2.4278682746450277},
                {"arccosec(2)", 139.10660535086924, kDegrees},
                {"arccotan(1)", 90.99989847941448, kDegrees}});
}

TEST(EquationFunctions, Hyperbolic) {
  ExpectValues({{"sinh(1)", 1.1752011936438014},
                {"tanh(1)", 0.7615941559557649},
                {"sech(1)", 0.6480542736638853},
                {"cosech(1)", 0.8509181282393216},
                {"cotanh(1)", 1.3130352854993312},
                {"arcsinh(1)", 0.881373587019543},
                {"arccosh(2)", 1.3169578969248166},
                {"arctanh(0.5)", 0.5493061443340549},
                {"arcsech(0.5)", 1.3169578969248166},
                {"arccosech(2)", 0.48121182505960347},
                {"arccosech(-2)", -0.48121182505960336},
                {"arccotanh(2)", 0.5493061443340549}});
}

TEST(EquationFunctions, FaultsOfTheirArguments) {
  struct Fault {
    const char* text;
    int number;
  };
  const Fault faults[] = {
      {"sqr(-1)", 5},      {"log(0)", 5},          {"ln(-1)", 5},        {"log10(0)", 5},
      {"log2(-2)", 5},     {"logn(2,0)", 5},       {"logn(2,1)", 11},    {"mod(1,0)", 11},
      {"exp(710)", 6},     {"sinh(-710)", 6},      {"tanh(800)", 6},     {"not(3000000000)", 6},
      {"arcsin(1)", 11},   {"arcsin(2)", 5},       {"arccos(-1)", 11},   {"arccos(2)", 5},
      {"arcsec(1)", 11},   {"arccosec(0.5)", 5},   {"cosec(0)", 11},     {"cotan(0)", 11},
      {"cosech(0)", 11},   {"cotanh(0)", 11},      {"arccosh(0)", 5},    {"arctanh(1)", 11},
      {"arctanh(-1)", 5},  {"arcsech(0)", 11},     {"arccosech(0)", 11}, {"arccotanh(1)", 11},
      {"arccotanh(0)", 5}, {"arcsinh(10^200)", 6}, {"deg(10^308)", 6},   {"random(-10^308,10^308)", 6}};
  for (const Fault& fault : faults) EXPECT_EQ(FaultOf(fault.text), fault.number) << fault.text;
}

// The lowest, the highest and the mean of many evaluations.
struct Spread {
  double low = 1e300;
  double high = -1e300;
  double mean = 0;
  bool whole = true;
  bool single = true;
};

Spread SpreadOf(const char* text, std::uint64_t seed = 1) {
  constexpr int kCount = 20000;
  clsEquation equation('.', seed);
  equation.Equation(text);
  Spread spread;
  for (int i = 0; i < kCount; ++i) {
    equation.Solve();
    const double value = equation.Solution();
    spread.low = std::min(spread.low, value);
    spread.high = std::max(spread.high, value);
    spread.mean += value / kCount;
    spread.whole = spread.whole && value == std::floor(value);
    spread.single = spread.single && value == static_cast<double>(static_cast<float>(value));
  }
  return spread;
}

TEST(EquationFunctions, RandomValuesFillTheirRange) {
  struct Range {
    const char* text;
    double low, high;
    bool whole, single;
  };
  for (const Range& c : {Range{"rnd", 0, 1, false, false}, Range{"rnd(1)", 0, 1, false, true},
                         Range{"random(-5,-3)", -5, -3, false, false}, Range{"rand(6)", 0, 5, true, true}}) {
    const Spread spread = SpreadOf(c.text);
    EXPECT_TRUE(spread.low >= c.low && spread.low < c.low + 0.002) << c.text;
    EXPECT_TRUE(spread.high <= c.high && spread.high > c.high - 0.002) << c.text;
    EXPECT_NEAR(spread.mean, (c.low + c.high) / 2, 0.1) << c.text;
    EXPECT_TRUE(spread.whole == c.whole && spread.single == c.single) << c.text;
  }
  EXPECT_EQ(SpreadOf("rnd", 9).mean, SpreadOf("rnd", 9).mean);
  EXPECT_NE(SpreadOf("rnd", 9).mean, SpreadOf("rnd", 10).mean);
}

}  // namespace
}  // namespace tarvolt
