#pragma once

#include <string_view>

#include "automation/equation/equation.h"

namespace tarvolt {

/// True when a condition holds: "[X] > [100]" compares two expressions, "[X]" and "X" ask whether one is not 0. The
/// operators are >=, =>, <=, =<, <>, >, <, = and, bit by bit on the values rounded to 32-bit whole numbers, AND, OR and
/// XOR, in any case; whatever else stands between the brackets is false, and so is a bracket that does not close.
/// `equation` gives the variables; its text and its result are those of the last expression afterwards. A fault of an
/// expression is raised as EquationError.
bool EqCompare(clsEquation& equation, std::string_view text);

}  // namespace tarvolt
