// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/wav_file_device.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

namespace tarvolt {
namespace {

constexpr double kShortestWait = 5;  // milliseconds
constexpr double kLatest = 2000;     // milliseconds that are still caught up with

}  // namespace

/// One stretch of delivery. Whoever works on it when it is ended sees that it is over.
struct WavFileDevice::Playing {
  bool over = false;
};

std::optional<WavFileName> ReadWavFileName(const std::string& name) {
  for (const auto& [prefix, play] :
       {std::pair("file:", WavPlay::Once), std::pair("loop:", WavPlay::Loop), std::pair("fastfile:", WavPlay::Fast)}) {
    if (name.starts_with(prefix)) return WavFileName{play, name.substr(std::strlen(prefix))};
  }
  return std::nullopt;
}

WavFileDevice::WavFileDevice(EventLoop& loop, Clock& clock, FileSystem& files, WavFileName name)
    : loop_(loop), clock_(clock), files_(files), name_(std::move(name)) {}

WavFileDevice::~WavFileDevice() {
  Close();
}

bool WavFileDevice::Open(const WaveFormat& format, const WaveBuffers& buffers, std::string& why) {
  Close();
  reader_ = WavFileReader::Open(files_, name_.path, why);
  if (!reader_) return false;
  if (!(reader_->Format() == format) || format.bits != 16) {
    why = "the file has another format";
  } else if (reader_->Frames() * format.FrameBytes() < buffers.bytes) {
    why = "the file is shorter than one sound buffer";
  } else {
    format_ = format;
    buffer_.assign(static_cast<std::size_t>(buffers.bytes), 0);
    const bool comeTogether = DueAt(1) - begun_ < buffers.latency;
    shortestWait_ = comeTogether ? std::max(buffers.latency, kShortestWait) : kShortestWait;
    return true;
  }
  reader_ = nullptr;
  return false;
}

void WavFileDevice::Start() {
  if (!reader_) return;
  reader_->Rewind();
  Restart();
}

void WavFileDevice::Pause() {
  Halt();
}

// The file waits while it is paused: nothing of it is lost.
void WavFileDevice::Restart() {
  if (!reader_) return;
  Halt();
  begun_ = clock_.MonotonicMilliseconds();
  delivered_ = 0;
  playing_ = std::make_shared<Playing>();
  PlanNext(playing_);
}

void WavFileDevice::Stop() {
  Halt();
}

void WavFileDevice::Close() {
  Halt();
  reader_ = nullptr;
}

void WavFileDevice::Halt() {
  if (playing_) playing_->over = true;
  playing_ = nullptr;
  if (timer_) loop_.Post([ended = std::shared_ptr<Timer>(std::move(timer_))] {});  // it may be ticking
}

std::size_t WavFileDevice::ParseWaveHeader(WaveHandle handle) const {
  return static_cast<const std::vector<char>*>(handle)->size();
}

std::size_t WavFileDevice::CopyWaveHeader(WaveHandle handle, void* destination, std::size_t count) const {
  const auto& buffer = *static_cast<const std::vector<char>*>(handle);
  const std::size_t bytes = std::min(count, buffer.size());
  std::memcpy(destination, buffer.data(), bytes);
  return bytes;
}

double WavFileDevice::Waited(WaveHandle) const {
  if (name_.play == WavPlay::Fast) return 0;
  return std::max(0.0, clock_.MonotonicMilliseconds() - DueAt(delivered_));
}

// The moment at which so many buffers have been heard whole.
double WavFileDevice::DueAt(std::int64_t buffers) const {
  const double frames = static_cast<double>(buffer_.size()) / format_.FrameBytes() * static_cast<double>(buffers);
  return begun_ + 1000 * frames / format_.samplesPerSecond;
}

void WavFileDevice::PlanNext(const std::shared_ptr<Playing>& playing) {
  if (name_.play == WavPlay::Fast) return PostTurn(playing);
  if (!timer_) {
    timer_ = loop_.MakeTimer([this, playing] {
      if (playing->over) return;
      timer_->SetEnabled(false);
      PostTurn(playing);  // the timer is not entered again while it ticks
    });
  }
  const double wait = DueAt(delivered_ + 1) - clock_.MonotonicMilliseconds();
  timer_->SetInterval(static_cast<int>(std::ceil(std::max(wait, shortestWait_))));
  timer_->SetEnabled(true);
}

void WavFileDevice::PostTurn(const std::shared_ptr<Playing>& playing) {
  loop_.Post([this, playing] {
    if (!playing->over) Turn(playing);
  });
}

// `playing` is a copy: a handler may end the stretch, and with it whoever called. What falls due while a handler yields
// is delivered inside it, as from a card, for time goes on.
void WavFileDevice::Turn(std::shared_ptr<Playing> playing) {
  if (name_.play != WavPlay::Fast) {
    GoOnFromNow();
    PlanNext(playing);
  }
  DeliverDue(playing);
  if (!playing->over) PlanNext(playing);
}

void WavFileDevice::DeliverDue(const std::shared_ptr<Playing>& playing) {
  do {
    if (name_.play != WavPlay::Fast && DueAt(delivered_ + 1) > clock_.MonotonicMilliseconds()) return;
    if (!Fill()) {
      Halt();
      if (const auto handler = onEnded) handler();
      return;
    }
    ++delivered_;
    const std::vector<char> buffer = buffer_;
    const auto handler = onBuffer;  // the device may be gone when it returns
    if (handler) handler(&buffer);
  } while (!playing->over && name_.play != WavPlay::Fast);
}

// After a machine has slept the file goes on where it was.
void WavFileDevice::GoOnFromNow() {
  const double late = clock_.MonotonicMilliseconds() - DueAt(delivered_ + 1);
  if (late > kLatest) begun_ += late;
}

// False at the end of the file.
bool WavFileDevice::Fill() {
  const int frameBytes = format_.FrameBytes();
  const auto frames = static_cast<std::int64_t>(buffer_.size()) / frameBytes;
  std::int64_t filled = 0;
  for (int passes = 0; filled < frames && passes < 2; ++passes) {
    filled += reader_->ReadFrames(buffer_.data() + filled * frameBytes, frames - filled);
    if (filled == frames) return true;
    if (name_.play != WavPlay::Loop) return false;
    reader_->Rewind();
  }
  return filled == frames;
}

}  // namespace tarvolt
