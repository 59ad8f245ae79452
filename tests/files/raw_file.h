// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace tarvolt {

/// The bytes of a data file put together by hand, without the code under test. Runs on little-endian machines.
class RawFile {
 public:
  template <class Number>
  RawFile& Add(Number value) {
    char bytes[sizeof value];
    std::memcpy(bytes, &value, sizeof value);
    bytes_.append(bytes, sizeof value);
    return *this;
  }

  RawFile& Text(std::string_view text) {
    bytes_ += text;
    return *this;
  }

  /// Header of 156 bytes with these fields, then the notes.
  RawFile& Front(double start, double end, std::int16_t channels, std::string_view notes) {
    Text("0102030000").Add(start).Add(end).Add(50.5).Add(7.25).Add(900.0).Add(-10.0).Add(std::int16_t{2});
    Text("unknown   ").Text("A. Observer         ").Text("Home Station        ");
    Text("Somewhere quiet                         ").Add(channels).Add(static_cast<std::int32_t>(notes.size()));
    return Text(notes);
  }

  const std::string& Bytes() const { return bytes_; }

 private:
  std::string bytes_;
};

/// The notes block around these items, each closed as a file has it.
inline std::string Block(std::string_view freeText, const std::vector<std::string>& items) {
  std::string block = std::string(freeText) + "*[[*";
  for (const std::string& item : items) block += item + "\xFF";
  return block + "*]]*";
}

/// A notation as the notes have it.
inline std::string NotationItem(const std::string& channel, const std::string& index, const std::string& text) {
  return "LBL^|^" + channel + "\xFE" + index + "\xFE" + text + "\xFE";
}

/// Reads a number out of the bytes of a file.
template <class Number>
Number NumberAt(const std::string& bytes, std::size_t offset) {
  Number value{};
  if (offset + sizeof value <= bytes.size()) std::memcpy(&value, bytes.data() + offset, sizeof value);
  return value;
}

/// The notes, and the samples, of a whole file.
inline std::string NotesOf(const std::string& bytes) {
  return bytes.substr(std::min<std::size_t>(bytes.size(), 156), NumberAt<std::int32_t>(bytes, 152));
}

inline std::string SamplesOf(const std::string& bytes) {
  return bytes.substr(std::min<std::size_t>(bytes.size(), 156 + NumberAt<std::int32_t>(bytes, 152)));
}

}  // namespace tarvolt
