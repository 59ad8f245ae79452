// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <exception>
#include <string>
#include <string_view>

namespace tarvolt {

/// The numbers of what can go wrong with an equation. The first three are those of every arithmetic fault.
enum class EquationFault {
  InvalidArgument = 5,
  Overflow = 6,
  DivisionByZero = 11,
  UnbalancedParenthesis = 1100,
  UndefinedFunction = 1101,
  UndefinedVariable = 1102,
  InvalidEquation = 1103,
  InvalidFunctionArguments = 1104,
  TooLong = 1105,
  TooDeep = 1106,
};

/// What the evaluator raises. what() is the description, to be shown to a person.
class EquationError : public std::exception {
 public:
  /// `subject` is the function or variable that the description ends with; the other faults have none.
  explicit EquationError(EquationFault fault, std::string_view subject = {});

  EquationFault Fault() const { return fault_; }
  int Number() const { return static_cast<int>(fault_); }
  const char* Source() const { return "clsEquation"; }
  const std::string& Description() const { return description_; }
  const char* what() const noexcept override { return description_.c_str(); }

 private:
  EquationFault fault_;
  std::string description_;
};

/// Raises the fault. Out of line, so that arithmetic stays small.
[[noreturn]] void Raise(EquationFault fault, std::string_view subject = {});

}  // namespace tarvolt
