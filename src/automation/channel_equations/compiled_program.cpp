// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/channel_equations/compiled_program.h"

#include <algorithm>

#include "text/ansi.h"
#include "text/number.h"

namespace tarvolt {
namespace {

bool HasSlot(const SlottedText& text) {
  return std::any_of(text.begin(), text.end(), IsSlot);
}

// The ends of the words that are looked for with a digit behind them: Z1, MsgData1, DataMin1, DataMax1. A number that
// comes to stand there may become that digit.
bool MayBecomeAWord(const SlottedText& text) {
  constexpr std::u16string_view kEnds = u"Zanx";
  for (std::size_t i = 1; i < text.size(); ++i) {
    if (IsSlot(text[i]) && kEnds.find(text[i - 1]) != std::u16string_view::npos) return true;
  }
  return false;
}

}  // namespace

/// Puts a mark in place of each number.
class CompiledProgram::SlotMaker {
 public:
  explicit SlotMaker(Slots& slots) : slots_(slots) {}

  std::optional<SlottedText> Put(const Datum& datum) {
    const auto known = std::find(slots_.begin(), slots_.end(), datum);
    const auto slot = static_cast<std::size_t>(known - slots_.begin());
    if (known == slots_.end()) slots_.push_back(datum);
    numbers.push_back(slot);
    return SlottedText(1, static_cast<char16_t>(kFirstSlot + slot));
  }

  std::optional<SlottedText> PutAt(int channel, const SlottedText& offset) {
    matterOfText = matterOfText || HasSlot(offset);
    return Put({DatumKind::ZAt, channel, ValLong(BytesOf(offset, '0'))});
  }

  void Look(const SlottedText& text) { matterOfText = matterOfText || MayBecomeAWord(text); }

  bool matterOfText = false;
  std::vector<std::size_t> numbers;  ///< of the statement under way; to begin with, of the whole equation

 private:
  Slots& slots_;
};

std::optional<CompiledProgram> CompiledProgram::Compile(std::string_view equation) {
  CompiledProgram program;
  SlotMaker maker(program.slots_);
  StatementReader<SlottedText, SlotMaker> reader(equation, maker);
  while (const auto rewritten = reader.Next()) {
    if (maker.matterOfText) return std::nullopt;
    std::optional<Statement> statement = CompileStatement(*rewritten);
    if (!statement) return std::nullopt;
    statement->numbers = std::exchange(maker.numbers, {});
    program.statements_.push_back(std::move(*statement));
  }
  program.numbers_.resize(program.slots_.size());
  program.missing_.resize(program.slots_.size());
  return program;
}

std::optional<CompiledProgram::Statement> CompiledProgram::CompileStatement(
    const RewrittenStatement<SlottedText>& rewritten) {
  Statement statement;
  statement.form = rewritten.form;
  if (rewritten.form == StatementForm::If) {
    CompileCondition(rewritten.text, statement);
  } else if (!Trim(BytesOf(rewritten.text, '0')).empty()) {
    const Assignment<SlottedText> assignment = TakeAssignment(rewritten.text);
    statement.expressions.emplace_back(assignment.formula);
    // A name that begins with a number is never read; one with a number further on is another one each time.
    if (assignment.name && !assignment.name->empty() && !IsSlot(assignment.name->front())) {
      if (HasSlot(*assignment.name)) return std::nullopt;
      statement.name = BytesOf(*assignment.name, '0');
    }
  }
  const bool fits = std::all_of(statement.expressions.begin(), statement.expressions.end(),
                                [](const CompiledExpression& expression) { return expression.IsShortEnough(); });
  if (!fits) return std::nullopt;
  return statement;
}

void CompiledProgram::CompileCondition(const SlottedText& text, Statement& statement) {
  const Condition<SlottedText> condition = TakeCondition(text);
  if (condition.first) statement.expressions.emplace_back(*condition.first);
  if (condition.second) statement.expressions.emplace_back(*condition.second);
  statement.comparison = ComparisonOf(BytesOf(condition.between, '0'));
}

bool CompiledProgram::Take(const EquationSample& sample, double x) {
  for (std::size_t i = 0; i < slots_.size(); ++i) {
    const std::optional<double> value = ValueOf(slots_[i], sample, x);
    missing_[i] = !value;
    if (!value) continue;
    Place(slots_[i], *value, numbers_[i]);
    if (!numbers_[i].plain) return false;
  }
  return true;
}

std::optional<double> CompiledProgram::Run(EquationState& state) {
  Branching branching;
  for (Statement& statement : statements_) {
    if (AsksForMissing(statement)) return std::nullopt;
    RunStatement(state, statement, branching);
  }
  return state.Solution();
}

bool CompiledProgram::AsksForMissing(const Statement& statement) const {
  return std::any_of(statement.numbers.begin(), statement.numbers.end(),
                     [this](std::size_t slot) { return missing_[slot]; });
}

// On a fault the last solution stands, and a condition does not hold.
void CompiledProgram::RunStatement(EquationState& state, Statement& statement, Branching& branching) const {
  const bool isCondition = statement.form == StatementForm::If;
  if (isCondition) branching.Decide(false);
  try {
    if (isCondition) {
      branching.Decide(Holds(state, statement));
    } else if (branching.Runs(statement.form) && !statement.expressions.empty()) {
      statement.expressions[0].Solve(state, slots_, numbers_);
      if (!statement.name.empty()) state.Assign(statement.name);
    }
  } catch (const EquationError& error) {
    state.Failed(static_cast<std::size_t>(&statement - statements_.data()) + 1, error);
  }
}

bool CompiledProgram::Holds(EquationState& state, Statement& condition) const {
  if (condition.expressions.empty()) return false;
  const double first = condition.expressions[0].Solve(state, slots_, numbers_);
  if (condition.expressions.size() == 1) return first != 0;
  const double second = condition.expressions[1].Solve(state, slots_, numbers_);
  return Compare(condition.comparison, first, second);
}

}  // namespace tarvolt
