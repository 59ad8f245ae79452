// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/run/channel_average.h"

#include "text/number.h"
#include "timebase/time_stamp.h"

namespace tarvolt {
namespace {

/// The message stays from this firing of TimerKeepAlive to the hundred and twentieth.
constexpr int kHold = 30;

}  // namespace

ChannelAverage::ChannelAverage(Session& session, ChartWindow& window) : session_(session), window_(window) {}

void ChannelAverage::StartChannelAvg(int channel) {
  const RunState& run = window_.run;
  if (!run.ChartRunning() || run.Dcount < 1 || channel < 1 || channel > run.ChannelCount) return;
  sum_ = 0;
  count_ = 0;
  channel_ = channel;
  start_ = run.CurrentStamp;
  end_ = start_ + session_.settings.timing.AvgSamplingPeriod / kSecondsPerDay;
  running_ = true;
  window_.view.Status.Hold("Getting Average for CH" + NumberText(std::int64_t{channel}));
}

void ChannelAverage::SampleFinished(const FinishedSample& sample) {
  if (!running_) return;
  sum_ += sample.raw[static_cast<std::size_t>(channel_ - 1)];
  ++count_;
}

void ChannelAverage::StopAvgSampling() {
  if (!running_) return;
  running_ = false;
  const std::string average = count_ == 0 ? std::string()
                                          : "Average for CH" + NumberText(std::int64_t{channel_}) + " = " +
                                                NumberText(sum_ / count_) + "  during " +
                                                FormatDate(window_.run.CurrentStamp - start_, "nn:ss");
  window_.view.Status.Hold(average, kHold);
}

}  // namespace tarvolt
