#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "config/settings.h"

namespace tarvolt {

/// Number of the source of a channel, as stored: 0 none, 1 and 2 sound left and right, 3 MAX187, 10 to 17 MAX186,
/// 20 to 27 UDS, 40 to 47 equation, 50 to 57 LabJack U3, 60 to 67 LabJack U12, 71 cross correlation.
using DataSourceId = std::int16_t;

/// Numbers that SourceName may have a name for.
inline constexpr int kSourceNames = 72;

/// Sources that read the sound input.
inline constexpr DataSourceId kSoundLeft = 1;
inline constexpr DataSourceId kSoundRight = 2;
inline constexpr DataSourceId kCrossCorrelation = 71;

/// True for a source that reads the sound input.
bool ReadsSound(DataSourceId source);

/// True for the values of a User Data Source.
bool IsUds(DataSourceId source);

/// True for a channel that is made by its equation alone.
bool IsEquation(DataSourceId source);

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
  bool CorrelationInUse = false;

  /// True when a row reads the sound input.
  bool SoundInUse() const { return SoundLeftInUse || SoundRightInUse || CorrelationInUse; }
};

/// The families of the rows before the first 0.
SourcesInUse FindSourcesInUse(const Settings& settings);

/// Words that refuse a start for its channel table, empty when it is fine. `soundAvailable` tells of a sound card. Only
/// the rows before the first 0 are looked at.
std::string RefuseAtStart(const Settings& settings, bool soundAvailable);

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
