// SPDX-License-Identifier: GPL-3.0-or-later
#include "sources/uds_dispatch.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>

#include "sources/source_table.h"
#include "text/number.h"
#include "timebase/time_stamp.h"

namespace tarvolt {
namespace {

// A time from here on, the day after the last of the year 9999, is a fault of the source, and so is one that is not
// above 0.
constexpr TimeStamp kTooLate = 2958466;

}  // namespace

UdsDispatch::UdsDispatch(Session& session, ChartWindow& window, RunControl& control, SoundInput& sound, SetEnded onSet,
                         Reply reply)
    : session_(session),
      window_(window),
      control_(control),
      sound_(sound),
      reply_(std::move(reply)),
      onSet_(std::move(onSet)) {}

void UdsDispatch::BeginLink() {
  UDSStatusReceived = false;
  UDSDataDone = false;
  fatalStreamError = false;
  badTimeLogged_ = false;
  set_ = {};
}

struct UdsDispatch::Code {
  int code;
  void (UdsDispatch::*act)(std::string_view text);
};

const UdsDispatch::Code* UdsDispatch::FindCode(int code) {
  static constexpr Code kCodes[] = {
      {1001, &UdsDispatch::EndStatusExchange},
      {1002, &UdsDispatch::RunCommand},
      {2013, &UdsDispatch::TakeChannelCount},
      {3000, &UdsDispatch::EndStampedSet},
      {3001, &UdsDispatch::EndSet},
      {3002, &UdsDispatch::SetTimeOrigin},
      {5001, &UdsDispatch::StartLevelMeter},
      {5002, &UdsDispatch::StopLevelMeter},
      {5003, &UdsDispatch::SendPeaks},
      {5004, &UdsDispatch::SendSoundAverages},
  };
  const auto found =
      std::find_if(std::begin(kCodes), std::end(kCodes), [&](const Code& row) { return row.code == code; });
  return found == std::end(kCodes) ? nullptr : found;
}

void UdsDispatch::Act(std::string_view message) {
  const UdsMessage read = ReadUdsMessage(message);
  if (const auto* const data = std::get_if<UdsDataItem>(&read)) {
    set_[static_cast<std::size_t>(data->input)] += data->value;
    return;
  }
  const auto* const control = std::get_if<UdsControlItem>(&read);
  if (!control) return;
  if (const Code* const known = FindCode(control->code)) (this->*known->act)(control->text);
}

void UdsDispatch::EndStatusExchange(std::string_view) {
  UDSStatusReceived = true;
  window_.view.Status.Say("Connected to UDS");
  session_.Add2SLog("Connected to UDS");
}

void UdsDispatch::RunCommand(std::string_view text) {
  control_.ProcessCmd(text);
}

void UdsDispatch::TakeChannelCount(std::string_view text) {
  const std::int32_t declared = ValLong(text);
  if (declared < 1 || declared > kChannels) return FailStream();
  const std::int32_t count = WithOtherRows(declared);
  if ((window_.run.ChartRunning() || window_.chart.Count() > 0) && count != window_.chart.ChannelCount()) {
    session_.Add2SLog("UDS changed its channels to " + NumberText(std::int64_t{count}) +
                      " during the run. The chart keeps its channels.");
    return;
  }
  window_.run.ChannelCount = count;
  window_.header.channels = static_cast<std::int16_t>(count);
  window_.chart.SetChannelCount(count);
  window_.view.Status.Say("Channels: " + NumberText(std::int64_t{count}));
}

// The source counts its own values. A table with rows of other sources keeps them all.
std::int32_t UdsDispatch::WithOtherRows(std::int32_t declared) const {
  const RunPlan& plan = window_.run.plan;
  const int rows = plan.ActiveChannels();
  const bool isMixed = !std::all_of(plan.Dsrc.begin(), plan.Dsrc.begin() + rows, IsUds);
  return isMixed ? std::max(declared, std::int32_t{rows}) : declared;
}

void UdsDispatch::FailStream() {
  const std::string title = "Fatal Stream Error!";
  const std::string text = "There was an error in the number of channels received!";
  session_.Tell(title, text);
  session_.Add2SLog(title + " " + text);
  fatalStreamError = true;
  if (window_.chart.Count() == 0) window_.run.ChannelCount = 1;
  control_.StopChart();
}

void UdsDispatch::EndStampedSet(std::string_view text) {
  FinishSet(ReadTime(text));
}

void UdsDispatch::EndSet(std::string_view) {
  FinishSet(std::nullopt);
}

void UdsDispatch::FinishSet(std::optional<TimeStamp> time) {
  if (!window_.run.plan.uds.UDSpush) {
    UDSDataDone = true;  // also while a log is turned over: whoever waits for the answer has it
    return;
  }
  if (window_.run.ChartRunning() && !window_.run.MaxingOut()) {
    onSet_(time);
  } else {
    set_ = {};  // a set that nobody takes must not add to the next one
  }
}

void UdsDispatch::SetTimeOrigin(std::string_view text) {
  const std::optional<TimeStamp> origin = ReadTime(text);
  if (!origin) return;
  window_.run.time.firstStamp = *origin;
  window_.chart.XAxisMin = *origin;
  window_.chart.XAxisMax = *origin + window_.run.log.ChartWidth / kSecondsPerDay;
  ++window_.chart.RepaintRequests;
  window_.run.log.ChartEndTime = window_.run.log.MaxDuration + *origin;
}

void UdsDispatch::StartLevelMeter(std::string_view) {
  LogUseOfSound("changed the buffers of");
  sound_.StartLevelMeter();
}

void UdsDispatch::StopLevelMeter(std::string_view) {
  LogUseOfSound("stopped");
  sound_.Stop();
}

// The data source may do so, but nobody should have to guess why the samples come otherwise.
void UdsDispatch::LogUseOfSound(const char* whatWasDone) {
  const RunState& run = window_.run;
  const bool isClock = run.plan.pacer == Pacer::Sound;
  const bool isRead = run.plan.pacer == Pacer::Timer && run.plan.HasRow(ReadsSound);
  if (!run.ChartRunning() || !(isClock || isRead)) return;
  session_.Add2SLog(std::string("The data source has ") + whatWasDone + " the sound input, which is " +
                    (isClock ? "the clock of this run." : "recorded in this run."));
}

void UdsDispatch::SendPeaks(std::string_view) {
  reply_(UdsNumbers("PEAK", window_.sound.LastPeakR, window_.sound.LastPeakL));
}

// The row that is sent is one that no pass fills, so its figures are 0 (meant); the counts tell only whether sound has
// come at all.
void UdsDispatch::SendSoundAverages(std::string_view) {
  SoundState& sound = window_.sound;
  const auto mean = [](double sum, double count) { return count > 0 ? sum / count : 0; };
  if (sound.SoundBufCountL <= 0 && sound.SoundBufCountR <= 0) {
    reply_("WAVG 0 0");
  } else {
    reply_(UdsNumbers("WAVG", mean(sound.SoundAccumR[0], sound.SoundBufCountR),
                      mean(sound.SoundAccumL[0], sound.SoundBufCountL)));
  }
  sound.SoundBufCountL = 0;
  sound.SoundBufCountR = 0;
  sound.SoundAccumL[0] = 0;
  sound.SoundAccumR[0] = 0;
}

// Nothing for a time that no observation can have; logged once a link, for it would come with every set.
std::optional<TimeStamp> UdsDispatch::ReadTime(std::string_view text) {
  const TimeStamp time = Val(text);
  if (time > 0 && time < kTooLate) return time;
  if (!badTimeLogged_) session_.Add2SLog("UDS sent a time that is no date. It is not used.");
  badTimeLogged_ = true;
  return std::nullopt;
}

}  // namespace tarvolt
