// The sound input's part in the start of a run.

#include "core/run/chart_run.h"
#include "core/run/run_metadata.h"
#include "core/sound/mixer_control.h"
#include "core/sound/sound_card.h"
#include "model/scoped_flag.h"
#include "sources/sound/sound_formats.h"

namespace tarvolt {
namespace {

constexpr double kDeliveriesARead = 4;  // so that each read finds about as much sound

}  // namespace

bool ChartRun::NeedsSound() const {
  return recorder_.sources.SoundInUse() || run_.plan.TimerType == kSoundTimer;
}

bool ChartRun::PushReplacesSound() const {
  return run_.plan.uds.UDSpush && recorder_.sources.UDSInUse;
}

// Milliseconds of sound that was heard while the last log was saved and is still to be read.
double ChartRun::SoundWaiting() const {
  if (run_.plan.TimerType != kSoundTimer || PushReplacesSound() || recorder_.sound.IsLost()) return 0;
  return session_.host.clock.MonotonicMilliseconds() - run_.HeardAt;
}

// True when the input delivers, or none is needed.
bool ChartRun::SetUpSound() {
  if (!NeedsSound()) return true;
  soundFormat_ = SoundFormatInUse(session_);
  if (!CheckSoundFormat()) return false;
  window_.sound.ClearLastReadings();
  window_.sound.ClearAccumulators();
  recorder_.sound.Close();
  session_.host.loop.Yield(std::chrono::milliseconds(0));
  PlanSound();
  if (PushReplacesSound()) return true;
  return OpenSound() && WaitForSound();
}

bool ChartRun::CheckSoundFormat() {
  if (SoundFormatText(soundFormat_).find("8 Bit") == std::string::npos) return true;
  const std::string text =
      "Tarvolt requires a 16 bit sound format to function properly.\n\nSelect a 16 bit format and restart chart.";
  session_.LogAndTell("Sound Setting Warning", text);
  if (session_.settings.program.ShowMsgBox) recorder_.person.ChooseSoundFormat();
  return false;
}

void ChartRun::PlanSound() {
  const bool paces = run_.plan.TimerType == kSoundTimer && !PushReplacesSound();
  if (paces && (run_.plan.card.SCTadjust < 0.5 || run_.plan.card.SCTadjust > 1.5)) {
    run_.plan.card.SCTadjust = 1;
    session_.settings.card.SCTadjust = 1;
  }
  SoundTimingRequest request;
  request.SampleRate = run_.plan.SampleRate;
  request.vAvg = run_.plan.vAvg;
  request.paces = paces;
  request.SCTadjust = run_.plan.card.SCTadjust;
  request.Pbuffer = run_.plan.sound.Pbuffer;
  request.format = soundFormat_;
  soundTiming_ = PlanSoundTiming(request);
  run_.EffectiveAvg = soundTiming_.EffectiveAvg;
  SizeRing();
}

// Here and not where the input is opened: a data source that pushes may use the input without a run's sound.
void ChartRun::SizeRing() {
  const std::int32_t entries =
      PreBufferEntries(soundTiming_.bufferBytes, soundFormat_.stereo, run_.plan.sound.PreBuffLen, run_.plan.SampleRate);
  SoundRing& ring = window_.sound.ring;
  ring.PreBufferRing.assign(static_cast<std::size_t>(entries), 0);
  ring.RingRead = 0;
  ring.RingWrite = 0;
}

void ChartRun::AddSoundMetadata() {
  tarvolt::AddSoundMetadata(session_, SoundFormatText(soundFormat_), soundTiming_.bufferBytes, window_);
}

bool ChartRun::OpenSound() {
  const Settings& settings = session_.settings;
  SoundInput::Request request;
  request.name = settings.sound.SoundCardName;
  request.format = soundFormat_;
  request.buffers.bytes = soundTiming_.bufferBytes;
  const bool paces = run_.plan.TimerType == kSoundTimer;
  request.buffers.latency = (paces ? soundTiming_.bufMs : run_.plan.SampleRate) / kDeliveriesARead;
  request.sources = recorder_.sources;
  std::string why;
  if (!recorder_.sound.Open(request, why)) {
    const std::string offered = FormatsOffered(session_);
    return Refuse("The sound input " + request.name + " cannot be opened with " + SoundFormatText(soundFormat_) + ": " +
                  why + (offered.empty() ? "" : "\nIt offers: " + offered));
  }
  recorder_.sound.Start();
  return true;
}

// Yields until the input has delivered, Escape or the end of the program.
bool ChartRun::WaitForSound() {
  const SoundState& sound = window_.sound;
  // A start inside the work on a buffer finds all buffers dropped until it has returned: they are delivered all the
  // same.
  const auto heard = [&] { return sound.SoundBufCountL != 0 || sound.SoundBufCountR != 0 || sound.overRuns != 0; };
  const auto givenUp = [&] { return run_.AbortFlag || run_.EndRequested; };
  view_.Status.Say("Waiting for Sound ...Escape to Abort.");
  const ScopedFlag awaited(window_.sound.Awaited);
  while (!heard() && !givenUp()) session_.host.loop.Yield();
  if (!givenUp()) {
    view_.Status.Clear();
    return true;
  }
  if (!run_.EndRequested && !heard() && sound.LastPeakL == 0 && sound.LastPeakR == 0) {
    Refuse("No sound was detected from:\n\n" + session_.settings.sound.SoundCardName +
           "\n\nCheck your input and you mixer settings.");
  }
  run_.AbortFlag = false;
  view_.Status.Say("Start Aborted");
  session_.Add2SLog("Start Aborted");
  return false;
}

}  // namespace tarvolt
