#include "automation/channel_equations/text_program.h"

#include "automation/channel_equations/eq_compare.h"
#include "automation/channel_equations/rewriting.h"
#include "text/number.h"

namespace tarvolt {
namespace {

class NumbersAsText {
 public:
  NumbersAsText(const EquationSample& sample, double x) : sample_(sample), x_(x) {}

  std::string Put(const Datum& datum) { return TextOf(datum, ValueOf(datum, sample_, x_)); }
  std::optional<std::string> PutAt(int channel, const std::string& offset) {
    const Datum datum{DatumKind::ZAt, channel, ValLong(offset)};
    if (!IsInRange(datum, sample_)) return std::nullopt;
    return Put(datum);
  }
  void Look(const std::string&) {}

 private:
  const EquationSample& sample_;
  double x_;
};

void TryStatement(EquationState& state, const std::string& statement) {
  try {
    RunStatement(state, statement);
  } catch (const EquationError&) {
    // The last solution stands.
  }
}

}  // namespace

void RunStatement(EquationState& state, const std::string& statement) {
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
    if (!statement->inRange) return std::nullopt;
    if (statement->form == StatementForm::If) {
      branching.Decide(EqCompare(state, statement->text));
    } else if (branching.Runs(statement->form)) {
      TryStatement(state, statement->text);
    }
  }
  return state.Solution();
}

}  // namespace tarvolt
