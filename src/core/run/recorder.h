#pragma once

#include <memory>

#include "automation/channel_equations/channel_equations.h"
#include "core/chart/channel_offsets.h"
#include "core/chart/chart_commands.h"
#include "core/person.h"
#include "core/run/channel_average.h"
#include "core/run/image_saver.h"
#include "core/run/log_limits.h"
#include "core/run/observer_entries.h"
#include "core/run/run_events.h"
#include "core/run/trigger_run.h"
#include "core/run/value_display.h"
#include "files/backup.h"
#include "files/unsaved_charts.h"
#include "model/chart_window.h"
#include "model/run_control.h"
#include "model/session.h"
#include "platform/event_loop.h"
#include "sources/channel_sources.h"
#include "sources/equation_source.h"
#include "sources/sound/sound_source.h"
#include "sources/uds_source.h"

namespace tarvolt {

/// What one recording window works with: its state, its source, its files and its timers. The routines of core/ share
/// it; FormMain owns it.
struct Recorder {
  Recorder(Session& sharedSession, RunControl& runControl, Person& itsPerson, UdsClient::SetEnded onSet);

  Session& session;
  RunControl& control;
  Person& person;
  ChartWindow window;
  LocalBackup backup;
  UnsavedCharts unsaved;
  SoundInput sound;
  SoundSource soundSource;
  UdsSource uds;
  EquationSource equationRows;
  ChannelSources sources;  ///< all of these
  ChartCommands commands;
  ChannelOffsets offsets;
  ChannelAverage average;
  ImageSaver images;
  TriggerRun triggers;
  ChannelEquations equations;
  ValueDisplay valueDisplay;
  LogLimits limits;
  RunEntries entries;
  RunEvents events;                       ///< of the run, for all who listen to it
  std::unique_ptr<Timer> LoTime1;         ///< paces the samples with Pacer::Timer
  std::unique_ptr<Timer> TimerKeepAlive;  ///< rate display and watchdogs

  /// Log time now. With DetectTZ the zone is followed through a change of summer time, so that UT and sidereal stamps
  /// go on without a step; local stamps step with the clock.
  TimeStamp CalcTime();

  /// The machine's local time now, as "hh:nn:ss".
  std::string LocalTimeText() { return FormatDate(NowPrecise(session.host.clock), "hh:nn:ss"); }

 private:
  void RegisterSources();
  void RegisterListeners();
  void FollowZone(double zone);
};

/// Interval of TimerKeepAlive during a run and at rest, in milliseconds.
inline constexpr int kKeepAliveRunning = 1000;
inline constexpr int kKeepAliveIdle = 20000;

}  // namespace tarvolt
