// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cmath>
#include <cstdint>

#include "automation/equation/equation_error.h"

namespace tarvolt {

/// The value itself; what is no finite number is an overflow.
inline double Checked(double value) {
  if (!std::isfinite(value)) Raise(EquationFault::Overflow);
  return value;
}

/// a / b. Any division by zero is one, 0/0 too.
inline double Quotient(double a, double b) {
  if (b == 0) Raise(EquationFault::DivisionByZero);
  return Checked(a / b);
}

/// The nearest whole number, a half going to the even neighbour. Outside 32 bits it is an overflow.
inline std::int32_t ToLong(double value) {
  const double whole = std::nearbyint(value);
  if (!(whole >= INT32_MIN && whole <= INT32_MAX)) Raise(EquationFault::Overflow);
  return static_cast<std::int32_t>(whole);
}

/// Both rounded to 32 bits, then divided, toward zero.
inline double WholeQuotient(double a, double b) {
  const std::int64_t dividend = ToLong(a);
  const std::int64_t divisor = ToLong(b);
  if (divisor == 0) Raise(EquationFault::DivisionByZero);
  const std::int64_t quotient = dividend / divisor;
  return ToLong(static_cast<double>(quotient));
}

/// Both rounded to 32 bits, then what remains of a, with the sign of a.
inline double Remainder(double a, double b) {
  const std::int64_t dividend = ToLong(a);
  const std::int64_t divisor = ToLong(b);
  if (divisor == 0) Raise(EquationFault::DivisionByZero);
  return static_cast<double>(dividend % divisor);
}

/// a to the power b; 0^0 is 1. The small powers that polynomials are made of are products. A negative number has no
/// broken powers, and zero no negative ones.
inline double Power(double a, double b) {
  if (b == 2) return Checked(a * a);
  if (b == 3) return Checked(a * a * a);
  if (b == 4) return Checked((a * a) * (a * a));
  if (a == 0 && b < 0) Raise(EquationFault::DivisionByZero);
  if (a < 0 && b != std::trunc(b)) Raise(EquationFault::InvalidArgument);
  return Checked(std::pow(a, b));
}

inline double SquareRoot(double x) {
  if (!(x >= 0)) Raise(EquationFault::InvalidArgument);
  return std::sqrt(x);
}

inline double NaturalLogarithm(double x) {
  if (!(x > 0)) Raise(EquationFault::InvalidArgument);
  return std::log(x);
}

inline double Exponential(double x) {
  return Checked(std::exp(x));
}

}  // namespace tarvolt
