// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/channel_equations/datum.h"

#include <bit>
#include <cmath>

#include "automation/channel_equations/printed_number.h"
#include "text/number.h"

namespace tarvolt {
namespace {

// Eight of a kind: "MsgData1" to "MsgData8".
void AddEight(const std::string& base, DatumKind kind, std::vector<NamedDatum>& all) {
  for (int i = 0; i < kChannels; ++i) all.push_back({base + static_cast<char>('1' + i), {kind, i}});
}

std::int64_t SampleOf(const Datum& datum, const EquationSample& sample) {
  return std::int64_t{sample.index} + datum.offset;
}

bool IsInRange(const Datum& datum, const EquationSample& sample) {
  if (datum.kind != DatumKind::ZAt) return true;
  const std::int64_t index = SampleOf(datum, sample);
  return index >= 0 && index >= sample.clearedAway && index <= sample.last;
}

double StoredValueOf(const Datum& datum, const EquationSample& sample, double x) {
  const auto channel = static_cast<std::size_t>(datum.channel);
  switch (datum.kind) {
    case DatumKind::X:
      return x;
    case DatumKind::TDay:
      return sample.TDay;
    case DatumKind::TSDay:
      return sample.TSDay;
    case DatumKind::Snum:
      return sample.index;
    case DatumKind::MsgData:
      return sample.run.MsgData[channel];
    case DatumKind::DataMin:
      return sample.Lowest(datum.channel);
    case DatumKind::DataMax:
      return sample.Highest(datum.channel);
    case DatumKind::Z:
      return sample.run.ChannelValue[channel];
    case DatumKind::ZAt:
      return sample.At(datum.channel, SampleOf(datum, sample));
  }
  return 0;
}

}  // namespace

const std::vector<NamedDatum>& TimesAndMessages() {
  static const std::vector<NamedDatum> kAll = [] {
    std::vector<NamedDatum> all = {
        {"TDay", {DatumKind::TDay}}, {"TSDay", {DatumKind::TSDay}}, {"Snum", {DatumKind::Snum}}};
    AddEight("MsgData", DatumKind::MsgData, all);
    return all;
  }();
  return kAll;
}

const std::vector<NamedDatum>& DataExtremes() {
  static const std::vector<NamedDatum> kAll = [] {
    std::vector<NamedDatum> all;
    AddEight("DataMin", DatumKind::DataMin, all);
    AddEight("DataMax", DatumKind::DataMax, all);
    return all;
  }();
  return kAll;
}

std::optional<double> ValueOf(const Datum& datum, const EquationSample& sample, double x) {
  if (!IsInRange(datum, sample)) return std::nullopt;
  const double value = StoredValueOf(datum, sample, x);
  if (!std::isfinite(value)) return std::nullopt;
  return value;
}

bool HasWireForm(const Datum& datum) {
  return datum.kind == DatumKind::Snum || datum.kind == DatumKind::MsgData;
}

std::string TextOf(const Datum& datum, double value) {
  if (HasWireForm(datum)) return WireNumber(value);
  const bool isTime = datum.kind == DatumKind::TDay || datum.kind == DatumKind::TSDay;
  return FormatNumber(value, isTime ? kDayPicture : kValuePicture);
}

void Place(const Datum& datum, double value, PlacedNumber& known) {
  if (std::bit_cast<std::uint64_t>(value) == std::bit_cast<std::uint64_t>(known.raw)) return;
  known.raw = value;
  known.plain = true;
  if (datum.kind == DatumKind::Snum) {
    known.printed = value;
  } else if (HasWireForm(datum)) {
    const WirePrint print = AsWirePrinted(value);
    known.printed = print.value;
    known.plain = print.plain;
  } else {
    const bool isTime = datum.kind == DatumKind::TDay || datum.kind == DatumKind::TSDay;
    known.printed = AsPrinted(value, isTime ? kDayPlaces : kValuePlaces);
  }
}

}  // namespace tarvolt
