#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "model/equation_set.h"
#include "timebase/time_base.h"

namespace tarvolt {

/// Exactly one a window.
enum class SessionMode { StandAlone, Server, Client };

enum class ChartState { Idle = 1, Armed = 2, Running = 4 };

/// Seeds of the per-sample minimum and maximum.
inline constexpr double kNoMinimum = 1E+21;
inline constexpr double kNoMaximum = -1E+21;

/// TimerType of a run whose clock is the sound card; with any other it is the sampling timer.
inline constexpr std::int32_t kSoundTimer = 1;

/// What one window's run is doing. Written by core/ and the sources, read by everyone.
struct RunState {
  ChartState chartState = ChartState::Idle;
  bool ChartRunning = false;     ///< from the end of a successful start to the first line of the stop
  bool ChartStopped = false;     ///< set by a stop; the sampling timer is not armed again while it is set
  bool TickBusy = false;         ///< a tick is inside the reading of a source
  bool AbortFlag = false;        ///< asks any wait to give up
  bool CancelSchedule = false;   ///< asks the schedule to end
  bool ScheduleRunning = false;  ///< the schedule is inside its window of time
  bool MaxingOut = false;        ///< a log is being turned over
  bool DataNeedsSave = false;    ///< the store holds data that a save may still want
  bool OffsetsChanged = false;   ///< an offset was moved during the run
  bool Starting = false;         ///< a start is under way and may be waiting for its source
  bool Stopping = false;         ///< a stop is under way and may be waiting in a question
  bool ForceSave = false;     ///< File Save during a run: the log is saved whatever the settings, and a new one begins
  bool EndRequested = false;  ///< the program is to end: no wait goes on, whatever else clears AbortFlag

  // The run's copies of settings, so that a profile loaded meanwhile does not change the run.
  std::array<std::int16_t, kChannels> Dsrc{};
  std::array<std::int16_t, kChannels> Detection{};
  std::int32_t TimerType = 0;
  double SampleRate = 100;  ///< milliseconds
  double SCTadjust = 1;
  std::int32_t vAvg = 1;
  bool UDSpush = false;
  bool MiniServer = false;  ///< of the log under way, as the next
  bool DiskBackUp = false;
  bool ApplyToIncoming = false;
  EquationSet Equations;  ///< that work on the run's samples

  int ChannelCount = 1;
  std::int32_t Dcount = 0;        ///< index that the next sample gets
  std::int32_t TotalSamples = 0;  ///< samples of this log as shown
  std::int32_t StoreStart = 0;    ///< place in its log of the store's first sample: a mini window lets samples go
  std::int32_t LastDcount = 0;    ///< Dcount at the last keep-alive
  std::int32_t AvgCount = 0;      ///< reads in the sample in progress
  std::int32_t EffectiveAvg = 1;
  std::int32_t DroppedSamples = 0;  ///< since they were told last: the clock did not advance
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
  TimeStamp ChartEndTime = 0;    ///< when this log is full by time
  TimeStamp NextRestart = 0;     ///< next planned restart
  bool ChartIsLMST = false;      ///< the x axis is sidereal
  bool ChartIsUT = false;        ///< the x axis is UT
  bool TimeRefZero = false;      ///< the run's copy: stamps count from the midnight of its start
  bool TimeRefZeroFile = false;  ///< the chart on display has such stamps
  std::string LastMessage;       ///< what the data source said last, its beginning
  int ShownChannel = 0;          ///< channel of the value display, 1 to 8, 0 for none
};

}  // namespace tarvolt
