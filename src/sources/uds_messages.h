// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>
#include <variant>

namespace tarvolt {

/// Ends every message, both ways.
inline constexpr char kUdsEnd = '\xFF';

/// What is longer is no message.
inline constexpr std::size_t kUdsLongestMessage = 4096;

/// "#<d><value>": a value for the channels of one input of the source.
struct UdsDataItem {
  int input = 0;     ///< 0 to 9; 0 is "UDS CH1"
  double value = 0;  ///< 0 when it is no number
};

/// "^^<code><text>".
struct UdsControlItem {
  int code = 0;           ///< 0 to 9999
  std::string_view text;  ///< a part of the message
};

/// A message read; nothing for one that is to be ignored.
using UdsMessage = std::variant<std::monostate, UdsDataItem, UdsControlItem>;

/// Reads one message, given without its end. Never fails.
UdsMessage ReadUdsMessage(std::string_view message);

/// The leading part of what came with one data event that is whole messages with their ends. An empty message ends it
/// (meant), and so does a torn one: it is not joined with what comes later (meant).
std::string_view WholeUdsMessages(std::string_view received);

/// A reply of a word and two numbers, without the end. A number that is not negative has a blank for its sign, so that
/// two blanks stand before it.
std::string UdsNumbers(std::string_view word, double first, double second);

/// The messages of the recorder itself, with the end.
std::string UdsWord(std::string_view word);

}  // namespace tarvolt
