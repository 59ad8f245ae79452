// SPDX-License-Identifier: GPL-3.0-or-later
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
  LocalBackup backup{session, window};
  UnsavedCharts unsaved{session, window};
  ChartCommands commands{session, window};
  ChannelOffsets offsets{session, window};

  // The sources, in the order in which they are registered.
  SoundInput sound{session, window};
  SoundSource soundSource{session, window, sound, [this] { person.ChooseSoundFormat(); }};
  UdsSource uds;
  EquationSource equationRows;
  ChannelSources sources{window.run};  ///< all of them

  // Those who listen to the run.
  ChannelEquations equations{static_cast<std::uint64_t>(session.host.clock.MonotonicMilliseconds()),
                             [this](const std::string& words) { session.Add2SLog(words); }};
  TriggerRun triggers{session, window};
  ValueDisplay valueDisplay{window};
  ChannelAverage average{session, window};
  LogLimits limits{window, control};
  ImageSaver images{session, window, person};
  RunEntries entries{*this};
  RunEvents events{session.log};  ///< of the run, for all of them

  std::unique_ptr<Timer> LoTime1;         ///< paces the samples with Pacer::Timer
  std::unique_ptr<Timer> TimerKeepAlive;  ///< rate display and watchdogs

  /// Log time now. With DetectTZ the zone is followed through a change of summer time, so that UT and sidereal stamps
  /// go on without a step; local stamps step with the clock.
  TimeStamp CalcTime();

  /// The machine's local time now, as "hh:nn:ss".
  std::string LocalTimeText() { return FormatDate(NowPrecise(session.host.clock), "hh:nn:ss"); }

 private:
  // Sound is readied while the old chart is still on display; a data source may send as soon as it is connected.
  void RegisterSources() {
    sources.Add(soundSource);
    sources.Add(uds);
    sources.Add(equationRows);
  }

  // In the order in which a sample reaches them. What stands behind the limits may see the sample that ended a log when
  // the next one has begun.
  void RegisterListeners() {
    events.Add(equations, "equations");
    events.Add(triggers, "triggers");
    events.Add(valueDisplay, "value display");
    events.Add(backup, "backup");
    events.Add(average, "channel average");
    events.Add(limits, "limits of the log");
    events.Add(images, "image saver");
    events.Add(entries, "entries of the observer log");
  }

  void FollowZone(double zone);
};

/// Interval of TimerKeepAlive during a run and at rest, in milliseconds.
inline constexpr int kKeepAliveRunning = 1000;
inline constexpr int kKeepAliveIdle = 20000;

}  // namespace tarvolt
