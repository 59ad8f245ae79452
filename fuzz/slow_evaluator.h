// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <string>

namespace tarvolt {

/// A value, or the number of the fault and its words.
struct SlowResult {
  int fault = 0;
  double value = 0;
  std::string words;
};

/// The rules of an equation followed to the letter, slowly: strings for tokens, and a list that is searched for
/// neighbours at each step. Shares nothing with the evaluator under test. Has few functions and no random values.
SlowResult EvaluateSlowly(std::string text, const std::map<std::string, double>& variables, bool degrees);

}  // namespace tarvolt
