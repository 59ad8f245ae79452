// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tarvolt {

/// The longest text of an equation, in characters.
inline constexpr std::size_t kLongestEquation = 32767;

/// Each open parenthesis lifts all priorities inside it by this much, which is the highest priority of a token.
inline constexpr int kPrioritiesALevel = 7;

/// The deepest nesting of parentheses whose priorities still fit 16 bits.
inline constexpr int kDeepestNesting = 4680;

/// Of a token in the list of tokens.
using Position = std::uint32_t;

enum class TokenKind : std::uint8_t {
  Operator,      ///< one of + - * / \ % ^ ~ ( ), named by Token::symbol; "~" is the unary minus
  Number,        ///< digits and decimal separators, not yet read
  Identifier,    ///< a constant or a variable
  FunctionHead,  ///< an identifier with the parenthesis behind it: "sin("
  Separator,     ///< between two arguments
};

struct Token {
  TokenKind kind;
  char symbol;            ///< of an operator; 0 for the others
  std::int16_t priority;  ///< what is to be evaluated has 1 or more; higher goes first
  std::uint32_t start;    ///< of the token's text in TokenList::text
  std::uint32_t length;   ///< 0 for operators and separators
};

/// An equation taken apart, in the order of its text.
struct TokenList {
  std::string text;  ///< the equation without the characters that mean nothing
  std::vector<Token> tokens;

  std::string_view TextOf(const Token& token) const { return std::string_view(text).substr(token.start, token.length); }
};

/// Takes a lower-case equation apart in one pass; its cost grows with the length alone. Raises UnbalancedParenthesis,
/// TooLong and TooDeep; what stands in `list` is of no use then.
void ScanEquation(std::string_view equation, char decimalSeparator, TokenList& list);

}  // namespace tarvolt
