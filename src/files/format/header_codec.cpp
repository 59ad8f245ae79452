// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/format/header_codec.h"

#include <algorithm>
#include <cassert>
#include <cstdint>
#include <string>

#include "files/format/little_endian.h"

namespace tarvolt {
namespace {

// Where the fields lie; they stand back to back without alignment.
constexpr std::size_t kVersion = 0;
constexpr std::size_t kVersionWidth = 10;
constexpr std::size_t kStart = 10;
constexpr std::size_t kEnd = 18;
constexpr std::size_t kLatitude = 26;
constexpr std::size_t kLongitude = 34;
constexpr std::size_t kYMax = 42;
constexpr std::size_t kYMin = 50;
constexpr std::size_t kTimeZone = 58;
constexpr std::size_t kSource = 60;
constexpr std::size_t kAuthor = 70;
constexpr std::size_t kLocalName = 90;
constexpr std::size_t kLocation = 110;
constexpr std::size_t kChannelsField = 150;
constexpr std::size_t kNotesLength = 152;

void PutText(char* to, std::size_t width, std::string_view text) {
  const std::size_t used = std::min(width, text.size());
  std::copy_n(text.data(), used, to);
  std::fill(to + used, to + width, ' ');
}

std::string GetText(std::string_view bytes, std::size_t offset, std::size_t width) {
  return std::string(bytes.substr(offset, width));
}

}  // namespace

HeaderBytes EncodeHeader(const DataFileHeader& header) {
  HeaderBytes bytes;
  char* const to = bytes.data();
  PutText(to + kVersion, kVersionWidth, header.version);
  PutLittle(to + kStart, header.start);
  PutLittle(to + kEnd, header.end);
  PutLittle(to + kLatitude, header.latitude);
  PutLittle(to + kLongitude, header.longitude);
  PutLittle(to + kYMax, header.yMax);
  PutLittle(to + kYMin, header.yMin);
  PutLittle(to + kTimeZone, header.timeZone);
  PutText(to + kSource, 10, header.source);
  PutText(to + kAuthor, 20, header.author);
  PutText(to + kLocalName, 20, header.localName);
  PutText(to + kLocation, 40, header.location);
  PutLittle(to + kChannelsField, header.channels);
  PutLittle(to + kNotesLength, header.notesLength);
  return bytes;
}

DataFileHeader DecodeHeader(std::string_view bytes) {
  assert(bytes.size() >= kHeaderSize);
  const char* const from = bytes.data();
  DataFileHeader header;
  header.version = GetText(bytes, kVersion, kVersionWidth);
  header.start = GetLittle<double>(from + kStart);
  header.end = GetLittle<double>(from + kEnd);
  header.latitude = GetLittle<double>(from + kLatitude);
  header.longitude = GetLittle<double>(from + kLongitude);
  header.yMax = GetLittle<double>(from + kYMax);
  header.yMin = GetLittle<double>(from + kYMin);
  header.timeZone = GetLittle<std::int16_t>(from + kTimeZone);
  header.source = GetText(bytes, kSource, 10);
  header.author = GetText(bytes, kAuthor, 20);
  header.localName = GetText(bytes, kLocalName, 20);
  header.location = GetText(bytes, kLocation, 40);
  header.channels = GetLittle<std::int16_t>(from + kChannelsField);
  header.notesLength = GetLittle<std::int32_t>(from + kNotesLength);
  return header;
}

bool BeginsAsHeader(std::string_view bytes) {
  constexpr std::string_view kOfVersions("0123456789. \0", 13);
  return bytes.substr(kVersion, kVersionWidth).find_first_not_of(kOfVersions) == std::string_view::npos;
}

}  // namespace tarvolt
