// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "automation/channel_equations/compiled_expression.h"
#include "automation/channel_equations/eq_compare.h"

namespace tarvolt {

/// A channel's equation whose rewriting was done once, with marks where the numbers go. Running it gives what RunAsText
/// gives, bit for bit, without making or reading text.
class CompiledProgram {
 public:
  /// The rewriting is a matter of text: where a number can become a part of a word that is looked for, such as in ZX or
  /// Z1[X], the equation cannot be compiled. Nothing then.
  static std::optional<CompiledProgram> Compile(std::string_view equation);

  /// Takes the numbers of a sample. False when one is printed in a way that has to be read as text.
  bool Take(const EquationSample& sample, double x);

  /// Runs it with the numbers taken.
  std::optional<double> Run(EquationState& state);

 private:
  struct Statement {
    StatementForm form = StatementForm::Plain;
    std::vector<std::size_t> numbers;  ///< slots of the numbers that it asks for
    std::vector<CompiledExpression> expressions;
    Comparison comparison = Comparison::None;  ///< of a condition of two expressions
    std::string name;                          ///< that the result is stored under; empty for none
  };

  class SlotMaker;

  static std::optional<Statement> CompileStatement(const RewrittenStatement<SlottedText>& rewritten);
  static void CompileCondition(const SlottedText& text, Statement& statement);
  bool AsksForMissing(const Statement& statement) const;
  void RunStatement(EquationState& state, Statement& statement, Branching& branching) const;
  bool Holds(EquationState& state, Statement& condition) const;

  Slots slots_;
  std::vector<Statement> statements_;
  std::vector<PlacedNumber> numbers_;
  std::vector<bool> missing_;
};

}  // namespace tarvolt
