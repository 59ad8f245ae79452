// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarvolt::uds {

/// Ends each message, in both directions.
inline constexpr char kEndOfMessage = '\xFF';

/// Cuts the bytes that arrive into messages. A message may come in any number of pieces. One that grows too long is
/// passed over up to its end, so that the reader never holds more than one message of the longest length.
class MessageReader {
 public:
  static constexpr std::size_t kLongestMessage = 256;

  /// The messages that `bytes` complete, without their end bytes. Empty ones are left out.
  std::vector<std::string> Add(std::string_view bytes);

 private:
  void Take(char byte, std::vector<std::string>& messages);

  std::string unfinished_;
  bool tooLong_ = false;
};

}  // namespace tarvolt::uds
