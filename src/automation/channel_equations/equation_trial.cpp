// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/channel_equations/equation_trial.h"

#include <algorithm>

#include "automation/channel_equations/eq_compare.h"
#include "automation/channel_equations/equation_check.h"
#include "automation/channel_equations/rewriting.h"
#include "automation/channel_equations/text_program.h"
#include "text/ansi.h"
#include "text/number.h"

namespace tarvolt {
namespace {

constexpr const char* kTrialPicture = "#######0.#############";

/// Notes what is put in, each name once.
class TrialNumbers {
 public:
  TrialNumbers(const EquationSample& sample, double x) : sample_(sample), x_(x) {}

  std::optional<std::string> Put(const Datum& datum) {
    const std::optional<double> value = ValueOf(datum, sample_, x_);
    if (!value) {
      missing = NameOf(datum);
      return std::nullopt;
    }
    const std::string line = "Subitituted " + FormatNumber(*value, kTrialPicture) + " for " + NameOf(datum) + "\n";
    if (datum.kind != DatumKind::X && report.find(line) == std::string::npos) report += line;
    return TextOf(datum, *value);
  }
  std::optional<std::string> PutAt(int, const std::string&) { return std::nullopt; }
  void Look(const std::string&) {}

  std::string report;
  std::string missing;  ///< the name of what is no finite number

 private:
  static std::string NameOf(const Datum& datum) {
    if (datum.kind == DatumKind::Z) return std::string{'Z', static_cast<char>('1' + datum.channel)};
    for (const auto* list : {&TimesAndMessages(), &DataExtremes()}) {
      const auto named = std::find_if(list->begin(), list->end(), [&](const auto& row) { return row.datum == datum; });
      if (named != list->end()) return named->name;
    }
    return "X";
  }

  const EquationSample& sample_;
  double x_;
};

/// Runs the statements of one equation as a channel would, and describes what they do.
class Trial {
 public:
  explicit Trial(TrialNumbers& numbers) : numbers_(numbers) {}

  /// Gives the solution, or the first fault.
  std::string Solve(const std::string& equation) {
    StatementReader<std::string, TrialNumbers> reader(equation, numbers_);
    while (const auto statement = reader.Next()) {
      if (!statement->isWhole) return numbers_.missing + " is no finite number: the channel keeps its value";
      formula += (formula.empty() ? "" : ";") + statement->text;
      try {
        Run(*statement);
      } catch (const EquationError& error) {
        return "Statement " + NumberText(static_cast<std::int64_t>(statement->number)) + ": " + error.Description();
      }
    }
    return "Solution: " + NumberText(state_.Solution());
  }

  std::string formula;
  std::string branches;

 private:
  void Run(const RewrittenStatement<std::string>& statement) {
    if (statement.form == StatementForm::If) {
      const bool holds = EqCompare(state_, statement.text);
      branching_.Decide(holds);
      branches += statement.text + (holds ? " is true\n" : " is false\n");
    } else if (branching_.Runs(statement.form)) {
      RunStatement(state_, statement.text);
      if (statement.form == StatementForm::Then) branches += "THEN{" + statement.text + "} ran\n";
      if (statement.form == StatementForm::Else) branches += "ELSE{" + statement.text + "} ran\n";
    }
  }

  TrialNumbers& numbers_;
  EquationState state_{1};
  Branching branching_;
};

}  // namespace

std::string TryEquation(const std::string& equation, const EquationSample& sample,
                        const std::function<std::optional<std::string>()>& askForX) {
  std::string text = Trim(equation);
  if (text.empty()) return "No Equation to Test";
  if (text.find('[') != std::string::npos) return "Sorry we cannot test offset data here.";
  if (text.size() > kLongestChannelEquation) return EquationError(EquationFault::TooLong).Description();
  std::replace(text.begin(), text.end(), 'x', 'X');
  std::replace(text.begin(), text.end(), 'z', 'Z');
  double x = 0;
  std::string report;
  if (text.find('X') != std::string::npos) {
    const std::optional<std::string> entered = askForX();
    if (!entered) return {};
    x = Val(*entered);
    report = "Subitituted " + FormatNumber(x, kTrialPicture) + " for X\n";
  }
  TrialNumbers numbers(sample, x);
  Trial trial(numbers);
  const std::string result = trial.Solve(text);
  return report + numbers.report + trial.branches + "Testing Equation ...\n" + trial.formula + " = \n" + result;
}

}  // namespace tarvolt
