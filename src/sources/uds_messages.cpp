// SPDX-License-Identifier: GPL-3.0-or-later
#include "sources/uds_messages.h"

#include <algorithm>

#include "text/number.h"

namespace tarvolt {
namespace {

constexpr std::size_t kShortestMessage = 3;
constexpr std::size_t kShortestControl = 6;

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

UdsMessage ReadDataItem(std::string_view message) {
  if (!IsDigit(message[1])) return {};
  return UdsDataItem{message[1] - '0', Val(message.substr(2))};
}

UdsMessage ReadControlItem(std::string_view message) {
  if (message.size() < kShortestControl) return {};
  const std::string_view digits = message.substr(2, 4);
  if (!std::all_of(digits.begin(), digits.end(), IsDigit)) return {};
  int code = 0;
  for (const char digit : digits) code = 10 * code + (digit - '0');
  return UdsControlItem{code, message.substr(kShortestControl)};
}

}  // namespace

UdsMessage ReadUdsMessage(std::string_view message) {
  if (message.size() < kShortestMessage || message.size() > kUdsLongestMessage) return {};
  if (message.starts_with('#')) return ReadDataItem(message);
  if (message.starts_with("^^")) return ReadControlItem(message);
  return {};
}

std::string_view WholeUdsMessages(std::string_view received) {
  std::size_t begin = 0;
  for (;;) {
    const std::size_t end = received.find(kUdsEnd, begin);
    if (end == std::string_view::npos || end == begin) return received.substr(0, begin);
    begin = end + 1;
  }
}

std::string UdsNumbers(std::string_view word, double first, double second) {
  const auto withSign = [](double number) { return (number < 0 ? " " : "  ") + NumberText(number); };
  return std::string(word) + withSign(first) + withSign(second);
}

std::string UdsWord(std::string_view word) {
  return std::string(word) + kUdsEnd;
}

}  // namespace tarvolt
