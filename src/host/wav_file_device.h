// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/wav_file_reader.h"
#include "platform/clock.h"
#include "platform/event_loop.h"
#include "platform/wave_in_device.h"

namespace tarvolt {

/// How a wave file is played as a sound input.
enum class WavPlay {
  Once,  ///< "file:PATH": in real time, and then it ends
  Loop,  ///< "loop:PATH": in real time, again and again without a gap
  Fast   ///< "fastfile:PATH": as fast as the buffers are taken, and then it ends
};

/// What such a name asks for.
struct WavFileName {
  WavPlay play = WavPlay::Once;
  std::string path;
};

/// Reads the name of an input; nothing for one that names no file.
std::optional<WavFileName> ReadWavFileName(const std::string& name);

/// A wave file as a sound input. The last frames of a file that do not fill a buffer are left out.
class WavFileDevice final : public WaveInDevice {
 public:
  /// All references outlive it.
  WavFileDevice(EventLoop& loop, Clock& clock, FileSystem& files, WavFileName name);
  ~WavFileDevice() override;

  bool Open(const WaveFormat& format, const WaveBuffers& buffers, std::string& why) override;
  void Start() override;
  void Pause() override;
  void Restart() override;
  void Stop() override;
  void Close() override;
  std::size_t ParseWaveHeader(WaveHandle handle) const override;
  std::size_t CopyWaveHeader(WaveHandle handle, void* destination, std::size_t count) const override;
  double Waited(WaveHandle handle) const override;

 private:
  struct Playing;

  void Turn(std::shared_ptr<Playing> playing);
  void DeliverDue(const std::shared_ptr<Playing>& playing);
  void PlanNext(const std::shared_ptr<Playing>& playing);
  void PostTurn(const std::shared_ptr<Playing>& playing);
  void GoOnFromNow();
  bool Fill();
  void Halt();
  double DueAt(std::int64_t buffers) const;

  EventLoop& loop_;
  Clock& clock_;
  FileSystem& files_;
  WavFileName name_;
  std::unique_ptr<WavFileReader> reader_;
  WaveFormat format_;
  std::vector<char> buffer_;
  std::unique_ptr<Timer> timer_;
  std::shared_ptr<Playing> playing_;  ///< null while nothing is delivered
  double begun_ = 0;                  ///< monotonic milliseconds of the first buffer's first frame
  double shortestWait_ = 0;           ///< milliseconds; short buffers come several at a time
  std::int64_t delivered_ = 0;        ///< buffers since then
};

}  // namespace tarvolt
