// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "automation/equation/equation_error.h"
#include "automation/equation/functions.h"
#include "automation/equation/variables.h"

namespace tarvolt {

enum class Action : std::uint8_t {
  Negate,
  Multiply,
  Divide,
  Add,
  Subtract,
  DivideWhole,
  Remainder,
  Power,
  Random,
  Call,
};

/// One step of an evaluation: the values at the places `a` and `b` are combined and go to the place `to`.
struct Step {
  Action action;
  bool chained;  ///< `a` is the result of the step before, which need not be fetched then
  std::uint32_t to;
  std::uint32_t a;
  std::uint32_t b;
  FunctionBody function;  ///< of Call
};

/// A variable that the equation reads.
struct VariableLoad {
  std::string_view name;  ///< lower case; in the text of the token list
  std::uint32_t place;    ///< of its value
  std::uint32_t before;   ///< the count of steps that come first; they fail first
  std::int64_t row = Variables::kNone;
};

/// What remains of an equation when its tokens have been walked once: which values meet in which order never depends
/// on the values. Each step has a place of its own for its result, so that the numbers among the values stay.
struct Plan {
  std::vector<double> values;  ///< one place a token; the places of numbers are filled
  std::vector<Step> steps;
  std::vector<VariableLoad> loads;       ///< in the order of their tokens' turn
  std::size_t defined = 0;               ///< how many of the loads come before the first without a variable
  std::uint32_t result = 0;              ///< the place of the result
  std::optional<EquationError> failure;  ///< what every evaluation ends with behind its steps
};

/// Finds the rows of the variables: for a plan that is new, and whenever rows have come or gone.
void LinkVariables(Plan& plan, const Variables& variables);

/// Runs the steps and returns the result. Costs one step an operator and allocates nothing. Raises the first fault.
double ExecutePlan(Plan& plan, const Variables& variables, FunctionContext& context);

}  // namespace tarvolt
