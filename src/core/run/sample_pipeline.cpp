// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/run/sample_pipeline.h"

#include <algorithm>

#include "text/number.h"
#include "timebase/time_stamp.h"

namespace tarvolt {

SamplePipeline::SamplePipeline(Recorder& recorder)
    : recorder_(recorder), session_(recorder.session), window_(recorder.window), run_(recorder.window.run) {}

void SamplePipeline::TimerTick() {
  if (run_.chartState() == ChartState::Idle) return;
  recorder_.LoTime1->SetEnabled(false);
  if (run_.chartState() == ChartState::Armed) TakeFirstTick();
  GetAllData(std::nullopt);
  if (run_.ChartRunning() && run_.plan.pacer == Pacer::Timer) recorder_.LoTime1->SetEnabled(true);
}

void SamplePipeline::TakeFirstTick() {
  if (run_.plan.StartOnSecondBoundary) WaitForSecondBoundary(session_.host.clock);
  run_.phase = RunPhase::Running;
}

void SamplePipeline::GetAllData(std::optional<TimeStamp> sourceTime, double waited) {
  if (!ReadChannels()) return;
  if (!SampleIsComplete()) return;
  AverageChannels();
  if (StampSample(sourceTime, waited)) {
    KeepMiniChartSmall();
    const std::int32_t index = StoreSample();
    RepaintWhenDue();
    FinalizeDataInput(index);
  }
  run_.TickBusy = false;
}

// Reads each channel once. False when the run ended meanwhile, or a source was given up on: then the tick is not whole,
// and nothing of it is in the sums.
bool SamplePipeline::ReadChannels() {
  if (run_.phase == RunPhase::Armed) run_.phase = RunPhase::Running;
  TickReadings readings;
  const bool isWhole = recorder_.sources.Read(readings);
  recorder_.sources.EndTick(isWhole);
  isWhole ? readings.AddTo(run_) : void(run_.TickBusy = false);
  return isWhole;
}

bool SamplePipeline::SampleIsComplete() {
  ++run_.AvgCount;
  if (run_.AvgCount >= std::max(run_.EffectiveAvg, run_.plan.vAvg)) return true;
  run_.TickBusy = false;
  return false;
}

void SamplePipeline::AverageChannels() {
  const double reads = std::max(run_.EffectiveAvg, run_.plan.vAvg);
  for (int channel = 0; channel < std::min(run_.ChannelCount, kChannels); ++channel) {
    run_.ChannelValue[channel] = run_.ChannelSum[channel] / reads;
    run_.ChannelSum[channel] = 0;
  }
  run_.AvgCount = 0;
}

// False when the sample is dropped: the clock stood still or stepped back. Buffers of sound that had to wait, while a
// file was saved or for a driver that delivers many at once, may come faster than the clock counts: none of them is
// lost.
bool SamplePipeline::StampSample(std::optional<TimeStamp> sourceTime, double waited) {
  const TimeStamp clock = sourceTime ? *sourceTime : recorder_.CalcTime();
  const TimeStamp now = clock - waited * kMillisecond;
  const TimeStamp first = run_.time.firstStamp;
  const TimeStamp stamp = run_.log.TimeRefZero ? now - first + WholeDay(first) : now;
  const bool clockWentBack = clock < lastClock_;
  lastClock_ = clock;
  run_.HeardAt = session_.host.clock.MonotonicMilliseconds() - waited;
  if (run_.LastStamp > 0 && !(stamp > run_.LastStamp)) {
    const bool isBurst = run_.plan.pacer == Pacer::Sound && !sourceTime && run_.StepBack == 0 && !clockWentBack;
    if (isBurst) {
      run_.CurrentStamp = run_.LastStamp + kMillisecond;
    } else if (!HandleClockStep(stamp)) {
      return false;
    }
  } else {
    run_.CurrentStamp = stamp;
    run_.EndStamp = now;
    run_.StepBack = 0;
  }
  run_.LastStamp = run_.CurrentStamp;
  return true;
}

// A file without stamps must not miss a sample; any other waits until the clock has caught up.
bool SamplePipeline::HandleClockStep(TimeStamp stamp) {
  if (run_.StepBack == 0) run_.StepBack = run_.LastStamp - stamp;
  if (!run_.log.DiskBackUp || !run_.log.NoTimeStamps) {
    ++run_.DroppedSamples;
    return false;
  }
  run_.CurrentStamp = run_.LastStamp + kMillisecond;
  return true;
}

// With MiniServer the samples are kept in the backup alone: a full chart width is cleared away.
void SamplePipeline::KeepMiniChartSmall() {
  const double width = run_.log.ChartWidth / kSecondsPerDay;
  if (!run_.log.MiniServer || window_.chart.Count() == 0) return;
  if (run_.CurrentStamp - window_.chart.GetTime(0) < width) return;
  if (run_.log.DiskBackUp && !recorder_.backup.IsComplete()) return;
  if (session_.settings.images.SaveFTPImage) recorder_.images.Save();
  run_.LetGo.Widen(window_.chart.Extremes());
  window_.chart.ClearData();
  recorder_.backup.StoreWasCleared();
  run_.StoreStart = run_.Dcount;
  window_.chart.XAxisMin = run_.CurrentStamp;
  window_.chart.XAxisMax = run_.CurrentStamp + width;
}

// Gives the index of the sample; one that the store refused has none of the store's.
std::int32_t SamplePipeline::StoreSample() {
  const std::int32_t index = window_.chart.AddTime(run_.CurrentStamp);
  if (index >= window_.chart.Count()) session_.Add2SLog("No memory for a further sample: the log ends here.");
  if (run_.plan.ApplyToIncoming) {
    recorder_.equations.ApplyEquation(run_.plan.Equations, run_.ChannelCount, SampleOfRun(window_, index), run_);
  }
  for (int channel = 0; channel < std::min(run_.ChannelCount, kChannels); ++channel) {
    window_.chart.SetValue(channel, index, run_.ChannelValue[channel] + run_.ChannelOffset[channel]);
  }
  return index;
}

void SamplePipeline::RepaintWhenDue() {
  if (++run_.UpdateCount < session_.settings.timing.ChartUpdateRate) return;
  if (window_.chart.AutoScale) window_.chart.ScaleYToData();
  FollowNewest(window_.chart);
  ++window_.chart.RepaintRequests;
  run_.UpdateCount = 0;
}

// Whoever works on finished samples listens to the run's events.
void SamplePipeline::FinalizeDataInput(std::int32_t index) {
  run_.ChannelMin.fill(kNoMinimum);
  run_.ChannelMax.fill(kNoMaximum);
  const auto channels = static_cast<std::size_t>(std::clamp(run_.ChannelCount, 0, kChannels));
  FinishedSample sample;
  sample.stamp = run_.CurrentStamp;
  sample.index = index;
  sample.stored = index < window_.chart.Count();
  sample.raw = std::span(run_.ChannelValue).first(channels);
  sample.offsets = std::span<const double>(run_.ChannelOffset).first(channels);
  recorder_.events.SampleFinished(sample);
}

}  // namespace tarvolt
