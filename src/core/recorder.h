#pragma once

#include <memory>

#include "automation/channel_equations/channel_equations.h"
#include "core/channel_average.h"
#include "core/channel_offsets.h"
#include "core/chart_commands.h"
#include "core/image_saver.h"
#include "core/trigger_run.h"
#include "files/backup.h"
#include "files/pending_saves.h"
#include "model/chart_window.h"
#include "model/run_control.h"
#include "model/session.h"
#include "platform/event_loop.h"
#include "sources/sound/sound_input.h"
#include "sources/source_table.h"
#include "sources/uds_client.h"

namespace tarvolt {

/// What one recording window works with: its state, its source, its files and its timers. The routines of core/ share
/// it; FormMain owns it.
struct Recorder {
  Recorder(Session& sharedSession, RunControl& runControl, UdsClient::SetEnded onSet);

  Session& session;
  RunControl& control;
  ChartWindow window;
  SourcesInUse sources;
  LocalBackup backup;
  PendingSaves pending;
  SoundInput sound;
  UdsClient uds;
  ChartCommands commands;
  ChannelOffsets offsets;
  ChannelAverage average;
  ImageSaver images;
  TriggerRun triggers;
  ChannelEquations equations;
  bool saveFailed = false;  ///< the disk refused the last save: its samples wait in the store and in the backup
  std::function<void()> chooseSoundFormat;  ///< opens the chooser and does not wait for it; may be empty
  std::unique_ptr<Timer> LoTime1;           ///< paces the samples with TimerType 0
  std::unique_ptr<Timer> TimerKeepAlive;    ///< rate display and watchdogs

  /// Log time now. With DetectTZ the zone is followed through a change of summer time, so that UT and sidereal stamps
  /// go on without a step; local stamps step with the clock.
  TimeStamp CalcTime();

  /// The machine's local time now, as "hh:nn:ss".
  std::string LocalTimeText() { return FormatDate(NowPrecise(session.host.clock), "hh:nn:ss"); }

 private:
  void FollowZone(double zone);
};

/// Interval of TimerKeepAlive during a run and at rest, in milliseconds.
inline constexpr int kKeepAliveRunning = 1000;
inline constexpr int kKeepAliveIdle = 20000;

}  // namespace tarvolt
