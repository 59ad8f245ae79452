// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/sound/sound_clock.h"

namespace tarvolt {

SoundClock::SoundClock(Recorder& recorder, ChartRun& chartRun, SamplePipeline& pipeline)
    : recorder_(recorder), chartRun_(chartRun), pipeline_(pipeline) {
  recorder_.sound.onBuffer = [this](double waited) { TakeBuffer(waited); };
  recorder_.sound.onEnded = [this] { InputEnded(); };
}

void SoundClock::TakeBuffer(double waited) {
  const RunState& run = recorder_.window.run;
  if (run.plan.pacer != Pacer::Sound || run.MaxingOut()) return;
  if (run.chartState() == ChartState::Armed) return BeginRun();
  if (run.chartState() == ChartState::Idle) return;
  pipeline_.GetAllData(std::nullopt, waited);
}

// The first buffer only starts the run: what was heard before it belongs to no sample.
void SoundClock::BeginRun() {
  Session& session = recorder_.session;
  recorder_.sound.Pause();
  if (recorder_.window.run.plan.StartOnSecondBoundary) WaitForSecondBoundary(session.host.clock);
  recorder_.window.sound.ClearAccumulators();
  recorder_.window.run.phase = RunPhase::Running;
  recorder_.sound.Restart();
  chartRun_.BeginLogNow();
}

void SoundClock::InputEnded() {
  recorder_.session.Add2SLog("The sound input has come to its end.");
  recorder_.control.StopChart();
}

}  // namespace tarvolt
