// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/alsa_wave_in.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstring>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

#include "host/alsa_inputs.h"
#include "host/alsa_params.h"
#include "host/block_queue.h"
#include "host/system_clock.h"

namespace tarvolt {
namespace {

constexpr double kSecondsHeld = 10;  // while a long log is saved
constexpr std::size_t kFewestBlocks = 16;
constexpr std::chrono::milliseconds kPatienceWithOpening{3000};
constexpr std::chrono::milliseconds kPatienceWithStopping{500};
constexpr int kPollLimit = 500;  // milliseconds
constexpr int kIdleTurns = 50;   // wake-ups without a frame before the thread rests
constexpr std::chrono::milliseconds kRest{10};
constexpr std::size_t kFramesARead = 4096;
constexpr int kReadsATurn = 8;  // a driver that always has more must not keep its buffers from the event loop

std::size_t BlocksHeld(const WaveFormat& format, std::int32_t bufferBytes) {
  const double perSecond = static_cast<double>(format.samplesPerSecond) * format.FrameBytes() / bufferBytes;
  return std::max(kFewestBlocks, static_cast<std::size_t>(kSecondsHeld * perSecond));
}

}  // namespace

/// One stretch of capturing, from a start to its stop: what the thread and the event loop share.
struct AlsaWaveIn::Capture {
  Capture(AlsaWaveIn& ownDevice, QtEventLoop& eventLoop, std::string pcmOfInput, const WaveFormat& ownFormat,
          const WaveBuffers& ownBuffers)
      : device(&ownDevice),
        loop(eventLoop),
        pcmName(std::move(pcmOfInput)),
        format(ownFormat),
        buffers(ownBuffers),
        frameBytes(static_cast<std::size_t>(format.FrameBytes())),
        blocks(static_cast<std::size_t>(buffers.bytes), BlocksHeld(format, buffers.bytes),
               1e-3 * format.samplesPerSecond * format.FrameBytes()),
        wakeUp(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)) {}
  ~Capture() {
    if (wakeUp >= 0) close(wakeUp);
  }
  Capture(const Capture&) = delete;
  Capture& operator=(const Capture&) = delete;

  AlsaWaveIn* device;  ///< the event loop's alone; null from the stop on
  QtEventLoop& loop;
  AlsaPcm pcm;  ///< the thread's alone
  const std::string pcmName;
  const WaveFormat format;
  const WaveBuffers buffers;
  const std::size_t frameBytes;
  BlockQueue blocks;
  const int wakeUp;
  std::atomic<bool> stopping{false};
  std::atomic<bool> paused{false};
  std::atomic<bool> posted{false};

  std::mutex mutex;  // of what follows
  std::condition_variable changed;
  bool ended = false;     ///< the thread has let the driver go
  bool loopGone = false;  ///< nothing may be posted any more
  std::string failure;    ///< why the input was lost
};

AlsaWaveIn::AlsaWaveIn(QtEventLoop& loop, DriverCalls& drivers, std::string name)
    : loop_(loop), drivers_(drivers), name_(std::move(name)) {}

AlsaWaveIn::~AlsaWaveIn() {
  Close();
}

// Opened for a trial: the stream itself belongs to the thread that Start makes.
bool AlsaWaveIn::Open(const WaveFormat& format, const WaveBuffers& buffers, std::string& why) {
  Close();
  const std::optional<std::string> pcmName = AlsaPcmName(name_);
  if (!pcmName || buffers.bytes <= 0) {
    why = "there is no such input";
    return false;
  }
  const std::function<int()> trial = [pcmName = *pcmName, format, latency = buffers.latency] {
    int error = 0;
    const AlsaPcm pcm = OpenAlsaPcm(pcmName, &error);
    return pcm ? SetAlsaParams(*pcm, format, latency) : error;
  };
  const std::optional<int> error = drivers_.Ask(*pcmName, kPatienceWithOpening, trial);
  if (!error || *error < 0) {
    why = error ? snd_strerror(*error) : "it does not answer";
    return false;
  }
  format_ = format;
  buffers_ = buffers;
  open_ = true;
  return true;
}

