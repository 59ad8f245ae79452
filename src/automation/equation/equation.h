// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "automation/equation/equation_error.h"
#include "automation/equation/functions.h"
#include "automation/equation/order.h"
#include "automation/equation/plan.h"
#include "automation/equation/scan.h"
#include "automation/equation/variables.h"

namespace tarvolt {

/// A text that was taken apart, to be evaluated any number of times. Stays where it is: its parts refer to each other.
struct ParsedEquation {
  ParsedEquation() = default;
  ParsedEquation(const ParsedEquation&) = delete;
  ParsedEquation& operator=(const ParsedEquation&) = delete;

  TokenList tokens;
  std::vector<Position> order;
  Plan plan;
  std::uint64_t linkedGeneration = 0;  ///< of the variables, when the plan last found its rows
};

/// Turns a line of text such as "sin(x)*2 + y mod 3" into a number: a text, named variables, and the last result.
///
/// The text is taken apart once, into tokens with priorities. Each priority is served from left to right, the highest
/// first, and each token takes its nearest neighbours that are left. So -2^2 is -4, 2^3^2 is 64, 2x is twice x, 2^-1 is
/// an error, (2)(3) is 2, and blanks separate nothing.
///
/// Any text is safe. One longer than kLongestEquation or nested deeper than kDeepestNesting is refused. Taking a text
/// apart costs time that grows with its length (and the sorting of its tokens), an evaluation at most two steps a
/// character; an evaluation allocates nothing unless it fails. Faults are raised as EquationError.
class clsEquation {
 public:
  /// `decimalSeparator` is that of the numbers in the text; "," leaves no way to separate arguments. `seed` begins the
  /// row of random values.
  explicit clsEquation(char decimalSeparator = '.', std::uint64_t seed = 1);
  clsEquation(const clsEquation&) = delete;
  clsEquation& operator=(const clsEquation&) = delete;

  /// The unit of angles: radians unless set. A change makes the result stale.
  bool Degrees() const { return degrees_; }
  void Degrees(bool degrees);

  /// The formula, in lower case. Setting it makes the parse and the result stale; it is looked at by Solve.
  const std::string& Equation() const { return equation_; }
  void Equation(std::string_view text);

  /// A variable's value. Case does not matter. An unknown name raises InvalidArgument.
  double Var(std::string_view name) const;

  /// Sets a variable; its name is trimmed. The result is stale then. `pi`, `e` and `rnd` hide variables of their name.
  void Var(std::string_view name, double value) {
    variables_.Set(name, value);
    stale_ = true;
  }

  /// Removes all variables, or one; an unknown name raises InvalidArgument. The result is stale then.
  void VarClear();
  void VarRemove(std::string_view name);

  /// Whether there is a variable of that name, trimmed and in either case; and how many there are in all.
  bool HasVar(std::string_view name) const {
    return variables_.Find(Variables::WithoutOuterBlanks(name)) != Variables::kNone;
  }
  std::size_t VarCount() const { return variables_.Count(); }

  /// Takes a text apart for Evaluate. Raises the faults of the scan.
  void Parse(std::string_view text, ParsedEquation& parsed) const;

  /// The value of a text taken apart, with this object's variables and random values. Equation and Solution stay.
  /// Raises EquationError. Allocates nothing unless it fails.
  double Evaluate(ParsedEquation& parsed);

  /// Parses the equation unless that is done, and evaluates it. On a fault raises EquationError, and Solution and
  /// whether it is stale stay as they were. An empty equation is a fault.
  void Solve();

  /// The last result, after a Solve when it is stale. A new object's is 0.
  double Solution() {
    if (stale_) Solve();
    return solution_;
  }

 private:
  char decimalSeparator_;
  EquationRandom random_;
  bool degrees_ = false;
  std::string equation_;
  Variables variables_;
  bool parsed_ = false;
  bool stale_ = false;
  double solution_ = 0;

  ParsedEquation parse_;
};

}  // namespace tarvolt
