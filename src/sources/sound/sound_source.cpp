// SPDX-License-Identifier: GPL-3.0-or-later
#include "sources/sound/sound_source.h"

#include <cstdint>
#include <utility>

#include "config/settings_table.h"
#include "model/scoped_flag.h"
#include "sources/sound/format_in_use.h"
#include "sources/sound/mixer_control.h"
#include "sources/sound/sound_formats.h"
#include "text/number.h"

namespace tarvolt {
namespace {

constexpr double kDeliveriesARead = 4;  // so that each read finds about as much sound

}  // namespace

SoundSource::SoundSource(Session& session, ChartWindow& window, SoundInput& input, std::function<void()> chooseFormat)
    : session_(session),
      window_(window),
      run_(window.run),
      sound_(window.sound),
      input_(input),
      chooseFormat_(std::move(chooseFormat)) {}

bool SoundSource::IsNeeded(const RunPlan& plan) const {
  return plan.pacer == Pacer::Sound || plan.HasRow(ReadsSound);
}

std::string SoundSource::WhyNotReady(const RunPlan& plan) const {
  if (HasSoundCard(plan.sound)) return {};
  if (!plan.HasRow(ReadsSound)) {
    return "The sound card is set as the timing method but no sound card is available.";
  }
  return "You have a sound card channel selected as a data source but no sound card is available. Change to another "
         "data source under Options / Data Source.";
}

bool SoundSource::Prepare() {
  HoldAdjustment();
  format_ = SoundFormatInUse(session_, run_.plan.sound);
  if (!CheckFormat()) return false;
  sound_.ClearLastReadings();
  sound_.ClearAccumulators();
  input_.Close();
  session_.host.loop.Yield(std::chrono::milliseconds(0));
  PlanTiming();
  if (run_.plan.pacer == Pacer::Push) return true;
  return Open() && WaitForSound();
}

void SoundSource::HoldAdjustment() {
  const double asked = run_.plan.card.SCTadjust;
  if (run_.plan.pacer != Pacer::Sound || (asked >= 0.5 && asked <= 1.5)) return;
  run_.plan.card.SCTadjust = 1;
  session_.settings.card.SCTadjust = 1;
}

bool SoundSource::CheckFormat() {
  if (SoundFormatText(format_).find("8 Bit") == std::string::npos) return true;
  const std::string text =
      "Tarvolt requires a 16 bit sound format to function properly.\n\nSelect a 16 bit format and restart chart.";
  session_.LogAndTell("Sound Setting Warning", text);
  if (session_.settings.program.ShowMsgBox) chooseFormat_();
  return false;
}

void SoundSource::PlanTiming() {
  SoundTimingRequest request;
  request.SampleRate = run_.plan.SampleRate;
  request.vAvg = run_.plan.vAvg;
  request.paces = run_.plan.pacer == Pacer::Sound;
  request.SCTadjust = run_.plan.card.SCTadjust;
  request.Pbuffer = run_.plan.sound.Pbuffer;
  request.format = format_;
  timing_ = PlanSoundTiming(request);
  run_.EffectiveAvg = timing_.EffectiveAvg;
  SizeRing();
}

// Here and not where the input is opened: a data source that pushes may use the input without a run's sound.
void SoundSource::SizeRing() {
  const std::int32_t entries =
      PreBufferEntries(timing_.bufferBytes, format_.stereo, run_.plan.sound.PreBuffLen, run_.plan.SampleRate);
  SoundRing& ring = sound_.ring;
  ring.PreBufferRing.assign(static_cast<std::size_t>(entries), 0);
  ring.RingRead = 0;
  ring.RingWrite = 0;
}

bool SoundSource::Open() {
  SoundInput::Request request;
  request.name = run_.plan.sound.SoundCardName;
  request.format = format_;
  request.buffers.bytes = timing_.bufferBytes;
  const bool paces = run_.plan.pacer == Pacer::Sound;
  request.buffers.latency = (paces ? timing_.bufMs : run_.plan.SampleRate) / kDeliveriesARead;
  request.sources = FindSourcesInUse(run_.plan.Dsrc);
  std::string why;
  if (!input_.Open(request, why)) {
    const std::string offered = FormatsOffered(session_, request.name);
    session_.LogAndTell("Tarvolt", "The sound input " + request.name + " cannot be opened with " +
                                       SoundFormatText(format_) + ": " + why +
                                       (offered.empty() ? "" : "\nIt offers: " + offered));
    return false;
  }
  input_.Start();
  return true;
}

bool SoundSource::WaitForSound() {
  // A start inside the work on a buffer finds all buffers dropped until it has returned: they are delivered all the
  // same.
  const auto heard = [&] { return sound_.SoundBufCountL != 0 || sound_.SoundBufCountR != 0 || sound_.overRuns != 0; };
  const auto givenUp = [&] { return run_.AbortFlag || run_.EndRequested; };
  StatusLine& status = window_.view.Status;
  status.Say("Waiting for Sound ...Escape to Abort.");
  const ScopedFlag awaited(sound_.Awaited);
  while (!heard() && !givenUp()) session_.host.loop.Yield();
  if (!givenUp()) {
    status.Clear();
    return true;
  }
  if (!run_.EndRequested && !heard() && sound_.LastPeakL == 0 && sound_.LastPeakR == 0) {
    session_.LogAndTell("Tarvolt", "No sound was detected from:\n\n" + run_.plan.sound.SoundCardName +
                                       "\n\nCheck your input and you mixer settings.");
  }
  run_.AbortFlag = false;
  status.Say("Start Aborted");
  session_.Add2SLog("Start Aborted");
  return false;
}

// A side without a new buffer adds nothing, and the read counts all the same (meant).
bool SoundSource::Read(int channel, TickReadings& readings) {
  const DataSourceId source = run_.plan.Dsrc[channel];
  if (source == kCrossCorrelation) {
    readings.AddValue(channel, sound_.CrossCorrelation);
    return true;
  }
  const bool left = source == kSoundLeft;
  const double buffers = left ? sound_.SoundBufCountL : sound_.SoundBufCountR;
  if (!(buffers > 0)) return true;
  run_.TickBusy = true;
  const auto& sums = left ? sound_.SoundAccumL : sound_.SoundAccumR;
  const int detector = run_.plan.Detection[channel];
  const bool known = detector >= 0 && detector < static_cast<int>(sums.size());
  readings.AddValue(channel, sums[known ? detector : kAverage] / buffers);
  return true;
}

void SoundSource::DescribeInput(Metadata& metadata) const {
  if (run_.plan.pacer == Pacer::Push) return;
  metadata.AddToMetaData("Sound: ",
                         SoundFormatText(format_) + " Buffer:" + NumberText(std::int64_t{timing_.bufferBytes}));
  const int source = run_.plan.card.MixerSource;
  const int volume = MixerVolumeNow(session_, run_.plan.sound, source);
  metadata.AddToMetaData("Mixer: ",
                         std::string("Source:") + MixerSourceName(source) + " Vol:" + NumberText(std::int64_t{volume}));
}

std::optional<double> SoundSource::ActualPeriod() const {
  if (run_.plan.pacer != Pacer::Sound || run_.plan.SampleRate <= 1000 || timing_.divided) return std::nullopt;
  return (run_.EffectiveAvg - run_.plan.vAvg + 1) * timing_.bufMs;
}

}  // namespace tarvolt
