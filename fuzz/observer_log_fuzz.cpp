// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdint>
#include <string>
#include <string_view>

#include "logs/log_words.h"
#include "logs/observer_macros.h"
#include "logs/rich_text.h"
#include "require.h"

namespace tarvolt {
namespace {

// What was read can be written, and comes back as it was.
void ReadDocument(std::string_view bytes) {
  const auto read = ReadRtf(bytes);
  if (!read) return;
  const auto again = ReadRtf(WriteRtf(*read));
  Require(again && again->size() == read->size());
  for (std::size_t i = 0; i < read->size(); ++i) {
    Require((*again)[i].text == (*read)[i].text && (*again)[i].look == (*read)[i].look);
    Require((*again)[i].picture.has_value() == (*read)[i].picture.has_value());
    if ((*read)[i].picture) Require((*again)[i].picture->bytes == (*read)[i].picture->bytes);
  }
}

void ReadMacros(std::string_view bytes) {
  const auto macros = ParseOMacros(bytes);
  if (!macros) return;
  const auto again = ParseOMacros(WriteOMacros(*macros));
  Require(again.has_value());
  for (int i = 0; i < kOMacros; ++i) Require((*again)[i].text == (*macros)[i].text);
}

}  // namespace
}  // namespace tarvolt

// Documents and macro files of any bytes, and double clicks anywhere in a line.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  tarvolt::ReadDocument(bytes);
  tarvolt::ReadDocument("{\\rtf1" + std::string(bytes));
  tarvolt::ReadMacros(bytes);
  tarvolt::ReadMacros("Tarvolt Observer Log Macros\n" + std::string(bytes));
  tarvolt::KindOfWord(tarvolt::WordAt(bytes, size / 2));
  return 0;
}
