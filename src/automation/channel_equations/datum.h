// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "automation/channel_equations/sample_view.h"

namespace tarvolt {

/// What the text of an equation may hold in place of a number.
enum class DatumKind : std::uint8_t {
  X,        ///< the value of the channel whose equation it is
  TDay,     ///< the time of day, or of the sample
  TSDay,    ///< the time since the begin
  Snum,     ///< the index of the sample
  MsgData,  ///< a number of the message link
  DataMin,  ///< the lowest value of a channel in the chart
  DataMax,  ///< the highest
  Z,        ///< the value of a channel in this sample
  ZAt,      ///< the value of a channel in another sample
};

struct Datum {
  DatumKind kind = DatumKind::X;
  int channel = 0;          ///< of MsgData and those below it, counted from 0
  std::int32_t offset = 0;  ///< of ZAt, in samples
  bool operator==(const Datum&) const = default;
};

/// Those that are put in before a text is cut into its statements, in their order. X and Z follow in each statement.
struct NamedDatum {
  std::string name;
  Datum datum;
};
const std::vector<NamedDatum>& TimesAndMessages();
const std::vector<NamedDatum>& DataExtremes();

/// The number it stands for; nothing for a ZAt whose sample is not there, and for what is no finite number. `x` is the
/// value of the channel whose equation it is.
std::optional<double> ValueOf(const Datum& datum, const EquationSample& sample, double x);

/// The text that is put in its place.
std::string TextOf(const Datum& datum, double value);

/// True when its text leads with a blank unless with a minus. A number of the message link has an exponent there when
/// it is very large or small, which an equation reads as the constant e and more (meant).
bool HasWireForm(const Datum& datum);

/// A datum's number as the equation reads it.
struct PlacedNumber {
  double raw = 0;      ///< before it was printed
  double printed = 0;  ///< and read again
  bool plain = true;   ///< printed as digits with a point; what is not must be read as text
};

/// Prints and reads a finite number, in effect. `known` is what it was last time.
void Place(const Datum& datum, double value, PlacedNumber& known);

}  // namespace tarvolt
