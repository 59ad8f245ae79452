// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/equation/equation_error.h"

namespace tarvolt {
namespace {

std::string DescriptionOf(EquationFault fault, const std::string& subject) {
  switch (fault) {
    case EquationFault::InvalidArgument:
      return "Invalid argument";
    case EquationFault::Overflow:
      return "Overflow";
    case EquationFault::DivisionByZero:
      return "Division by zero";
    case EquationFault::UnbalancedParenthesis:
      return "Unbalanced parenthesis";
    case EquationFault::UndefinedFunction:
      return "Undefined Function: " + subject + ")";
    case EquationFault::UndefinedVariable:
      return "Undefined Variable: " + subject;
    case EquationFault::InvalidEquation:
      return "Invalid Equation";
    case EquationFault::InvalidFunctionArguments:
      return "Invalid arguments to function: " + subject + ")";
    case EquationFault::TooLong:
      return "Equation too long";
    case EquationFault::TooDeep:
      return "Too many parentheses inside each other";
  }
  return {};
}

}  // namespace

EquationError::EquationError(EquationFault fault, std::string_view subject)
    : fault_(fault), description_(DescriptionOf(fault, std::string(subject))) {}

void Raise(EquationFault fault, std::string_view subject) {
  throw EquationError(fault, subject);
}

}  // namespace tarvolt
