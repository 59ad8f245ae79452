// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/channel_equations/equation_check.h"

#include <algorithm>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "automation/channel_equations/eq_compare.h"
#include "automation/channel_equations/rewriting.h"
#include "text/ansi.h"
#include "text/number.h"

namespace tarvolt {
namespace {

/// A one in place of each number: a negative one is never put in, as it makes other equations, such as 2^X, faulty.
class Ones {
 public:
  std::optional<std::string> Put(const Datum& datum) { return TextOf(datum, 1); }
  std::optional<std::string> PutAt(int channel, const std::string&) { return Put({DatumKind::ZAt, channel}); }
  void Look(const std::string&) {}
};

/// A formula of an equation, parsed.
struct Formula {
  int channel = 0;
  std::string name;                  ///< that its result is stored under; empty for none
  std::vector<std::string> reads;    ///< the variables that it needs
  std::optional<std::string> fault;  ///< of any numbers and variables
  std::size_t statement = 0;
};

std::vector<std::pair<std::string, std::string>> NamesAndTexts(const RewrittenStatement<std::string>& statement) {
  std::vector<std::pair<std::string, std::string>> found;
  if (statement.form == StatementForm::If) {
    const Condition<std::string> condition = TakeCondition(statement.text);
    if (condition.first) found.emplace_back("", *condition.first);
    if (condition.second) found.emplace_back("", *condition.second);
  } else if (!Trim(statement.text).empty()) {
    const Assignment<std::string> assignment = TakeAssignment(statement.text);
    found.emplace_back(Lower(assignment.name.value_or("")), assignment.formula);
  }
  return found;
}

/// What no number can mend in the form of a statement; a run takes such a condition for one that does not hold.
std::optional<std::string> FaultOfForm(const RewrittenStatement<std::string>& statement, bool hasIf) {
  if (statement.form == StatementForm::Then && !hasIf) return "THEN without an IF before it";
  if (statement.form == StatementForm::Else && !hasIf) return "ELSE without an IF before it";
  if (statement.form != StatementForm::If) return std::nullopt;
  const Condition<std::string> condition = TakeCondition(statement.text);
  if (!condition.first) return "a bracket does not close";
  if (!condition.second || ComparisonOf(condition.between) != Comparison::None) return std::nullopt;
  return "\"" + Trim(condition.between) + "\" is no comparison";
}

/// The formulas of all equations, and the names that they can give a value.
class Checker {
 public:
  explicit Checker(const EquationState& state) : state_(state) {}

  void Add(int channel, const std::string& equation) {
    Ones ones;
    StatementReader<std::string, Ones> reader(equation, ones);
    bool hasIf = false;
    bool hasFormula = false;
    while (const auto statement = reader.Next()) {
      if (auto fault = FaultOfForm(*statement, hasIf)) AddFault(channel, statement->number, *fault);
      hasIf = hasIf || statement->form == StatementForm::If;
      for (const auto& [name, text] : NamesAndTexts(*statement)) {
        hasFormula = hasFormula || statement->form != StatementForm::If;
        formulas_.push_back({channel, name, {}, {}, statement->number});
        Parse(text, formulas_.back());
      }
    }
    if (!hasFormula) AddFault(channel, 1, "there is no formula");
  }

  // A variable may be set behind where it is read: many equations look back at the sample before.
  const Formula* FirstFault() {
    while (NameMore()) {
    }
    for (Formula& formula : formulas_) {
      if (!formula.fault) formula.fault = UnknownIn(formula);
      if (formula.fault) return &formula;
    }
    return nullptr;
  }

 private:
  void AddFault(int channel, std::size_t statement, const std::string& words) {
    formulas_.push_back({channel, "", {}, words, statement});
  }

  void Parse(const std::string& text, Formula& formula) const {
    try {
      ParsedEquation parsed;
      state_.Parse(text, parsed);
      for (const VariableLoad& load : parsed.plan.loads) {
        if (load.row == Variables::kNone) formula.reads.emplace_back(load.name);
      }
      if (parsed.plan.failure) formula.fault = parsed.plan.failure->Description();
    } catch (const EquationError& error) {
      formula.fault = error.Description();
    }
  }

  bool NameMore() {
    const std::size_t before = names_.size();
    for (const Formula& formula : formulas_) {
      if (!formula.name.empty() && !formula.fault && !UnknownIn(formula)) names_.insert(formula.name);
    }
    return names_.size() > before;
  }

  std::optional<std::string> UnknownIn(const Formula& formula) const {
    const auto unknown = std::find_if(formula.reads.begin(), formula.reads.end(),
                                      [this](const std::string& name) { return !names_.contains(name); });
    if (unknown == formula.reads.end()) return std::nullopt;
    return EquationError(EquationFault::UndefinedVariable, *unknown).Description();
  }

  const EquationState& state_;
  std::vector<Formula> formulas_;
  std::set<std::string> names_;
};

std::string CalledEquation(int channel) {
  return "Equation of channel " + NumberText(std::int64_t{channel + 1});
}

}  // namespace

std::string FaultText(int channel, std::string_view equation, const StatementFault& fault) {
  for (std::size_t passed = 1; passed < fault.statement; ++passed) equation.remove_prefix(equation.find(';') + 1);
  return CalledEquation(channel) + ", statement " + NumberText(static_cast<std::int64_t>(fault.statement)) + " \"" +
         Trim(equation.substr(0, equation.find(';'))) + "\": " + fault.words;
}

std::string TooLongText(int channel) {
  return CalledEquation(channel) + " is too long: it may have " +
         NumberText(static_cast<std::int64_t>(kLongestChannelEquation)) + " characters";
}

Outcome CheckLengths(const EquationSet& set) {
  for (std::size_t channel = 0; channel < set.EquString.size(); ++channel) {
    if (set.EquString[channel].size() > kLongestChannelEquation) {
      return Failure{TooLongText(static_cast<int>(channel))};
    }
  }
  return Done();
}

Outcome CheckEquations(const EquationSet& set, int channels, const EquationState& state) {
  Checker checker(state);
  for (int channel = 0; channel < channels; ++channel) {
    if (!set.Applies(channel)) continue;
    const std::string equation = Trim(set.EquString[static_cast<std::size_t>(channel)]);
    if (equation.size() > kLongestChannelEquation) return Failure{TooLongText(channel)};
    checker.Add(channel, equation);
  }
  const Formula* found = checker.FirstFault();
  if (found == nullptr) return Done();
  const std::string equation = Trim(set.EquString[static_cast<std::size_t>(found->channel)]);
  return Failure{FaultText(found->channel, equation, {found->statement, *found->fault})};
}

}  // namespace tarvolt
