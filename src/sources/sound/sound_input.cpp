// SPDX-License-Identifier: GPL-3.0-or-later
#include "sources/sound/sound_input.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "config/settings_table.h"
#include "model/scoped_flag.h"
#include "sources/sound/format_in_use.h"
#include "sources/sound/sound_timing.h"
#include "text/number.h"

namespace tarvolt {
namespace {

constexpr double kSecond = 1000;          // milliseconds
constexpr double kStretch = 4000;         // milliseconds over which the delivery is held against the clock
constexpr double kBuffersOfStretch = 8;   // the same for long buffers
constexpr int kOverRunLinesASecond = 10;  // a flood of lines would cost more buffers yet

constexpr const char* kBusyWords = "Sound buffer filled while last data was still being processed.";
constexpr const char* kLateWords = "Sound was lost because it was not taken from the driver in time.";

}  // namespace

SoundInput::SoundInput(Session& session, ChartWindow& window)
    : session_(session), window_(window), sound_(window.sound) {}

SoundInput::~SoundInput() {
  LetGo();
}

bool SoundInput::Open(const Request& request, std::string& why) {
  Close();
  request_ = request;
  rewinds_ = session_.host.sound.FixedFormat(request_.name).has_value();
  sound_.overRuns = 0;
  if (!OpenDevice(why)) return false;
  BeginWatching();
  return true;
}

bool SoundInput::OpenDevice(std::string& why) {
  LetGo();
  Device device = session_.host.sound.Make(request_.name);
  if (!device->Open(request_.format, request_.buffers, why)) return false;
  device->onBuffer = [this](WaveHandle handle) { TakeBuffer(handle); };
  device->onOverRun = [this](std::int64_t buffers) { NoteOverRuns(buffers, kLateWords); };
  device->onLost = [this](const std::string& reason) { Lose(reason); };
  device->onEnded = [this] {
    running_ = false;
    if (onEnded) onEnded();
  };
  device_ = std::move(device);
  // The work array, sized by the device's buffer.
  samples_.assign(static_cast<std::size_t>(request_.buffers.bytes) / sizeof(std::int16_t) + 1, 0);
  return true;
}

// It may be inside its own event: it dies at a later turn of the loop.
void SoundInput::LetGo() {
  if (!device_) return;
  running_ = false;
  device_->Close();
  session_.host.loop.Post([held = std::move(device_)] {});
  device_ = nullptr;
}

void SoundInput::Start() {
  if (!device_) return;
  running_ = true;
  silent_ = false;
  lastBuffer_ = session_.host.clock.MonotonicMilliseconds();
  lastSound_ = lastBuffer_;
  delivers_ = false;
  BeginStretch();
  device_->Start();
}

// What comes next does not follow on what came before.
void SoundInput::BeginStretch() {
  sound_.spectrum.BeginAnew();
  balance_.BeginAnew(std::max(kStretch, kBuffersOfStretch * BufferLength()));
}

void SoundInput::Pause() {
  if (!device_) return;
  running_ = false;
  device_->Pause();
}

void SoundInput::Restart() {
  if (!device_) return;
  running_ = true;
  lastBuffer_ = session_.host.clock.MonotonicMilliseconds();
  BeginStretch();
  device_->Restart();
}

// A lost input is stopped as well: the watchdog no longer looks for it.
void SoundInput::Stop() {
  GiveUpLoss();
  if (!device_) return;
  running_ = false;
  device_->Stop();
}

void SoundInput::Close() {
  const bool wasOpen = device_ != nullptr || lost_;
  LetGo();
  if (watchTimer_) watchTimer_->SetEnabled(false);
  GiveUpLoss();
  if (wasOpen && sound_.overRuns > 0) {
    session_.Add2SLog("Sound buffers lost: " + NumberText(sound_.overRuns));
  }
  sound_.overRuns = 0;
  if (!trouble_.empty() && window_.view.Status.Text() == trouble_) window_.view.Status.Clear();
  trouble_.clear();
  request_.name.clear();
}

void SoundInput::StartLevelMeter() {
  const RunPlan& plan = window_.run.plan;
  sound_.LastPeakR = 0;
  sound_.SoundAccumL[0] = 0;
  sound_.SoundAccumR[0] = 0;
  const bool wasLost = lost_;
  LetGo();
  Request request = request_;
  if (request.name.empty()) {
    lastBuffer_ = session_.host.clock.MonotonicMilliseconds();
    request.name = plan.sound.SoundCardName;
    request.format = SoundFormatInUse(session_, plan.sound);
    request.sources = FindSourcesInUse(plan.Dsrc);
  }
  SoundTimingRequest timing;
  timing.Pbuffer = plan.sound.Pbuffer;
  timing.format = request.format;
  request.buffers.bytes = PlanSoundTiming(timing).bufferBytes;
  if (wasLost) return LookAgainFor(request.buffers.bytes);
  std::string why;
  if (Open(request, why)) return Start();
  session_.Add2SLog("The sound input " + request.name + " cannot be opened: " + why);
  if (!InRun() || !HasSoundCard(plan.sound)) return;
  BeginWatching();
  Lose(why);
}

// A device that is let go while its buffer is worked on lives on until its own event is over.
void SoundInput::TakeBuffer(WaveHandle handle) {
  const Device device = device_;
  const double waited = device_->Waited(handle);
  NoteDelivery(waited);
  WorkOn(handle, waited);
  if (device != device_) session_.host.loop.Post([device] {});
}

// Nothing of a dropped buffer is counted: what has gathered since the last read stays as it is.
void SoundInput::WorkOn(WaveHandle handle, double waited) {
  if (sound_.BufferBusy || window_.run.TickBusy) return NoteOverRuns(1, kBusyWords);
  {
    const ScopedFlag busy(sound_.BufferBusy);
    sound_.SoundBufCountL += 1;
    sound_.SoundBufCountR += 1;
    if (window_.run.chartState() == ChartState::Idle) return;
    const std::size_t count = FetchSamples(handle);
    NoteSamples(count);
    FeedLevels({samples_.data(), count}, request_.format.stereo, sound_.levels);
    if (!Reduce(count)) return;
  }
  if (onBuffer) onBuffer(waited);
}

// The spectrum may yield inside the pass, and a device opened meanwhile has a work array of its own. False when there
// is another device behind the pass, or none: the buffer is no event of it.
bool SoundInput::Reduce(std::size_t count) {
  const WaveInDevice* const device = device_.get();
  std::vector<std::int16_t> samples = std::exchange(samples_, {});
  const auto pass = request_.format.stereo ? StereoPass : MonoPass;
  pass({samples.data(), count}, Setup(), sound_);
  if (device_.get() != device) return false;
  samples_ = std::move(samples);
  return true;
}

std::size_t SoundInput::FetchSamples(WaveHandle handle) {
  const std::size_t bytes = std::min(device_->ParseWaveHeader(handle), samples_.size() * sizeof(std::int16_t));
  return device_->CopyWaveHeader(handle, samples_.data(), bytes) / sizeof(std::int16_t);
}

// Each lost buffer counts and is reported; of a flood only the first in a second, and the number of all at the end.
void SoundInput::NoteOverRuns(std::int64_t buffers, const char* words) {
  sound_.overRuns += buffers;
  sound_.spectrum.BeginAnew();
  const double now = session_.host.clock.MonotonicMilliseconds();
  if (now - overRunSecond_ >= kSecond) {
    overRunSecond_ = now;
    overRunLines_ = 0;
  }
  if (++overRunLines_ <= kOverRunLinesASecond) session_.Add2SLog(words);
}

// A profile that is loaded meanwhile changes no factor of the run.
DetectionSetup SoundInput::Setup() const {
  const CardSettings& card = window_.run.plan.card;
  const int input = card.MixerSource >= 0 && card.MixerSource < kMixerInputs ? card.MixerSource : 0;
  DetectionSetup setup;
  setup.backgroundL = card.LCHbkgnd[input];
  setup.backgroundR = card.RCHbkgnd[input];
  setup.PwrMultiL = card.PwrMultiL;
  setup.PwrMultiR = card.PwrMultiR;
  setup.SoundLeftInUse = request_.sources.SoundLeftInUse;
  setup.SoundRightInUse = request_.sources.SoundRightInUse;
  return setup;
}

}  // namespace tarvolt
