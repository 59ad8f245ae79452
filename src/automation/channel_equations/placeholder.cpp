#include "automation/channel_equations/placeholder.h"

#include <bit>
#include <cmath>

#include "automation/channel_equations/printed_number.h"
#include "text/number.h"

namespace tarvolt {
namespace {

// Eight of a kind: "MsgData1" to "MsgData8".
void AddEight(const std::string& base, PlaceholderKind kind, std::vector<NamedPlaceholder>& all) {
  for (int i = 0; i < kChannels; ++i) all.push_back({base + static_cast<char>('1' + i), {kind, i}});
}

std::int64_t SampleOf(const Placeholder& placeholder, const EquationSample& sample) {
  return std::int64_t{sample.index} + placeholder.offset;
}

}  // namespace

const std::vector<NamedPlaceholder>& TimesAndMessages() {
  static const std::vector<NamedPlaceholder> kAll = [] {
    std::vector<NamedPlaceholder> all = {
        {"TDay", {PlaceholderKind::TDay}}, {"TSDay", {PlaceholderKind::TSDay}}, {"Snum", {PlaceholderKind::Snum}}};
    AddEight("MsgData", PlaceholderKind::MsgData, all);
    return all;
  }();
  return kAll;
}

const std::vector<NamedPlaceholder>& DataExtremes() {
  static const std::vector<NamedPlaceholder> kAll = [] {
    std::vector<NamedPlaceholder> all;
    AddEight("DataMin", PlaceholderKind::DataMin, all);
    AddEight("DataMax", PlaceholderKind::DataMax, all);
    return all;
  }();
  return kAll;
}

bool IsInRange(const Placeholder& placeholder, const EquationSample& sample) {
  if (placeholder.kind != PlaceholderKind::ZAt) return true;
  const std::int64_t index = SampleOf(placeholder, sample);
  return index >= 0 && index >= sample.clearedAway && index <= sample.last;
}

double ValueOf(const Placeholder& placeholder, const EquationSample& sample, double x) {
  const auto channel = static_cast<std::size_t>(placeholder.channel);
  switch (placeholder.kind) {
    case PlaceholderKind::X:
      return x;
    case PlaceholderKind::TDay:
      return sample.TDay;
    case PlaceholderKind::TSDay:
      return sample.TSDay;
    case PlaceholderKind::Snum:
      return sample.index;
    case PlaceholderKind::MsgData:
      return sample.run.MsgData[channel];
    case PlaceholderKind::DataMin:
      return sample.Lowest(placeholder.channel);
    case PlaceholderKind::DataMax:
      return sample.Highest(placeholder.channel);
    case PlaceholderKind::Z:
      return sample.run.ChannelValue[channel];
    case PlaceholderKind::ZAt:
      return sample.At(placeholder.channel, SampleOf(placeholder, sample));
  }
  return 0;
}

bool HasWireForm(const Placeholder& placeholder) {
  return placeholder.kind == PlaceholderKind::Snum || placeholder.kind == PlaceholderKind::MsgData ||
         placeholder.kind == PlaceholderKind::DataMin || placeholder.kind == PlaceholderKind::DataMax;
}

std::string TextOf(const Placeholder& placeholder, double value) {
  if (HasWireForm(placeholder)) return WireNumber(value);
  const bool isTime = placeholder.kind == PlaceholderKind::TDay || placeholder.kind == PlaceholderKind::TSDay;
  return FormatNumber(value, isTime ? kDayPicture : kValuePicture);
}

void Place(const Placeholder& placeholder, double value, PlacedNumber& known) {
  if (std::bit_cast<std::uint64_t>(value) == std::bit_cast<std::uint64_t>(known.raw)) return;
  known.raw = value;
  known.plain = std::isfinite(value);
  if (!known.plain) return;
  if (placeholder.kind == PlaceholderKind::Snum) {
    known.printed = value;
  } else if (HasWireForm(placeholder)) {
    const WirePrint print = AsWirePrinted(value);
    known.printed = print.value;
    known.plain = print.plain;
  } else {
    const bool isTime = placeholder.kind == PlaceholderKind::TDay || placeholder.kind == PlaceholderKind::TSDay;
    known.printed = AsPrinted(value, isTime ? kDayPlaces : kValuePlaces);
  }
}

}  // namespace tarvolt
