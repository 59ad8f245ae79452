// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/equation/equation.h"

#include "automation/equation/walk.h"
#include "text/ansi.h"

namespace tarvolt {

clsEquation::clsEquation(char decimalSeparator, std::uint64_t seed)
    : decimalSeparator_(decimalSeparator), random_(seed) {}

void clsEquation::Degrees(bool degrees) {
  if (degrees == degrees_) return;
  degrees_ = degrees;
  stale_ = true;
}

void clsEquation::Equation(std::string_view text) {
  equation_ = Lower(text);
  parsed_ = false;
  stale_ = true;
}

double clsEquation::Var(std::string_view name) const {
  const std::int64_t row = variables_.Find(name);
  if (row == Variables::kNone) Raise(EquationFault::InvalidArgument);
  return variables_.Value(row);
}

void clsEquation::VarClear() {
  variables_.Clear();
  stale_ = true;
}

void clsEquation::VarRemove(std::string_view name) {
  if (!variables_.Remove(name)) Raise(EquationFault::InvalidArgument);
  stale_ = true;
}

void clsEquation::Parse(std::string_view text, ParsedEquation& parsed) const {
  ScanEquation(Lower(text), decimalSeparator_, parsed.tokens);
  MakeOrderList(parsed.tokens, parsed.order);
  WalkOrderList(parsed.tokens, parsed.order, decimalSeparator_, parsed.plan);
  LinkVariables(parsed.plan, variables_);
  parsed.linkedGeneration = variables_.Generation();
}

double clsEquation::Evaluate(ParsedEquation& parsed) {
  if (parsed.linkedGeneration != variables_.Generation()) {
    LinkVariables(parsed.plan, variables_);
    parsed.linkedGeneration = variables_.Generation();
  }
  FunctionContext context{degrees_, random_};
  return ExecutePlan(parsed.plan, variables_, context);
}

void clsEquation::Solve() {
  if (!parsed_) {
    Parse(equation_, parse_);
    parsed_ = true;
  }
  solution_ = Evaluate(parse_);
  stale_ = false;
}

}  // namespace tarvolt
