// SPDX-License-Identifier: GPL-3.0-or-later
#include "sources/source_table.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string_view>

#include "model/channel_table.h"
#include "text/ansi.h"
#include "text/number.h"

namespace tarvolt {
namespace {

constexpr DataSourceId kMax187 = 3;

/// Sources that come eight in a row and stand under one entry of the first list, the channel being chosen in the
/// second.
struct Family {
  DataSourceId first;
  int listIndex;
  std::string_view name;
};
constexpr Family kFamilies[] = {
    {10, 4, "MAX186 ADC"}, {50, 5, "LJ U3 ADC"}, {60, 6, "LJ U12 ADC"}, {20, 7, "UDS"}, {40, 8, "Equation"}};
constexpr int kCrossCorrelationIndex = 9;
constexpr int kSingleSources = 4;

const Family* FamilyOf(DataSourceId source) {
  const auto holds = [&](const Family& family) { return source >= family.first && source < family.first + 8; };
  const auto found = std::find_if(std::begin(kFamilies), std::end(kFamilies), holds);
  return found == std::end(kFamilies) ? nullptr : found;
}

bool IsOf(DataSourceId source, DataSourceId firstOfFamily) {
  return source >= firstOfFamily && source < firstOfFamily + 8;
}

std::string ChannelNumber(int row) {
  return NumberText(std::int64_t{row} + 1);
}

}  // namespace

std::string SourceName(DataSourceId source) {
  switch (source) {
    case 0:
      return "None";
    case kSoundLeft:
      return "Sound Card Left";
    case kSoundRight:
      return "Sound Card Right";
    case kMax187:
      return "MAX187 ADC";
    case kCrossCorrelation:
      return "CROSS CORRELATION";
    default:
      break;
  }
  const Family* const family = FamilyOf(source);
  if (!family) return {};
  return std::string(family->name) + " CH" + ChannelNumber(source - family->first);
}

std::vector<std::string> FirstListRows() {
  std::vector<std::string> rows(kCrossCorrelationIndex + 1);
  rows[0] = "none";
  for (DataSourceId source = 1; source < kSingleSources; ++source) rows[source] = SourceName(source);
  for (const Family& family : kFamilies) rows[family.listIndex] = family.name;
  rows[kCrossCorrelationIndex] = "Cross Correlation";
  return rows;
}

int SrcToIndex(DataSourceId source) {
  if (source == kCrossCorrelation) return kCrossCorrelationIndex;
  if (source >= 0 && source < kSingleSources) return source;
  const Family* const family = FamilyOf(source);
  return family ? family->listIndex : 0;
}

DataSourceId IndexToSrc(int firstIndex, int secondIndex) {
  if (firstIndex == kCrossCorrelationIndex) return kCrossCorrelation;
  if (firstIndex >= 0 && firstIndex < kSingleSources) return static_cast<DataSourceId>(firstIndex);
  for (const Family& family : kFamilies) {
    if (family.listIndex == firstIndex) return static_cast<DataSourceId>(family.first + secondIndex);
  }
  return 0;
}

int SrcToADCCH(DataSourceId source) {
  if (source < kSingleSources || source == 9) return 0;
  return source % 10;
}

SourcesInUse FindSourcesInUse(const std::array<DataSourceId, kChannels>& rows) {
  SourcesInUse result;
  for (const DataSourceId source : rows) {
    if (source <= 0) break;
    result.SoundLeftInUse |= source == kSoundLeft;
    result.SoundRightInUse |= source == kSoundRight;
    result.MAX187InUse |= source == kMax187;
    result.MAX186InUse |= IsOf(source, 10);
    result.UDSInUse |= IsUds(source);
  }
  return result;
}

std::string LJU12Conflict(const Settings& settings, int row) {
  constexpr int kPairsLookedAt = 3;  // the fourth is left out, and that is meant
  const DataSourceId source = settings.channels.Dsrc[row];
  if (!IsOf(source, 60)) return {};
  const int input = source - 60;
  const int pair = input / 2;
  if (input % 2 == 0 || pair >= kPairsLookedAt || settings.channels.LJU12se[pair] != 1) return {};
  return "You cannot use LabJack U12 channel " + ChannelNumber(input) + " when channel " + ChannelNumber(input - 1) +
         " is set to differential mode.";
}

bool HasChannels(int firstIndex) {
  return std::any_of(std::begin(kFamilies), std::end(kFamilies),
                     [&](const Family& family) { return family.listIndex == firstIndex; });
}

RowRefusal RefuseInOptions(const Settings& settings, bool soundAvailable) {
  int lastMax = 0;
  for (int row = 0; row < ActiveChannels(settings); ++row) {
    const DataSourceId source = settings.channels.Dsrc[row];
    if (ReadsSound(source) && !soundAvailable) {
      return {row,
              "You have selected a sound channel as a data source and no sound card is available. Please select a "
              "different data source for channel " +
                  ChannelNumber(row) + "."};
    }
    const std::string conflict = LJU12Conflict(settings, row);
    if (!conflict.empty()) return {row, conflict};
    if (source == kMax187 || IsOf(source, 10)) lastMax = row;
  }
  const SourcesInUse inUse = FindSourcesInUse(settings.channels.Dsrc);
  if (!inUse.MAX186InUse || !inUse.MAX187InUse) return {};
  return {lastMax,
          "You have both MAX186 and MAX187 ADCs selected for use.\n\nThis will not work.  Please edit your data source "
          "selections."};
}

std::string ConvertCountSize(const Settings& settings) {
  const double count = settings.timing.MaxArrayCount;
  const double stampBytes = settings.timing.NoTimeStamps ? 0 : 8;
  const double valueBytes = settings.files.SaveAsIntegers ? 2 : 8;
  const double size = count * stampBytes + valueBytes * ActiveChannels(settings) * count;
  return "(approx file size in bytes = " + FormatNumber(size, "###,###,###,###") + " )";
}

std::string ConvertCountRate(const Settings& settings) {
  if (settings.timing.SampleRate == 0) return {};
  const double rate = 1000 / settings.timing.SampleRate / std::max<double>(settings.timing.vAvg, 1);
  if (rate >= 1) return FormatNumber(rate, "####.##") + "  Samples per Second.";
  return NumberText(std::round(1e4 / rate) / 1e4) + "  Seconds per Sample.";
}

std::string DsrcToolTip(const Settings& settings, int row) {
  if (row < 0 || row >= kChannels) return {};
  const DataSourceId source = settings.channels.Dsrc[row];
  if (IsEquation(source)) {
    const std::string& equation = settings.channels.Equ[row];
    if (Trim(equation).empty()) return "Equation Not Defined - be sure to define it before charting.";
    return "Equation: " + equation;
  }
  const std::string hint = "Data Source for Channel - " + ChannelNumber(row);
  if (source != 0) return hint;
  return hint + "  Note: First occurence of 'none' determines highest channel used.";
}

}  // namespace tarvolt
