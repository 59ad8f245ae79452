// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "automation/channel_equations/equation_state.h"
#include "automation/channel_equations/slotted_text.h"

namespace tarvolt {

/// One formula with numbers to be put in, parsed once for each pattern of their signs: a minus in front of a number is
/// an operator to the evaluator, so 2^X with a negative X is another formula than with a positive one. As long as the
/// pattern is known a number goes straight to its place in the parsed formula.
class CompiledExpression {
 public:
  /// The longest text that a number is printed as.
  static constexpr std::size_t kLongestNumber = 330;

  explicit CompiledExpression(SlottedText text);

  /// True when its text, whatever the numbers, is no longer than the evaluator takes.
  bool IsShortEnough() const;

  /// Solves it, exactly as its text with the numbers printed into it would be. `slots` and `numbers` are those of the
  /// whole equation; the numbers that stand in it are plain. Raises EquationError.
  double Solve(EquationState& state, const Slots& slots, const std::vector<PlacedNumber>& numbers);

 private:
  /// Formulas of more numbers than this, and those where a number touches another one or a name, are solved as text.
  static constexpr std::size_t kMostNumbers = 32;
  /// Patterns of signs that are kept.
  static constexpr std::size_t kMostShapes = 16;

  struct Place {
    std::size_t value;  ///< in the parsed formula
    std::size_t slot;
  };

  /// The formula for one pattern of signs.
  struct Shape {
    std::uint32_t negatives = 0;  ///< a bit for each of `used_`
    bool asText = false;
    std::unique_ptr<EquationError> fault;  ///< of the parse
    ParsedEquation parsed;
    std::vector<Place> places;
  };

  Shape& ShapeFor(const EquationState& state, const Slots& slots, const std::vector<PlacedNumber>& numbers);
  void Build(const EquationState& state, const Slots& slots, Shape& shape) const;
  std::string TagOf(std::size_t used) const;
  std::string WithTags(const Slots& slots, std::uint32_t negatives) const;
  std::string WithNumbers(const Slots& slots, const std::vector<PlacedNumber>& numbers) const;

  SlottedText text_;
  std::vector<std::size_t> used_;  // the slots in it, each once
  std::size_t occurrences_ = 0;
  std::string nines_;  // more of them than digits stand together anywhere in the text
  std::vector<std::unique_ptr<Shape>> shapes_;
  std::size_t last_ = 0;
};

}  // namespace tarvolt
