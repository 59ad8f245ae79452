// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <string>
#include <vector>

#include "config/settings.h"
#include "model/source_id.h"

namespace tarvolt {

/// Numbers that SourceName may have a name for.
inline constexpr int kSourceNames = 72;

/// Name of a source; empty for numbers that are not used.
std::string SourceName(DataSourceId source);

/// The rows of the first list of the options, in their order.
std::vector<std::string> FirstListRows();

/// Index in the first list of the options, 0 for numbers that are not used.
int SrcToIndex(DataSourceId source);

/// Source of the two list indices of a row; 0 when the first list has no such row.
DataSourceId IndexToSrc(int firstIndex, int secondIndex);

/// True for a row of the first list whose channel is chosen in the second.
bool HasChannels(int firstIndex);

/// Index in the second list: the last digit, 0 below 4 and for 9.
int SrcToADCCH(DataSourceId source);

/// Which families the rows before the first 0 use.
struct SourcesInUse {
  bool SoundLeftInUse = false;
  bool SoundRightInUse = false;
  bool MAX187InUse = false;
  bool MAX186InUse = false;
  bool UDSInUse = false;
};

/// The families of the rows before the first 0.
SourcesInUse FindSourcesInUse(const std::array<DataSourceId, kChannels>& rows);

/// What stands against a row, 0 to 7, of the channel table; no text when nothing does.
struct RowRefusal {
  int row = 0;
  std::string text;
};

/// Words against a single-ended LabJack U12 input whose pair is set to differential; empty for any other row. The
/// fourth pair is never looked at (meant).
std::string LJU12Conflict(const Settings& settings, int row);

/// What the options are refused for in their channel table.
RowRefusal RefuseInOptions(const Settings& settings, bool soundAvailable);

/// The estimate of a full store's file: "(approx file size in bytes = ... )".
std::string ConvertCountSize(const Settings& settings);

/// The estimate of the rate: samples a second or seconds a sample; empty for a SampleRate of 0.
std::string ConvertCountRate(const Settings& settings);

/// The hint of a row, 0 to 7, of the channel table; empty for other rows.
std::string DsrcToolTip(const Settings& settings, int row);

}  // namespace tarvolt
