// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/run/keep_alive.h"

#include "text/number.h"

namespace tarvolt {

KeepAlive::KeepAlive(Recorder& recorder, ChartRun& chartRun)
    : recorder_(recorder), chartRun_(chartRun), session_(recorder.session), window_(recorder.window) {
  lastFiring_ = session_.host.clock.MonotonicMilliseconds();
}

void KeepAlive::Fire() {
  RunState& run = window_.run;
  const double now = session_.host.clock.MonotonicMilliseconds();
  const double seconds = (now - lastFiring_) / 1000;
  lastFiring_ = now;
  if (run.Dcount == 0) {
    slowSeconds_ = 0;
    slowStart_ = 0;
    slowText_.clear();
  }
  const bool tracking = window_.chart.Mode == ChartMode::Tracking;
  if (recorder_.average.IsOver()) recorder_.average.StopAvgSampling();
  const bool statusIsFree = window_.view.Status.Fire();
  if (run.ChartRunning() && tracking && statusIsFree && run.Dcount > 0 && seconds > 0) ShowRate(seconds);
  TellDropped(seconds);
  SyncBackup(seconds);
  const bool hasTool = window_.chart.Mode == ChartMode::Cursor || window_.chart.Mode == ChartMode::Zoom;
  if (run.ChartRunning() && !tracking && !hasTool && statusIsFree) {
    window_.view.Status.Say("Press Plot Button to Re-enable");
  }
  recorder_.images.SaveWhenDue();
  run.LastDcount = run.Dcount;
  recorder_.unsaved.Retry();
}

void KeepAlive::ShowRate(double seconds) {
  const RunState& run = window_.run;
  const double period = run.plan.SampleRate * run.plan.vAvg;  // of the finished samples
  const bool slow = period > recorder_.TimerKeepAlive->Interval();
  const std::string rate = slow ? SlowRateText(seconds) : run.Dcount > run.LastDcount ? RateText(seconds) : "";
  if (slow || !rate.empty()) {
    const bool notSaving = !window_.save.keeping.IsKept();
    window_.view.LeftStatus = std::string(notSaving ? "NOT SAVING " : "") + rate +
                              "   Samples: " + NumberText(std::int64_t{run.TotalSamples});
  }
  if (window_.Mode == SessionMode::StandAlone && !run.ScheduleRunning) {
    const char* base = run.ChartIsLMST ? " LMST" : run.ChartIsUT ? " UT" : " LOCAL";
    window_.view.RightStatus = FormatDate(recorder_.CalcTime(), "HH:nn:ss") + base;
  }
}

void KeepAlive::SyncBackup(double seconds) {
  constexpr double kPeriod = 5;
  secondsSinceSync_ += seconds;
  if (!window_.run.ChartRunning() || secondsSinceSync_ < kPeriod) return;
  recorder_.backup.SyncToDisk();
  secondsSinceSync_ = 0;
}

// Once a minute at most: a clock that was set back may drop samples for hours.
void KeepAlive::TellDropped(double seconds) {
  constexpr double kPause = 60;
  secondsSinceTold_ += seconds;
  if (window_.run.DroppedSamples == 0 || secondsSinceTold_ < kPause) return;
  chartRun_.TellDropped();
  secondsSinceTold_ = 0;
}

std::string KeepAlive::RateText(double seconds) {
  const double rate = (window_.run.Dcount - window_.run.LastDcount) / seconds;
  if (rate < 1) return "Data Sec/Sample " + FormatNumber(1 / rate, "##0.0##");
  return "Data Samp/Sec " + FormatNumber(rate, "##0.0##");
}

// A period longer than the timer's is measured over a window of many firings; its text stays in between.
std::string KeepAlive::SlowRateText(double seconds) {
  slowSeconds_ += seconds;
  const double windowSeconds = recorder_.TimerKeepAlive->Interval() / 10.0;
  const std::int32_t samples = window_.run.Dcount - slowStart_;
  if (slowSeconds_ < windowSeconds || samples <= 0) return slowText_;
  const double rate = samples / slowSeconds_;
  slowText_ = rate < 1 ? "Data Sec/Sample " + FormatNumber(1 / rate, "##0.000")
                       : "Data Samp/Sec " + FormatNumber(rate, "##0.000");
  slowSeconds_ = 0;
  slowStart_ = window_.run.Dcount;
  return slowText_;
}

}  // namespace tarvolt
