// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "display/min_max_pyramid.h"
#include "model/run_plan.h"
#include "timebase/time_base.h"

namespace tarvolt {

/// Exactly one a window.
enum class SessionMode { StandAlone, Server, Client };

enum class ChartState { Idle = 1, Armed = 2, Running = 4 };

/// Seeds of the per-sample minimum and maximum.
inline constexpr double kNoMinimum = 1E+21;
inline constexpr double kNoMaximum = -1E+21;

/// Where a run stands.
enum class RunPhase {
  Idle,
  Starting,  ///< a start is under way and may be waiting for its source
  Armed,     ///< started, the first sample not yet taken
  Running,
  TurningOver,  ///< a log has ended and is being saved; the next one is about to begin, or the run to end
  Stopping      ///< a stop is under way and may be waiting in a question
};

/// What one window's run is doing. Written by core/ and the sources, read by everyone.
struct RunState {
  RunPhase phase = RunPhase::Idle;
  bool TickBusy = false;         ///< a tick is inside the reading of a source
  bool AbortFlag = false;        ///< asks any wait to give up
  bool CancelSchedule = false;   ///< asks the schedule to end
  bool ScheduleRunning = false;  ///< the schedule is inside its window of time
  bool DataNeedsSave = false;    ///< the store holds data that a save may still want
  bool OffsetsChanged = false;   ///< an offset was moved during the run
  bool ForceSave = false;     ///< File Save during a run: the log is saved whatever the settings, and a new one begins
  bool EndRequested = false;  ///< the program is to end: no wait goes on, whatever else clears AbortFlag

  std::int64_t RunNumber = 0;  ///< of the starts so far: a wait that outlives its run is no part of the next one
  RunPlan plan;
  LogPlan log;

  int ChannelCount = 1;
  std::int32_t Dcount = 0;        ///< index that the next sample gets
  std::int32_t TotalSamples = 0;  ///< samples of this log as shown
  std::int32_t StoreStart = 0;    ///< place in its log of the store's first sample: a mini window lets samples go
  MinMax LetGo;                   ///< of the values of the samples that a mini window has let go
  std::int32_t LastDcount = 0;    ///< Dcount at the last keep-alive
  std::int32_t AvgCount = 0;      ///< reads in the sample in progress
  std::int32_t EffectiveAvg = 1;
  std::int32_t DroppedSamples = 0;  ///< since they were reported last: the clock did not advance
  std::int32_t UpdateCount = 0;     ///< samples since the last repaint

  std::array<double, kChannels> ChannelValue{};
  std::array<double, kChannels> MsgData{};  ///< numbers of the message link, which equations may read
  std::array<double, kChannels> ChannelSum{};
  std::array<double, kChannels> ChannelMin{};
  std::array<double, kChannels> ChannelMax{};
  std::array<double, kChannels + 1> ChannelOffset{};  ///< run copy; the ninth is unused by the sample path

  TimeBase time;                 ///< holds FirstStamp, the sidereal start and UTOffset
  TimeStamp CurrentStamp = 0;    ///< sample in progress
  TimeStamp LastStamp = 0;       ///< previous sample, 0 until the first
  double HeardAt = 0;            ///< monotonic milliseconds: the end of what the previous sample holds
  double StepBack = 0;           ///< days by which the clock last stepped back
  TimeStamp StartStamp = 0;      ///< for the file header
  TimeStamp EndStamp = 0;        ///< for the file header
  bool ChartIsLMST = false;      ///< the x axis is sidereal
  bool ChartIsUT = false;        ///< the x axis is UT
  bool TimeRefZeroFile = false;  ///< the chart on display has such stamps
  std::string LastMessage;       ///< what the data source said last, its beginning
  int ShownChannel = 0;          ///< channel of the value display, 1 to 8, 0 for none

  // Readings of the phase.
  bool Starting() const { return phase == RunPhase::Starting; }
  bool Stopping() const { return phase == RunPhase::Stopping; }
  bool MaxingOut() const { return phase == RunPhase::TurningOver; }
  bool ChartRunning() const { return phase == RunPhase::Armed || phase == RunPhase::Running || MaxingOut(); }
  ChartState chartState() const;
};

inline ChartState RunState::chartState() const {
  if (phase == RunPhase::Armed) return ChartState::Armed;
  return ChartRunning() ? ChartState::Running : ChartState::Idle;
}

}  // namespace tarvolt
