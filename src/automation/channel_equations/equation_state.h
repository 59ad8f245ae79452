// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "automation/equation/equation.h"
#include "text/ansi.h"

namespace tarvolt {

/// A statement of an equation that could not be solved.
struct StatementFault {
  std::size_t statement = 0;  ///< counted from 1
  std::string words;
};

/// What the equations of a window share: the evaluator with its variables, which carry from statement to statement,
/// from channel to channel and from sample to sample, and the last solution.
class EquationState {
 public:
  /// More names than this are not kept: a name with a number in it could be a new one each sample.
  static constexpr std::size_t kMostVariables = 10000;

  /// Numbers have a "." wherever the machine stands (meant): an equation means the same at every station.
  explicit EquationState(std::uint64_t seed) : equation_('.', seed) {}

  /// Solves a text. On a fault raises EquationError, and the solution stays. A solution is fixed when it is solved
  /// (meant): storing it in a variable that its text reads does not solve it again.
  double Solve(std::string_view text) {
    equation_.Equation(text);
    equation_.Solve();
    solution_ = equation_.Solution();
    return solution_;
  }

  /// The same for a text that Parse has taken apart.
  double Solve(ParsedEquation& parsed) {
    solution_ = equation_.Evaluate(parsed);
    return solution_;
  }
  void Parse(std::string_view text, ParsedEquation& parsed) const { equation_.Parse(text, parsed); }

  /// Stores the solution under a name. One that no equation could read, as it does not begin with a letter, is not
  /// kept.
  void Assign(std::string_view name) {
    if (!IsReadable(name)) return;
    if (equation_.VarCount() < kMostVariables || equation_.HasVar(name)) equation_.Var(name, solution_);
  }
  static bool IsReadable(std::string_view name) {
    if (name.empty()) return false;
    const char first = LowerByte(name[0]);
    return (first >= 'a' && first <= 'z') || first == '_';
  }

  bool HasVar(std::string_view name) const { return equation_.HasVar(name); }

  double Solution() const { return solution_; }

  /// Keeps why a statement could not be solved, unless one before it could not.
  void Failed(std::size_t statement, const EquationError& error) {
    if (!fault_) fault_ = {statement, error.Description()};
  }
  const std::optional<StatementFault>& Fault() const { return fault_; }
  void ForgetFault() { fault_.reset(); }

 private:
  clsEquation equation_;
  double solution_ = 0;
  std::optional<StatementFault> fault_;
};

}  // namespace tarvolt
