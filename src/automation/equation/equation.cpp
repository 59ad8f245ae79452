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

void clsEquation::Parse() {
  ScanEquation(equation_, decimalSeparator_, tokens_);
  MakeOrderList(tokens_, order_);
  WalkOrderList(tokens_, order_, decimalSeparator_, plan_);
  LinkVariables(plan_, variables_);
  linkedGeneration_ = variables_.Generation();
  parsed_ = true;
}

void clsEquation::Solve() {
  if (!parsed_) Parse();
  if (linkedGeneration_ != variables_.Generation()) {
    LinkVariables(plan_, variables_);
    linkedGeneration_ = variables_.Generation();
  }
  FunctionContext context{degrees_, random_};
  solution_ = RunPlan(plan_, variables_, context);
  stale_ = false;
}

}  // namespace tarvolt
