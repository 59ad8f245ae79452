// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <utility>

#include "sources/sound/sound_gaps.h"
#include "sources/sound/sound_input.h"
#include "text/number.h"
#include "timebase/time_stamp.h"

namespace tarvolt {
namespace {

constexpr int kWatchInterval = 250;       // milliseconds
constexpr double kPatience = 2000;        // milliseconds without a buffer
constexpr double kBuffersOfPatience = 4;  // the same for long buffers
constexpr double kSilence = 5000;         // milliseconds of exact zeros, which no converter gives
constexpr double kTryEvery = 2000;        // milliseconds between two tries to open a lost input
constexpr double kFreshEvery = 60000;     // the same for one that gives zeros
constexpr double kOpening = 3000;         // milliseconds that the first buffer may take longer
constexpr double kSecond = 1000;
constexpr double kHeldUp = 1000;  // milliseconds between two looks: the program was busy, and buffers wait for it

std::string SecondsText(double milliseconds) {
  return FormatNumber(milliseconds / kSecond, "##0.0") + " seconds";
}

}  // namespace

// In milliseconds.
double SoundInput::BufferLength() const {
  const double frames = static_cast<double>(request_.buffers.bytes) / request_.format.FrameBytes();
  return frames / request_.format.samplesPerSecond * kSecond;
}

// A device is given time for some of its own buffers, however long they are, and to open.
double SoundInput::Patience() const {
  const double patience = std::max(kPatience, kBuffersOfPatience * BufferLength());
  return delivers_ ? patience : patience + kOpening;
}

bool SoundInput::InRun() const {
  return window_.run.ChartRunning() || window_.run.Starting();
}

void SoundInput::Announce(const std::string& text) {
  session_.LogAndTell("Tarvolt", text);
}

// The status line of a run shows it as long as it lasts, unless another message is there.
void SoundInput::ShowTrouble() {
  StatusLine& line = window_.view.Status;
  const bool isTrouble = window_.run.ChartRunning() && (lost_ || silent_);
  const bool wasShown = !trouble_.empty() && line.Text() == trouble_;
  if (!isTrouble) {
    if (wasShown) line.Clear();
    trouble_.clear();
    return;
  }
  const bool isNew = trouble_.empty();
  trouble_ = (lost_ ? "Sound lost: " : "Sound gives zeros alone: ") + request_.name;
  if (isNew || wasShown || line.Text().empty()) line.Say(trouble_);
}

void SoundInput::BeginWatching() {
  if (!watchTimer_) {
    watchTimer_ = session_.host.loop.MakeTimer([this] { Watch(); });
    if (watchTimer_) watchTimer_->SetInterval(kWatchInterval);
  }
  if (watchTimer_) watchTimer_->SetEnabled(true);
  lastWatch_ = session_.host.clock.MonotonicMilliseconds();
}

// The loss goes on: the input is opened with other buffers when it is there.
void SoundInput::LookAgainFor(std::int32_t bufferBytes) {
  LetGo();
  request_.buffers.bytes = bufferBytes;
  lost_ = true;
  nextTry_ = session_.host.clock.MonotonicMilliseconds();
}

void SoundInput::Watch() {
  ShowTrouble();
  const double now = session_.host.clock.MonotonicMilliseconds();
  const bool wasHeldUp = now - std::exchange(lastWatch_, now) > kHeldUp;
  if (opening_ || wasHeldUp) return;
  if (lost_) return TryAgain();
  if (!running_) return;
  if (now - lastBuffer_ > Patience() && !rewinds_) return Lose("it delivers nothing");
  const bool looksAtSamples = window_.run.chartState() != ChartState::Idle;
  if (!looksAtSamples) lastSound_ = now;
  if (now - lastSound_ <= std::max(kSilence, Patience())) return;
  if (!silent_) Announce("The sound input " + request_.name + " gives zeros alone.");
  const bool wasSilent = std::exchange(silent_, true);
  if (rewinds_ || (wasSilent && now < nextTry_)) return;
  nextTry_ = now + kFreshEvery;
  // An input that was pulled out may go on with zeros: a fresh one gives sound, if there is any.
  std::string why;
  if (!OpenDevice(why)) return Lose(why);
  const double lastSound = lastSound_;
  Start();
  lastSound_ = lastSound;
  silent_ = true;
}

void SoundInput::NoteDelivery(double waited) {
  delivers_ = true;
  lastBuffer_ = session_.host.clock.MonotonicMilliseconds();
  if (!lost_) return NoteWhatIsMissing(waited);
  lost_ = false;
  const double gap = lastBuffer_ - lostSince_;
  Announce("Sound is back from " + request_.name + ". The gap is " + SecondsText(gap) + ".");
  if (InRun()) EndSoundGap(session_.host.clock, gap / kSecond, window_);
}

// Too short to be a loss, and not told by the driver: a file waits for its reader, and has none.
void SoundInput::NoteWhatIsMissing(double waited) {
  if (rewinds_) return;
  const double gap = balance_.Take(lastBuffer_ - waited, BufferLength());
  if (gap <= 0 || !InRun()) return;
  session_.Add2SLog("Sound of " + SecondsText(gap) + " is missing from " + request_.name + ".");
  EndSoundGap(session_.host.clock, gap / kSecond, window_);
}

void SoundInput::NoteSamples(std::size_t count) {
  const auto isSound = [](std::int16_t sample) { return sample != 0; };
  if (std::none_of(samples_.begin(), samples_.begin() + static_cast<std::ptrdiff_t>(count), isSound)) return;
  if (silent_) {
    Announce("Sound is back from " + request_.name + " after " + SecondsText(lastBuffer_ - lastSound_) + " of zeros.");
  }
  silent_ = false;
  lastSound_ = lastBuffer_;
}

// The gap counts from the last buffer, whenever its end is noticed.
void SoundInput::Lose(const std::string& why) {
  LetGo();
  if (lost_) return;
  lost_ = true;
  sound_.ClearLastReadings();  // nothing of it may be taken for what is heard now
  lostSince_ = lastBuffer_;
  nextTry_ = session_.host.clock.MonotonicMilliseconds();
  if (!InRun()) return;
  const char* const outlook = window_.run.ChartRunning() ? " The run goes on without it." : "";
  Announce("The sound input " + request_.name + " was lost: " + why + "." + outlook);
  const double ago = nextTry_ - lostSince_;
  sound_.gaps.lostSince = CalcTime(session_.host.clock, window_.run.time) - ago * kMillisecond;
  AddSoundGaps(window_);
}

// Nobody looks for it any more.
void SoundInput::GiveUpLoss() {
  if (!std::exchange(lost_, false) || sound_.gaps.lostSince == 0) return;
  const double gap = session_.host.clock.MonotonicMilliseconds() - lostSince_;
  session_.Add2SLog("The sound input " + request_.name + " did not come back. The gap is " + SecondsText(gap) + ".");
  EndSoundGap(session_.host.clock, gap / kSecond, window_);
}

// The loss is over only when a buffer comes: an input that opens and stays mute is tried again.
void SoundInput::TryAgain() {
  const double now = session_.host.clock.MonotonicMilliseconds();
  if (device_ && now - lastBuffer_ > Patience()) LetGo();
  if (device_ || now < nextTry_) return;
  nextTry_ = now + kTryEvery;
  opening_ = true;
  std::string why;
  if (session_.host.sound.IsThere(request_.name) && OpenDevice(why)) Start();
  opening_ = false;
}

}  // namespace tarvolt
