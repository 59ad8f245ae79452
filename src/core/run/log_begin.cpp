// SPDX-License-Identifier: GPL-3.0-or-later
// What is settled for each log of a run when it begins: its plan, the base of its time, its axis, its end.

#include <algorithm>

#include "automation/next_restart.h"
#include "core/run/chart_run.h"
#include "text/number.h"
#include "timebase/time_stamp.h"

namespace tarvolt {

// The first buffer of a run whose clock is sound moves the beginning of a log that is settled already.
void ChartRun::SettleLog(LogStart start) {
  if (start != LogStart::FirstBuffer) {
    DetectZone();
    run_.log = PlanOfLog(session_.settings, run_.plan, window_.Mode == SessionMode::Client);
    SettleKeeping(run_.log, window_.chart.ChannelCount(), window_.save.keeping);
    window_.chart.SetCapacity(run_.log.MaxArrayCount);
  }
  TakeTimeBase(run_.log, start == LogStart::Further ? SoundWaiting() : 0);
  SetTimeOrigin(start);
  PlanNextRestart();
}

// Milliseconds of sound that was heard while the last log was saved and is still to be read.
double ChartRun::SoundWaiting() const {
  if (run_.plan.pacer != Pacer::Sound || recorder_.sound.IsLost()) return 0;
  return session_.host.clock.MonotonicMilliseconds() - run_.HeardAt;
}

void ChartRun::DetectZone() {
  if (session_.settings.place.DetectTZ) session_.settings.place.TZ = DetectTimeZoneHours(session_.host.clock);
}

// A sidereal run counts its sidereal clock from a moment in UT, so its offset is that of UT whatever the base of
// other runs is.
void ChartRun::TakeClockOffset() {
  const LogPlan base = PlanOfLog(session_.settings, run_.plan, false);
  TakeClockOffset(base);
}

void ChartRun::TakeClockOffset(const LogPlan& base) {
  run_.time.tz = base.TZ;
  run_.time.utOffset = base.LogUsingUT || base.LogLMST ? -base.TZ / 24 : 0;
  session_.log.SetUTOffset(base.LogUsingUT ? -base.TZ / 24 : 0);
}

void ChartRun::TakeTimeBase() {
  TakeTimeBase(PlanOfLog(session_.settings, run_.plan, false), 0);
}

void ChartRun::TakeTimeBase(const LogPlan& base, double ago) {
  TimeBase& time = run_.time;
  TakeClockOffset(base);
  time.logLMST = base.LogLMST;
  time.firstStamp = CalcTimeNotSidereal(session_.host.clock, time) - ago * kMillisecond;
  time.startLMST = base.LogLMST ? CalcLMST(time.firstStamp, base.UserLng) : 0;
  if (window_.save.keeping.LoadedFromFile || window_.save.Loading) return;  // a loaded chart keeps the base of its file
  run_.ChartIsLMST = base.LogLMST;
  run_.ChartIsUT = base.LogUsingUT;
}

// A source that stamps its sets may be ahead of the clock: a log is not over before it has begun. With TimeRefZero the
// x axis of a first log starts at midnight; that of a later log keeps the time of day (meant), though its samples count
// from midnight as well. Where sound is the clock a later log begins where the one before it ended.
void ChartRun::SetTimeOrigin(LogStart start) {
  LogPlan& log = run_.log;
  const TimeStamp first = run_.time.firstStamp;
  run_.TimeRefZeroFile = log.TimeRefZero;
  TimeStamp left = first;
  if (log.LogLMST) {
    left = run_.time.startLMST;
  } else if (log.TimeRefZero) {
    left = WholeDay(first);
  }
  const TimeStamp axisStart = log.TimeRefZero && start == LogStart::Further ? first : left;
  window_.chart.XAxisMin = axisStart;
  window_.chart.XAxisMax = axisStart + log.ChartWidth / kSecondsPerDay;
  const bool stampsAreTimes = !log.LogLMST && !log.TimeRefZero;
  log.ChartEndTime = (stampsAreTimes ? std::max(left, run_.CurrentStamp) : left) + log.MaxDuration;
}

// In the base of the log's clock. The stamps of a source may be ahead of it; the restart that has just fired must not
// be due again.
void ChartRun::PlanNextRestart() {
  LogPlan& log = run_.log;
  TimeStamp base = log.LogLMST ? run_.time.startLMST : run_.time.firstStamp;
  if (!log.LogLMST && !log.TimeRefZero) base = std::max(base, run_.CurrentStamp);
  log.NextRestart = GetNextRestart(log.RestartTime, base);
  session_.store.SaveSetting(Section::Settings, "ChartNextRestart", NumberText(log.NextRestart));
}

void ChartRun::BeginLogNow() {
  SettleLog(LogStart::FirstBuffer);
  run_.HeardAt = session_.host.clock.MonotonicMilliseconds();
  run_.StartStamp = run_.time.firstStamp;
}

}  // namespace tarvolt
