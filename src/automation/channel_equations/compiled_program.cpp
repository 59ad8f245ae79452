#include "automation/channel_equations/compiled_program.h"

#include <algorithm>

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

  SlottedText Put(const Datum& datum) {
    const auto known = std::find(slots_.begin(), slots_.end(), datum);
    const auto slot = static_cast<std::size_t>(known - slots_.begin());
    if (known == slots_.end()) slots_.push_back(datum);
    if (datum.kind == DatumKind::ZAt) otherSamples.push_back(slot);
    return SlottedText(1, static_cast<char16_t>(kFirstSlot + slot));
  }

  std::optional<SlottedText> PutAt(int channel, const SlottedText& offset) {
    matterOfText = matterOfText || HasSlot(offset);
    return Put({DatumKind::ZAt, channel, ValLong(BytesOf(offset, '0'))});
  }

  void Look(const SlottedText& text) { matterOfText = matterOfText || MayBecomeAWord(text); }

  bool matterOfText = false;
  std::vector<std::size_t> otherSamples;  ///< of the statement under way

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
    statement->otherSamples = std::exchange(maker.otherSamples, {});
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
    const Condition<SlottedText> condition = TakeCondition(rewritten.text);
    if (condition.first) statement.expressions.emplace_back(*condition.first);
    if (condition.second) statement.expressions.emplace_back(*condition.second);
    statement.comparison = ComparisonOf(BytesOf(condition.between, '0'));
  } else {
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

bool CompiledProgram::Take(const EquationSample& sample, double x) {
  for (std::size_t i = 0; i < slots_.size(); ++i) {
    missing_[i] = !IsInRange(slots_[i], sample);
    if (missing_[i]) continue;
    Place(slots_[i], ValueOf(slots_[i], sample, x), numbers_[i]);
    if (!numbers_[i].plain) return false;
  }
  return true;
}

std::optional<double> CompiledProgram::Run(EquationState& state) {
  Branching branching;
  for (Statement& statement : statements_) {
    if (AsksForMissing(statement)) return std::nullopt;
    if (statement.form == StatementForm::If) {
      branching.Decide(Holds(state, statement));
    } else if (branching.Runs(statement.form)) {
      Solve(state, statement);
    }
  }
  return state.Solution();
}

bool CompiledProgram::AsksForMissing(const Statement& statement) const {
  return std::any_of(statement.otherSamples.begin(), statement.otherSamples.end(),
                     [this](std::size_t slot) { return missing_[slot]; });
}

bool CompiledProgram::Holds(EquationState& state, Statement& condition) const {
  if (condition.expressions.empty()) return false;
  try {
    const double first = condition.expressions[0].Solve(state, slots_, numbers_);
    if (condition.expressions.size() == 1) return first != 0;
    const double second = condition.expressions[1].Solve(state, slots_, numbers_);
    return Compare(condition.comparison, first, second);
  } catch (const EquationError&) {
    return false;
  }
}

void CompiledProgram::Solve(EquationState& state, Statement& statement) const {
  try {
    statement.expressions[0].Solve(state, slots_, numbers_);
    if (!statement.name.empty()) state.Assign(statement.name);
  } catch (const EquationError&) {
    // The last solution stands.
  }
}

}  // namespace tarvolt
