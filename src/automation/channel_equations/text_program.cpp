// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/channel_equations/text_program.h"

#include "automation/channel_equations/eq_compare.h"
#include "automation/channel_equations/rewriting.h"
#include "text/ansi.h"
#include "text/number.h"

namespace tarvolt {
namespace {

class NumbersAsText {
 public:
  NumbersAsText(const EquationSample& sample, double x) : sample_(sample), x_(x) {}

  std::optional<std::string> Put(const Datum& datum) {
    const std::optional<double> value = ValueOf(datum, sample_, x_);
    if (!value) return std::nullopt;
    return TextOf(datum, *value);
  }
  std::optional<std::string> PutAt(int channel, const std::string& offset) {
    return Put({DatumKind::ZAt, channel, ValLong(offset)});
  }
  void Look(const std::string&) {}

 private:
  const EquationSample& sample_;
  double x_;
};

// On a fault the last solution stands, and a condition does not hold.
void TryStatement(EquationState& state, const RewrittenStatement<std::string>& statement, Branching& branching) {
  const bool isCondition = statement.form == StatementForm::If;
  if (isCondition) branching.Decide(false);
  try {
    if (isCondition) {
      branching.Decide(EqCompare(state, statement.text));
    } else if (branching.Runs(statement.form)) {
      RunStatement(state, statement.text);
    }
  } catch (const EquationError& error) {
    state.Failed(statement.number, error);
  }
}

}  // namespace

void RunStatement(EquationState& state, const std::string& statement) {
  if (Trim(statement).empty()) return;
  const Assignment<std::string> assignment = TakeAssignment(statement);
  state.Solve(assignment.formula);
  if (assignment.name) state.Assign(*assignment.name);
}

std::optional<double> RunAsText(EquationState& state, std::string_view equation, const EquationSample& sample,
                                double x) {
  NumbersAsText numbers(sample, x);
  StatementReader<std::string, NumbersAsText> reader(equation, numbers);
  Branching branching;
  while (const auto statement = reader.Next()) {
    if (!statement->isWhole) return std::nullopt;
    TryStatement(state, *statement, branching);
  }
  return state.Solution();
}

}  // namespace tarvolt
