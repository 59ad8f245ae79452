// SPDX-License-Identifier: GPL-3.0-or-later
#include <bit>
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

#include "automation/equation/equation.h"
#include "require.h"
#include "slow_evaluator.h"

namespace tarvolt {
namespace {

/// A solution, or the number of the fault.
struct Outcome {
  int fault = 0;
  double value = 0;

  bool Is(const Outcome& other) const {
    return fault == other.fault && std::bit_cast<std::uint64_t>(value) == std::bit_cast<std::uint64_t>(other.value);
  }
};

Outcome Solve(clsEquation& equation) {
  try {
    equation.Solve();
    return {0, equation.Solution()};
  } catch (const EquationError& error) {
    const int number = error.Number();
    Require(number == 5 || number == 6 || number == 11 || (number >= 1100 && number <= 1106));
    Require(!error.Description().empty());
    return {number, 0};
  }
}

void SetVariables(clsEquation& equation, double x) {
  equation.Var("x", x);
  equation.Var("y", -2);
  equation.Var("a", 1e300);
}

// It gives what the rules followed to the letter give, as far as those go: they know but some of the functions, and
// neither random values nor limits of length and depth.
void RequireRules(const Outcome& found, std::string_view text, bool degrees) {
  const SlowResult expected = EvaluateSlowly(std::string(text), {{"x", 3}, {"y", -2}, {"a", 1e300}}, degrees);
  if (expected.fault == 1101 || expected.words == "Undefined Variable: rnd") return;
  if (found.fault == 1105 || found.fault == 1106) return;
  Require(found.fault == expected.fault);
  Require(std::abs(found.value - expected.value) <= std::abs(expected.value) * 1e-14);
}

void Try(std::string_view text, char separator, bool degrees) {
  clsEquation equation(separator);
  equation.Degrees(degrees);
  equation.Equation(text);
  Solve(equation);  // no variables yet
  SetVariables(equation, 0.5);
  Solve(equation);
  SetVariables(equation, 3);
  const Outcome found = Solve(equation);
  if (separator == '.') RequireRules(found, text, degrees);
  if (equation.Equation().find("r") != std::string::npos) return;  // perhaps a random value

  // What was parsed and solved before leaves no trace in a later evaluation.
  clsEquation fresh(separator);
  SetVariables(fresh, 3);
  fresh.Degrees(degrees);
  fresh.Equation(text);
  Require(found.Is(Solve(fresh)));
}

}  // namespace
}  // namespace tarvolt

/// The first byte chooses the decimal separator and the unit of angles.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
  tarvolt::Try(text, (data[0] & 1) != 0 ? ',' : '.', (data[0] & 2) != 0);
  return 0;
}
