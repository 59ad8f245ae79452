// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

#include "apps/tv-uds/link/message_reader.h"
#include "apps/tv-uds/signals/replay_source.h"
#include "require.h"

using namespace tarvolt::uds;
using tarvolt::Require;

namespace {

/// Cutting the bytes in two must not change the messages, and none may be longer than the limit.
void CheckMessages(const std::string& bytes) {
  MessageReader whole;
  const auto expected = whole.Add(bytes);
  MessageReader cut;
  const std::size_t middle = bytes.size() / 2;
  auto messages = cut.Add(bytes.substr(0, middle));
  for (const std::string& message : cut.Add(bytes.substr(middle))) messages.push_back(message);
  Require(messages == expected);
  for (const auto& message : messages) Require(!message.empty() && message.size() <= MessageReader::kLongestMessage);
}

/// A file is refused with words, or has whole sets up to its end and none behind it.
void CheckReplay(const std::string& bytes) {
  std::istringstream text(bytes);
  std::string why;
  const auto replay = ReplaySource::Read(text, why);
  Require(replay || !why.empty());
  if (!replay) return;
  Require(replay->Channels() >= 1 && replay->Channels() <= kMostChannels && replay->Set(0));
  std::int64_t sets = 0;
  while (const auto set = replay->Set(sets)) {
    Require(set->size() == static_cast<std::size_t>(replay->Channels()));
    ++sets;
  }
  Require(sets <= static_cast<std::int64_t>(bytes.size()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  CheckMessages(bytes);
  CheckReplay(bytes);
  return 0;
}
