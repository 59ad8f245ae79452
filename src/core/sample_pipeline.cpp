#include "core/sample_pipeline.h"

#include <algorithm>

#include "text/number.h"
#include "timebase/time_stamp.h"

namespace tarvolt {

SamplePipeline::SamplePipeline(Recorder& recorder)
    : recorder_(recorder), session_(recorder.session), window_(recorder.window), run_(recorder.window.run) {}

void SamplePipeline::TimerTick() {
  if (run_.chartState == ChartState::Idle) return;
  recorder_.LoTime1->SetEnabled(false);
  if (run_.chartState == ChartState::Armed) TakeFirstTick();
  GetAllData(std::nullopt);
  if (!run_.ChartStopped && run_.ChartRunning) recorder_.LoTime1->SetEnabled(true);
}

void SamplePipeline::TakeFirstTick() {
  if (session_.settings.StartOnSecondBoundary) WaitForSecondBoundary(session_.host.clock);
  run_.chartState = ChartState::Running;
}

void SamplePipeline::GetAllData(std::optional<TimeStamp> sourceTime, double waited) {
  if (!ReadChannels()) return;
  if (!SampleIsComplete()) return;
  AverageChannels();
  if (StampSample(sourceTime, waited)) {
    KeepMiniChartSmall();
    StoreSample();
    TestTriggers();
    RepaintWhenDue();
    FinalizeDataInput();
  }
  run_.TickBusy = false;
}

// Reads each channel once. False when the run ended meanwhile.
bool SamplePipeline::ReadChannels() {
  run_.chartState = ChartState::Running;
  bool udsAsked = run_.UDSpush;
  for (int channel = 0; channel < std::min(run_.ChannelCount, kChannels); ++channel) {
    const DataSourceId source = run_.Dsrc[channel];
    if (source == 0) break;
    if (IsUds(source) && !udsAsked) {
      if (!PollUds()) return false;
      udsAsked = true;
    }
    ReadSound(channel, source);
  }
  window_.sound.ClearAccumulators();
  return true;
}

// A side without a new buffer adds nothing, and the read counts all the same (meant).
void SamplePipeline::ReadSound(int channel, DataSourceId source) {
  const SoundState& sound = window_.sound;
  if (source == kCrossCorrelation) return AddRead(channel, sound.CrossCorrelation);
  if (source != kSoundLeft && source != kSoundRight) return;
  const bool left = source == kSoundLeft;
  const double buffers = left ? sound.SoundBufCountL : sound.SoundBufCountR;
  if (!(buffers > 0)) return;
  run_.TickBusy = true;
  const auto& sums = left ? sound.SoundAccumL : sound.SoundAccumR;
  const int detector = run_.Detection[channel];
  const bool known = detector >= 0 && detector < static_cast<int>(sums.size());
  AddRead(channel, sums[known ? detector : kAverage] / buffers);
}

void SamplePipeline::AddRead(int channel, double value) {
  run_.ChannelMin[channel] = std::min(run_.ChannelMin[channel], value);
  run_.ChannelMax[channel] = std::max(run_.ChannelMax[channel], value);
  run_.ChannelSum[channel] += value;
}

// One request a tick serves all channels of the data source; its values arrive in the sums. Where buffers are the clock
// none may begin another tick meanwhile; else they go on gathering for the rows behind.
bool SamplePipeline::PollUds() {
  if (run_.TimerType == kSoundTimer) run_.TickBusy = true;
  const UdsClient::PollResult result = recorder_.uds.Poll();
  if (result == UdsClient::PollResult::Answered && run_.ChartRunning) return true;
  run_.TickBusy = false;
  if (run_.ChartRunning && result == UdsClient::PollResult::LinkLost) {
    session_.Tell("Tarvolt", "Connection Lost with UDS");
    session_.Add2SLog("Lost UDS Connection Stopping Chart.");
    recorder_.control.StopChart();
  }
  return false;
}

bool SamplePipeline::SampleIsComplete() {
  ++run_.AvgCount;
  if (run_.AvgCount >= std::max(run_.EffectiveAvg, run_.vAvg)) return true;
  run_.TickBusy = false;
  return false;
}

void SamplePipeline::AverageChannels() {
  const double reads = std::max(run_.EffectiveAvg, run_.vAvg);
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
  const TimeStamp stamp = run_.TimeRefZero ? now - first + WholeDay(first) : now;
  const bool clockWentBack = clock < lastClock_;
  lastClock_ = clock;
  run_.HeardAt = session_.host.clock.MonotonicMilliseconds() - waited;
  if (run_.LastStamp > 0 && !(stamp > run_.LastStamp)) {
    const bool isBurst = run_.TimerType == kSoundTimer && !sourceTime && run_.StepBack == 0 && !clockWentBack;
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
  if (!session_.settings.DiskBackUp || !session_.settings.NoTimeStamps) {
    ++run_.DroppedSamples;
    return false;
  }
  run_.CurrentStamp = run_.LastStamp + kMillisecond;
  return true;
}

// With MiniServer the samples are kept in the backup alone: a full chart width is cleared away.
void SamplePipeline::KeepMiniChartSmall() {
  const double width = session_.settings.ChartWidth / 86400;
  if (!run_.MiniServer || window_.chart.Count() == 0) return;
  if (run_.CurrentStamp - window_.chart.GetTime(0) < width) return;
  if (run_.DiskBackUp && !recorder_.backup.IsComplete()) return;
  if (session_.settings.SaveFTPImage) recorder_.images.Save();
  window_.chart.ClearData();
  recorder_.backup.StoreWasCleared();
  run_.StoreStart = run_.Dcount;
  window_.chart.XAxisMin = run_.CurrentStamp;
  window_.chart.XAxisMax = run_.CurrentStamp + width;
}

void SamplePipeline::StoreSample() {
  const std::int32_t index = window_.chart.AddTime(run_.CurrentStamp);
  storeRefused_ = index >= window_.chart.Count();
  if (storeRefused_) session_.Add2SLog("No memory for a further sample: the log ends here.");
  if (run_.ApplyToIncoming) {
    recorder_.equations.ApplyEquation(run_.Equations, run_.ChannelCount, SampleOfRun(window_, index), run_);
  }
  for (int channel = 0; channel < std::min(run_.ChannelCount, kChannels); ++channel) {
    window_.chart.SetValue(channel, index, run_.ChannelValue[channel] + run_.ChannelOffset[channel]);
  }
}

// Judged on the values without their offsets: an offset moved on the chart moves no threshold. A sample that no
// memory was left for is in no log, and fires nothing.
void SamplePipeline::TestTriggers() {
  if (storeRefused_) return;
  for (int channel = 0; channel < std::min(run_.ChannelCount, kChannels); ++channel) {
    recorder_.triggers.TestTriggers(channel, run_.ChannelValue[channel]);
  }
}

void SamplePipeline::RepaintWhenDue() {
  if (++run_.UpdateCount < session_.settings.ChartUpdateRate) return;
  if (window_.chart.AutoScale) window_.chart.ScaleYToData();
  FollowNewest(window_.chart);
  ++window_.chart.RepaintRequests;
  run_.UpdateCount = 0;
}

void SamplePipeline::FinalizeDataInput() {
  ShowChannelValue();
  ResetExtremes();
  if (run_.DiskBackUp) recorder_.backup.LocalBackUp();
  recorder_.average.TakeSample();
  ++run_.Dcount;
  ++run_.TotalSamples;
  CheckLimits();
}

void SamplePipeline::ShowChannelValue() {
  const int shown = run_.ShownChannel;
  if (shown < 1 || shown > std::min(run_.ChannelCount, kChannels)) return;
  window_.view.ValueLabel = "  CH" + NumberText(std::int64_t{shown}) + " " + NumberText(run_.ChannelValue[shown - 1]);
}

void SamplePipeline::ResetExtremes() {
  run_.ChannelMin.fill(kNoMinimum);
  run_.ChannelMax.fill(kNoMaximum);
}

void SamplePipeline::CheckLimits() {
  const Settings& settings = session_.settings;
  if (run_.Dcount >= std::min(settings.MaxArrayCount, window_.chart.Capacity()) || storeRefused_) {
    recorder_.control.MaxedOut(MaxedOutMode::LimitReached);
  } else if (!settings.UseRestartTime && run_.CurrentStamp >= run_.ChartEndTime) {
    recorder_.control.MaxedOut(MaxedOutMode::LimitReached);
  } else if (settings.UseRestartTime && run_.CurrentStamp >= run_.NextRestart) {
    recorder_.control.MaxedOut(MaxedOutMode::PlannedRestart);
  }
}

}  // namespace tarvolt
