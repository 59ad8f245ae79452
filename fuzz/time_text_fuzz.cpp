// SPDX-License-Identifier: GPL-3.0-or-later
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "require.h"
#include "text/number.h"
#include "timebase/position.h"
#include "timebase/time_stamp.h"
#include "timebase/time_text.h"

namespace tarvolt {
namespace {

void ReadNumber(std::string_view text) {
  const double value = Val(text);
  Require(std::isfinite(value));
  Require(Val(NumberText(value)) == value);
  const double wire = Val(WireNumber(value));
  Require(std::abs(wire - value) <= std::abs(value) * 1e-14);
}

void ReadPosition(std::string_view text) {
  const double latitude = ParseLatitude(text);
  const double longitude = ParseLongitude(text);
  Require(std::isfinite(latitude) && std::isfinite(longitude));
  if (text.find(':') != std::string_view::npos) {
    Require(latitude == kUnsetPosition || std::abs(latitude) <= 90);
    Require(longitude == kUnsetPosition || (longitude >= 0 && longitude <= 360));
  }
  Require(!FormatLatitude(latitude).empty() && !FormatLongitude(longitude).empty());
  Require(!LongitudeForDisplay(LongitudeFromEntry(text, false), false).empty());
}

void ReadDate(std::string_view text) {
  if (const auto fraction = ParseHMS(text)) Require(*fraction >= 0 && *fraction < 1 && text.size() == 8);
  for (const auto& stamp : {ParseDate(text), DateFromFileName(text)}) {
    if (stamp) Require(StampOf(FieldsOf(*stamp)) == *stamp);
  }
}

void FormatAnything(double value, std::string_view picture) {
  const DateFields fields = FieldsOf(value);
  Require(fields.year >= 100 && fields.year <= 9999 && fields.month >= 1 && fields.month <= 12 && fields.day >= 1 &&
          fields.day <= 31 && fields.millisecond >= 0 && fields.millisecond <= 999);
  Require(FormatDate(value, picture).size() <= picture.size());
  Require(FormatNumber(value, picture).size() <= 2 * picture.size() + 450);
  Require(!FormatDuration(value).empty() && !FormatLatitude(value).empty() && !FormatLongitude(value).empty());
}

}  // namespace
}  // namespace tarvolt

/// The first eight bytes are a number, the rest is a text and a picture.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  tarvolt::ReadNumber(text);
  tarvolt::ReadPosition(text);
  tarvolt::ReadDate(text);
  double value = 0;
  if (size < sizeof value) return 0;
  std::memcpy(&value, data, sizeof value);
  tarvolt::FormatAnything(value, text.substr(sizeof value));
  return 0;
}
