// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string_view>

#include "automation/equation/random.h"

namespace tarvolt {

inline constexpr double kEquationPi = 3.14159265358979;
inline constexpr double kEquationE = 2.718281828;  // ten digits, on purpose

/// What a function needs besides its arguments.
struct FunctionContext {
  bool degrees;  ///< angles go in and come out in degrees
  EquationRandom& random;
};

/// A function of an equation. One of a single argument does not look at `y`. Raises Overflow, DivisionByZero and
/// InvalidArgument.
using FunctionBody = double (*)(double x, double y, FunctionContext& context);

struct EquationFunction {
  std::string_view head;  ///< the name and the parenthesis behind it
  int arguments;          ///< 1 or 2
  FunctionBody body;
};

/// The function of a head such as "sin("; nullptr when there is none.
const EquationFunction* FindFunction(std::string_view head);

}  // namespace tarvolt
