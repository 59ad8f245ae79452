// SPDX-License-Identifier: GPL-3.0-or-later
#include <charconv>
#include <cmath>
#include <random>

#include "automation/equation/equation.h"
#include "commands.h"
#include "output.h"
#include "text/ansi.h"
#include "text/number.h"

namespace tarvolt {
namespace {

constexpr char kDecimalSeparator = '.';

struct Variable {
  std::string name;
  double value = 0;
  bool good = false;
};

Variable VariableOf(const std::string& text) {
  Variable variable;
  const std::size_t sign = text.find('=');
  if (sign == std::string::npos || sign == 0) return variable;
  variable.name = AnsiFromUtf8(text.substr(0, sign));
  const char* const end = text.data() + text.size();
  const auto read = std::from_chars(text.data() + sign + 1, end, variable.value);
  variable.good = read.ec == std::errc() && read.ptr == end && std::isfinite(variable.value);
  return variable;
}

}  // namespace

std::string VariableFault(const std::string& variable) {
  return VariableOf(variable).good ? "" : variable + " is not NAME=VALUE with a number as the value";
}

bool PrintValue(const EvalRequest& request) {
  clsEquation equation(kDecimalSeparator, std::random_device{}());
  equation.Degrees(request.degrees);
  for (const std::string& text : request.variables) {
    const Variable variable = VariableOf(text);
    equation.Var(variable.name, variable.value);
  }
  equation.Equation(AnsiFromUtf8(request.expression));
  try {
    equation.Solve();
  } catch (const EquationError& error) {
    Complain(Utf8FromAnsi(error.Description()) + " (error " + NumberText(static_cast<std::int64_t>(error.Number())) +
             ")");
    return false;
  }
  Output output;
  output.Put(Exact(equation.Solution()) + '\n');
  return output.Flush();
}

}  // namespace tarvolt