void AlsaWaveIn::Start() {
  if (!open_) return;
  EndCapture();
  capture_ = std::make_shared<Capture>(*this, loop_, AlsaPcmName(name_).value_or(""), format_, buffers_);
  try {
    std::thread(ReadDriver, capture_).detach();
  } catch (const std::system_error& error) {
    capture_->failure = error.what();
    capture_->ended = true;
    PostDelivery(capture_);
  }
}

void AlsaWaveIn::Pause() {
  if (capture_) capture_->paused = true;
}

void AlsaWaveIn::Restart() {
  if (!capture_) return;
  capture_->blocks.Clear();
  capture_->paused = false;
}

void AlsaWaveIn::Stop() {
  EndCapture();
}

void AlsaWaveIn::Close() {
  EndCapture();
  open_ = false;
}

// A driver may hang when it is asked to stop: then its thread stays behind, and reaches nobody.
void AlsaWaveIn::EndCapture() {
  if (!capture_) return;
  const std::shared_ptr<Capture> ending = std::exchange(capture_, nullptr);
  ending->device = nullptr;
  ending->stopping = true;
  eventfd_write(ending->wakeUp, 1);
  std::unique_lock lock(ending->mutex);
  ending->loopGone = true;
  ending->changed.wait_for(lock, kPatienceWithStopping, [&] { return ending->ended; });
}

std::size_t AlsaWaveIn::ParseWaveHeader(WaveHandle handle) const {
  return static_cast<const BlockQueue::Block*>(handle)->bytes.size();
}

std::size_t AlsaWaveIn::CopyWaveHeader(WaveHandle handle, void* destination, std::size_t count) const {
  const std::vector<char>& bytes = static_cast<const BlockQueue::Block*>(handle)->bytes;
  const std::size_t copied = std::min(count, bytes.size());
  std::memcpy(destination, bytes.data(), copied);
  return copied;
}

double AlsaWaveIn::Waited(WaveHandle handle) const {
  return std::max(0.0, MillisecondsSinceBoot() - static_cast<const BlockQueue::Block*>(handle)->heardAt);
}

// The thread. It touches the capture alone. A driver may take its time to open, which the event loop does not have.
void AlsaWaveIn::ReadDriver(std::shared_ptr<Capture> capture) {
  if (OpenDriver(*capture)) ReadUntilStopped(capture);
  capture->pcm = nullptr;
  bool lost = false;
  {
    const std::lock_guard lock(capture->mutex);
    capture->ended = true;
    lost = !capture->failure.empty();
    capture->changed.notify_all();
  }
  if (lost) PostDelivery(capture);
}

bool AlsaWaveIn::OpenDriver(Capture& capture) {
  int error = 0;
  capture.pcm = OpenAlsaPcm(capture.pcmName, &error);
  if (capture.pcm) error = SetAlsaParams(*capture.pcm, capture.format, capture.buffers.latency);
  if (capture.pcm && error == 0) error = snd_pcm_start(capture.pcm.get());
  if (error >= 0) return true;
  const std::lock_guard lock(capture.mutex);
  capture.failure = snd_strerror(error);
  return false;
}

