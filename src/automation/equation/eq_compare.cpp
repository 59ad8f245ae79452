#include "automation/equation/eq_compare.h"

#include <string>

#include "text/ansi.h"
#include "text/number.h"

namespace tarvolt {
namespace {

constexpr std::size_t kNone = std::string_view::npos;

double Solved(clsEquation& equation, std::string_view text) {
  equation.Equation(text);
  equation.Solve();
  return equation.Solution();
}

// The order decides: an operator of two signs holds those of one, and XOR holds OR.
bool Compare(const std::string& sign, double left, double right) {
  const auto holds = [&sign](std::string_view part) { return sign.find(part) != kNone; };
  if (holds("=>") || holds(">=")) return left >= right;
  if (holds("=<") || holds("<=")) return left <= right;
  if (holds("<>")) return left != right;
  if (holds(">")) return left > right;
  if (holds("<")) return left < right;
  if (holds("=")) return left == right;
  const std::int32_t a = RoundToInt32(left);
  const std::int32_t b = RoundToInt32(right);
  if (holds("AND")) return (a & b) != 0;
  if (holds("XOR")) return (a ^ b) != 0;
  if (holds("OR")) return (a | b) != 0;
  return false;
}

}  // namespace

bool EqCompare(clsEquation& equation, std::string_view text) {
  const std::size_t open = text.find('[');
  if (open == kNone) return Solved(equation, text) != 0;
  const std::size_t close = text.find(']', open);
  if (close == kNone) return false;
  const std::string_view first = text.substr(open + 1, close - open - 1);
  const std::size_t secondOpen = text.find('[', close);
  if (secondOpen == kNone) return Solved(equation, first) != 0;
  const std::size_t secondClose = text.find(']', secondOpen);
  if (secondClose == kNone) return false;
  const std::string sign = Upper(text.substr(close + 1, secondOpen - close - 1));
  const double left = Solved(equation, first);
  const double right = Solved(equation, text.substr(secondOpen + 1, secondClose - secondOpen - 1));
  return Compare(sign, left, right);
}

}  // namespace tarvolt
