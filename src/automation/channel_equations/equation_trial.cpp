#include "automation/channel_equations/equation_trial.h"

#include <algorithm>

#include "automation/channel_equations/eq_compare.h"
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

  std::string Put(const Datum& datum) {
    const double value = ValueOf(datum, sample_, x_);
    const std::string line = "Subitituted " + FormatNumber(value, kTrialPicture) + " for " + NameOf(datum) + "\n";
    if (datum.kind != DatumKind::X && report.find(line) == std::string::npos) report += line;
    return TextOf(datum, value);
  }
  std::optional<std::string> PutAt(int, const std::string&) { return std::nullopt; }
  void Look(const std::string&) {}

  std::string report;

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

// Runs the statements as a channel would, but tells of the first that cannot be solved.
std::string Solve(const std::string& equation, TrialNumbers& numbers, std::string& formula) {
  EquationState state(1);
  StatementReader<std::string, TrialNumbers> reader(equation, numbers);
  Branching branching;
  try {
    while (const auto statement = reader.Next()) {
      formula += (formula.empty() ? "" : ";") + statement->text;
      if (statement->form == StatementForm::If) {
        branching.Decide(EvaluateCondition(state, statement->text));
      } else if (branching.Runs(statement->form)) {
        RunStatement(state, statement->text);
      }
    }
  } catch (const EquationError& error) {
    return error.Description();
  }
  return "Solution: " + NumberText(state.Solution());
}

}  // namespace

std::string TryEquation(const std::string& equation, const EquationSample& sample,
                        const std::function<std::optional<std::string>()>& askForX) {
  std::string text = Trim(equation);
  if (text.empty()) return "No Equation to Test";
  if (text.find('[') != std::string::npos) return "Sorry we cannot test offset data here.";
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
  std::string formula;
  const std::string result = Solve(text, numbers, formula);
  return report + numbers.report + "Testing Equation ...\n" + formula + " = \n" + result;
}

}  // namespace tarvolt
