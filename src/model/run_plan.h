// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

#include "config/settings.h"
#include "model/equation_set.h"
#include "model/log_keeping.h"
#include "model/source_id.h"
#include "model/trigger_channels.h"
#include "timebase/time_stamp.h"

namespace tarvolt {

/// What the reads of a run follow. Decided once, at its start.
enum class Pacer {
  Timer,  ///< the sampling timer
  Sound,  ///< the buffers of the sound input
  Push    ///< the sets of a User Data Source that pushes, whatever TimerType is
};

/// The settings that a run goes by, copied once at its start. A profile, the options or a script that changes them
/// meanwhile changes the next run.
struct RunPlan {
  Pacer pacer = Pacer::Timer;
  std::array<DataSourceId, kChannels> Dsrc{};
  std::array<std::int16_t, kChannels> Detection{};
  double SampleRate = 100;  ///< milliseconds
  std::int32_t vAvg = 1;
  bool StartOnSecondBoundary = false;
  bool TimeRefZero = false;
  bool ApplyToIncoming = false;
  EquationSet Equations;  ///< that work on the run's samples
  std::array<std::string, kChannels> ChannelLabel;
  std::array<double, kChannels> ChannelOffset{};  ///< at its beginning: all 0 without UseOffsets
  TriggerChannels triggers;
  UdsSettings uds;
  SoundSettings sound;
  CardSettings card;  ///< with a SCTadjust that is within its limits

  /// Leading rows with a source: the first row without one ends the list.
  int ActiveChannels() const;

  /// True when one of them has such a source.
  template <typename Predicate>
  bool HasRow(Predicate isSuch) const {
    return std::any_of(Dsrc.begin(), Dsrc.begin() + ActiveChannels(), isSuch);
  }
};

/// A plan with the settings as they are now.
RunPlan PlanOfRun(const Settings& settings);

/// The settings that one log of a run goes by, copied when it begins, and what follows from them. What changes them
/// meanwhile changes the next log.
struct LogPlan {
  // Its limits.
  std::int32_t MaxArrayCount = 1000000;
  double MaxDuration = 1;   ///< days
  double ChartWidth = 120;  ///< seconds
  bool Continuous = true;
  bool UseRestartTime = false;
  std::string RestartTime;
  TimeStamp ChartEndTime = 0;  ///< when it is full by time
  TimeStamp NextRestart = 0;   ///< next planned restart, in the base of its stamps

  // The base of its time.
  bool LogLMST = false;
  bool LogUsingUT = false;
  bool TimeRefZero = false;  ///< stamps count from the midnight of its start; never of a sidereal log
  bool DetectTZ = false;     ///< the zone of the machine is followed
  double TZ = 0;             ///< hours, as it was when the log began
  double UserLng = 0;        ///< degrees, west positive

  // How it is kept.
  bool MiniServer = false;  ///< memory keeps its last stretch alone
  bool DiskBackUp = false;
  bool NoTimeStamps = false;
  bool SaveAsIntegers = false;
  bool AutoSave = true;  ///< AutoSaveStandAlone, or AutoSaveClient of a client window
  std::int32_t SaveIF = 0;
  double SaveIFVal = 0;
  bool MetaDataActive = false;
};

/// The settings as they are now, for a log that begins now. `isClient` chooses those of a client window. What follows
/// from them (end, next restart) is left at 0.
LogPlan PlanOfLog(const Settings& settings, const RunPlan& run, bool isClient);

/// Where the samples of a log with that plan will lie, and in which form. Its backup is not active yet.
void SettleKeeping(const LogPlan& log, int channels, LogKeeping& keeping);

}  // namespace tarvolt
