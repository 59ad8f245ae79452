// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/equation/plan.h"

#include "automation/equation/arithmetic.h"

namespace tarvolt {

namespace {

void RunSteps(Plan& plan, std::size_t count, FunctionContext& context) {
  double* const values = plan.values.data();
  double last = 0;
  const Step* const end = plan.steps.data() + count;
  for (const Step* at = plan.steps.data(); at != end; ++at) {
    const Step& step = *at;
    const double a = step.chained ? last : values[step.a];
    switch (step.action) {
      case Action::Negate:
        last = -a;
        break;
      case Action::Multiply:
        last = Checked(a * values[step.b]);
        break;
      case Action::Divide:
        last = Quotient(a, values[step.b]);
        break;
      case Action::Add:
        last = Checked(a + values[step.b]);
        break;
      case Action::Subtract:
        last = Checked(a - values[step.b]);
        break;
      case Action::DivideWhole:
        last = WholeQuotient(a, values[step.b]);
        break;
      case Action::Remainder:
        last = Remainder(a, values[step.b]);
        break;
      case Action::Power:
        last = Power(a, values[step.b]);
        break;
      case Action::Random:
        last = context.random.Next();
        break;
      case Action::Call:
        last = Checked(step.function(a, values[step.b], context));
        break;
    }
    values[step.to] = last;
  }
}

}  // namespace

void LinkVariables(Plan& plan, const Variables& variables) {
  plan.defined = plan.loads.size();
  for (std::size_t i = plan.loads.size(); i-- > 0;) {
    VariableLoad& load = plan.loads[i];
    load.row = variables.Find(load.name);
    if (load.row == Variables::kNone) plan.defined = i;
  }
}

double ExecutePlan(Plan& plan, const Variables& variables, FunctionContext& context) {
  for (std::size_t i = 0; i < plan.defined; ++i) plan.values[plan.loads[i].place] = variables.Value(plan.loads[i].row);
  const bool allDefined = plan.defined == plan.loads.size();
  RunSteps(plan, allDefined ? plan.steps.size() : plan.loads[plan.defined].before, context);
  if (!allDefined) Raise(EquationFault::UndefinedVariable, plan.loads[plan.defined].name);
  if (plan.failure) throw EquationError(*plan.failure);
  return plan.values[plan.result];
}

}  // namespace tarvolt