void AlsaWaveIn::ReadUntilStopped(const std::shared_ptr<Capture>& capture) {
  snd_pcm_t* const pcm = capture->pcm.get();
  std::string frames(kFramesARead * capture->frameBytes, '\0');
  std::vector<pollfd> descriptors(static_cast<std::size_t>(std::max(0, snd_pcm_poll_descriptors_count(pcm))) + 1);
  const auto ofDriver = static_cast<unsigned>(descriptors.size() - 1);
  int idleTurns = 0;
  int reads = 0;  // in the last turn
  while (!capture->stopping) {
    snd_pcm_poll_descriptors(pcm, descriptors.data(), ofDriver);
    descriptors.back() = {capture->wakeUp, POLLIN, 0};
    if (poll(descriptors.data(), descriptors.size(), reads == kReadsATurn ? 0 : kPollLimit) > 0) {
      unsigned short events = 0;
      snd_pcm_poll_descriptors_revents(pcm, descriptors.data(), ofDriver, &events);  // some plug-ins work in here
    }
    if (capture->stopping) break;
    reads = ReadAvailable(*capture, frames);
    if (reads > 0) {
      idleTurns = 0;
    } else if (++idleTurns > kIdleTurns) {
      std::this_thread::sleep_for(kRest);  // a driver that wakes without a frame must not take the processor
    }
    if (capture->blocks.Ready() > 0) PostDelivery(capture);
    const std::lock_guard lock(capture->mutex);
    if (!capture->failure.empty()) break;
  }
}

// When the last frame that was read was heard: before all that the driver has still to give.
double AlsaWaveIn::HeardAt(Capture& capture) {
  const auto left = static_cast<double>(std::max<snd_pcm_sframes_t>(0, snd_pcm_avail_update(capture.pcm.get())));
  return MillisecondsSinceBoot() - 1000 * left / capture.format.samplesPerSecond;
}

// Reads until the driver has no more, at most kReadsATurn times; returns how often something came. What the driver
// itself lost counts as one buffer.
int AlsaWaveIn::ReadAvailable(Capture& capture, std::string& frames) {
  int reads = 0;
  while (!capture.stopping && reads < kReadsATurn) {
    const snd_pcm_sframes_t read = snd_pcm_readi(capture.pcm.get(), frames.data(), kFramesARead);
    if (read == -EAGAIN || read == 0) break;
    if (read > 0) {
      ++reads;
      if (!capture.paused) {
        capture.blocks.Put(frames.data(), static_cast<std::size_t>(read) * capture.frameBytes, HeardAt(capture));
      }
      if (read < static_cast<snd_pcm_sframes_t>(kFramesARead)) break;  // that was all
      continue;
    }
    int error = static_cast<int>(read);
    if (error == -EPIPE || error == -ESTRPIPE) {
      error = snd_pcm_recover(capture.pcm.get(), error, 1);
      if (error == 0) error = snd_pcm_start(capture.pcm.get());
      if (error == 0) capture.blocks.NoteLost(1);
    }
    if (error >= 0) break;
    const std::lock_guard lock(capture.mutex);
    capture.failure = snd_strerror(error);
    break;
  }
  return reads;
}

// One event is enough for all buffers that are ready when it comes.
void AlsaWaveIn::PostDelivery(const std::shared_ptr<Capture>& capture) {
  const std::lock_guard lock(capture->mutex);
  if (capture->loopGone || capture->posted.exchange(true)) return;
  capture->loop.Post([capture] {
    capture->posted = false;
    if (capture->device != nullptr) capture->device->Deliver(capture);
  });
}

// On the event loop. A handler may stop the device, and one that yields finds the next buffers delivered inside.
void AlsaWaveIn::Deliver(const std::shared_ptr<Capture>& capture) {
  if (const std::int64_t lost = capture->blocks.TakeLost(); lost > 0 && onOverRun) onOverRun(lost);
  for (std::size_t left = capture->blocks.Ready(); left > 0 && capture->device != nullptr; --left) {
    std::optional<BlockQueue::Block> block = capture->blocks.Take();
    if (!block) break;
    const auto handler = onBuffer;  // the device may be gone when it returns
    if (!capture->paused && handler) handler(&*block);
    capture->blocks.Return(std::move(*block));
  }
  if (capture->device == nullptr) return;
  if (capture->blocks.Ready() > 0) return PostDelivery(capture);
  std::string failure;
  {
    const std::lock_guard lock(capture->mutex);
    if (capture->ended) failure = capture->failure;
  }
  if (failure.empty()) return;
  EndCapture();
  if (onLost) onLost(failure);
}

}  // namespace tarvolt
