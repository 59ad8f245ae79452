// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/equation/functions.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "automation/equation/arithmetic.h"

namespace tarvolt {
namespace {

using Context = FunctionContext;

constexpr double kRadiansADegree = 0.017453292519943278;
constexpr double kDegreesARadian = 57.29577951308238;

double AngleIn(double x, const Context& context) {
  return context.degrees ? x * kRadiansADegree : x;
}

double AngleOut(double x, const Context& context) {
  return context.degrees ? x * kDegreesARadian : x;
}

double Square(double x) {
  return Checked(x * x);
}

double Sign(double x) {
  return static_cast<double>((x > 0) - (x < 0));
}

double RightAngle() {
  return 2 * std::atan(1.0);
}

double Sin(double x, double, Context& context) {
  return std::sin(AngleIn(x, context));
}

double Cos(double x, double, Context& context) {
  return std::cos(AngleIn(x, context));
}

double Tan(double x, double, Context& context) {
  return std::tan(AngleIn(x, context));
}

double ArcTan(double x, double, Context& context) {
  return AngleOut(std::atan(x), context);
}

double ArcSin(double x, double, Context& context) {
  return AngleOut(std::atan(Quotient(x, SquareRoot(1 - Square(x)))), context);
}

double ArcCos(double x, double, Context& context) {
  return AngleOut(std::atan(Quotient(-x, SquareRoot(1 - Square(x)))) + RightAngle(), context);
}

// Secant and cosecant share one formula on purpose.
double ArcSecOrArcCosec(double x, double, Context& context) {
  return AngleOut(std::atan(Quotient(x, SquareRoot(Square(x) - 1))) + Sign(x) * RightAngle(), context);
}

// The argument is no angle, and yet it is taken for one: meant so.
double ArcCotan(double x, double, Context& context) {
  return AngleOut(std::atan(AngleIn(x, context)) + RightAngle(), context);
}

double TwoCosh(double x) {
  return Checked(Exponential(x) + Exponential(-x));
}

double TwoSinh(double x) {
  return Checked(Exponential(x) - Exponential(-x));
}

// "cosh(" gives the hyperbolic tangent too, on purpose.
double Tanh(double x, double, Context&) {
  return Quotient(TwoSinh(x), TwoCosh(x));
}

// "Whole part" drops the fraction of a negative product too.
double Rand(double x, double, Context& context) {
  return std::trunc(context.random.Next() * x);
}

double Random(double x, double y, Context& context) {
  return context.random.Next() * Checked(y - x) + x;
}

constexpr std::array kFunctions = {
    EquationFunction{"not(", 1, [](double x, double, Context&) { return static_cast<double>(~ToLong(x)); }},
    EquationFunction{"abs(", 1, [](double x, double, Context&) { return std::abs(x); }},
    EquationFunction{"atn(", 1, ArcTan},
    EquationFunction{"arctan(", 1, ArcTan},
    EquationFunction{"cos(", 1, Cos},
    EquationFunction{"sin(", 1, Sin},
    EquationFunction{"tan(", 1, Tan},
    EquationFunction{"exp(", 1, [](double x, double, Context&) { return std::exp(x); }},
    EquationFunction{"fix(", 1, [](double x, double, Context&) { return std::trunc(x); }},
    EquationFunction{"int(", 1, [](double x, double, Context&) { return std::floor(x); }},
    EquationFunction{"log(", 1, [](double x, double, Context&) { return NaturalLogarithm(x); }},
    EquationFunction{"ln(", 1, [](double x, double, Context&) { return NaturalLogarithm(x); }},
    EquationFunction{"rnd(", 1,
                     [](double, double, Context& context) { return static_cast<double>(context.random.NextSingle()); }},
    EquationFunction{"sgn(", 1, [](double x, double, Context&) { return Sign(x); }},
    EquationFunction{"sqr(", 1, [](double x, double, Context&) { return SquareRoot(x); }},
    EquationFunction{"min(", 2, [](double x, double y, Context&) { return std::min(x, y); }},
    EquationFunction{"max(", 2, [](double x, double y, Context&) { return std::max(x, y); }},
    EquationFunction{"random(", 2, Random},
    EquationFunction{"mod(", 2, [](double x, double y, Context&) { return Remainder(x, y); }},
    EquationFunction{"logn(", 2,
                     [](double x, double y, Context&) { return Quotient(NaturalLogarithm(x), NaturalLogarithm(y)); }},
    EquationFunction{"log10(", 1, [](double x, double, Context&) { return NaturalLogarithm(x) / std::log(10.0); }},
    EquationFunction{"log2(", 1, [](double x, double, Context&) { return NaturalLogarithm(x) / std::log(2.0); }},
    EquationFunction{"rand(", 1, Rand},
    EquationFunction{"sec(", 1, [](double x, double y, Context& context) { return Quotient(1, Cos(x, y, context)); }},
    EquationFunction{"cosec(", 1, [](double x, double y, Context& context) { return Quotient(1, Sin(x, y, context)); }},
    EquationFunction{"cotan(", 1, [](double x, double y, Context& context) { return Quotient(1, Tan(x, y, context)); }},
    EquationFunction{"arcsin(", 1, ArcSin},
    EquationFunction{"arccos(", 1, ArcCos},
    EquationFunction{"arcsec(", 1, ArcSecOrArcCosec},
    EquationFunction{"arccosec(", 1, ArcSecOrArcCosec},
    EquationFunction{"arccotan(", 1, ArcCotan},
    EquationFunction{"sinh(", 1, [](double x, double, Context&) { return TwoSinh(x) / 2; }},
    EquationFunction{"cosh(", 1, Tanh},
    EquationFunction{"tanh(", 1, Tanh},
    EquationFunction{"sech(", 1, [](double x, double, Context&) { return Quotient(2, TwoCosh(x)); }},
    EquationFunction{"cosech(", 1, [](double x, double, Context&) { return Quotient(2, TwoSinh(x)); }},
    EquationFunction{"cotanh(", 1, [](double x, double, Context&) { return Quotient(TwoCosh(x), TwoSinh(x)); }},
    EquationFunction{
        "arcsinh(", 1,
        [](double x, double, Context&) { return NaturalLogarithm(x + SquareRoot(Checked(Square(x) + 1))); }},
    EquationFunction{"arccosh(", 1,
                     [](double x, double, Context&) { return NaturalLogarithm(x + SquareRoot(Square(x) - 1)); }},
    EquationFunction{"arctanh(", 1,
                     [](double x, double, Context&) { return NaturalLogarithm(Quotient(1 + x, 1 - x)) / 2; }},
    EquationFunction{
        "arcsech(", 1,
        [](double x, double, Context&) { return NaturalLogarithm(Quotient(SquareRoot(1 - Square(x)) + 1, x)); }},
    EquationFunction{"arccosech(", 1,
                     [](double x, double,
                        Context&) { return NaturalLogarithm(Quotient(Sign(x) * SquareRoot(Square(x) + 1) + 1, x)); }},
    EquationFunction{"arccotanh(", 1,
                     [](double x, double, Context&) { return NaturalLogarithm(Quotient(x + 1, x - 1)) / 2; }},
    EquationFunction{"deg(", 1, [](double x, double, Context&) { return x * kDegreesARadian; }},
    EquationFunction{"rad(", 1, [](double x, double, Context&) { return x * kRadiansADegree; }},
};

}  // namespace

const EquationFunction* FindFunction(std::string_view head) {
  const auto* found = std::find_if(kFunctions.begin(), kFunctions.end(),
                                   [head](const EquationFunction& function) { return function.head == head; });
  return found == kFunctions.end() ? nullptr : &*found;
}

}  // namespace tarvolt
