// SPDX-License-Identifier: GPL-3.0-or-later
#include "apps/tv-uds/link/message_reader.h"

namespace tarvolt::uds {

std::vector<std::string> MessageReader::Add(std::string_view bytes) {
  std::vector<std::string> messages;
  for (const char byte : bytes) Take(byte, messages);
  return messages;
}

void MessageReader::Take(char byte, std::vector<std::string>& messages) {
  if (byte == kEndOfMessage) {
    if (!unfinished_.empty() && !tooLong_) messages.push_back(unfinished_);
    unfinished_.clear();
    tooLong_ = false;
  } else if (unfinished_.size() < kLongestMessage) {
    unfinished_ += byte;
  } else {
    tooLong_ = true;
  }
}

}  // namespace tarvolt::uds
