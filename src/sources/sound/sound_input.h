// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "model/chart_window.h"
#include "model/session.h"
#include "platform/event_loop.h"
#include "platform/wave_in_device.h"
#include "sources/sound/delivery_balance.h"
#include "sources/sound/detection.h"
#include "sources/source_table.h"

namespace tarvolt {

/// The sound input of a window: opens the device, reduces each filled buffer to its readings, and watches over the
/// delivery. A device that fails, stalls or turns to zeros during a run is reported, and opened again by its name as
/// soon as it is there.
class SoundInput {
 public:
  /// Closed. `session` and `window` outlive it.
  SoundInput(Session& session, ChartWindow& window);
  ~SoundInput();
  SoundInput(const SoundInput&) = delete;
  SoundInput& operator=(const SoundInput&) = delete;

  /// Called behind each buffer that was not dropped, with the milliseconds for which it has waited since it was heard;
  /// may stop the run. And once when the input has come to its end.
  std::function<void(double waited)> onBuffer;
  std::function<void()> onEnded;

  /// What a run wants of the input; taken over by Open.
  struct Request {
    std::string name;  ///< of the device
    WaveFormat format;
    WaveBuffers buffers;
    SourcesInUse sources;  ///< the sides that the mono pass reads
  };

  /// Opens the device, closed before. False with the reason in `why`.
  bool Open(const Request& request, std::string& why);

  void Start();
  void Pause();
  void Restart();
  void Stop();

  /// Lets the device go, and logs the over-runs of the run. Harmless when nothing is open. May be called inside
  /// onBuffer.
  void Close();

  /// The format it was opened with last.
  const WaveFormat& Format() const { return request_.format; }

  /// True for a side (0 left, 1 right) that the passes over the buffers look at.
  bool LooksAt(int side) const {
    return request_.format.stereo || (side == 0 ? request_.sources.SoundLeftInUse : request_.sources.SoundRightInUse);
  }

  /// True from the loss of the device until it delivers again.
  bool IsLost() const { return lost_; }

  bool IsOpen() const { return device_ != nullptr; }

  /// The device as the level meter of a data source: stopped, set to buffers of Pbuffer bytes and started, opened
  /// before when it is not.
  void StartLevelMeter();

 private:
  using Device = std::shared_ptr<WaveInDevice>;

  bool OpenDevice(std::string& why);
  void LetGo();
  void BeginStretch();
  void TakeBuffer(WaveHandle handle);
  void WorkOn(WaveHandle handle, double waited);
  bool Reduce(std::size_t count);
  std::size_t FetchSamples(WaveHandle handle);
  void NoteOverRuns(std::int64_t buffers, const char* words);
  DetectionSetup Setup() const;

  // The watchdog (sound_watchdog.cpp).
  void BeginWatching();
  void LookAgainFor(std::int32_t bufferBytes);
  void Watch();
  void NoteSamples(std::size_t count);
  void NoteDelivery(double waited);
  void NoteWhatIsMissing(double waited);
  void Lose(const std::string& why);
  void GiveUpLoss();
  void TryAgain();
  double BufferLength() const;
  double Patience() const;
  bool InRun() const;
  void Announce(const std::string& text);
  void ShowTrouble();

  Session& session_;
  ChartWindow& window_;
  SoundState& sound_;
  Device device_;
  Request request_;
  std::vector<std::int16_t> samples_;  ///< the buffer in hand
  std::unique_ptr<Timer> watchTimer_;
  std::string trouble_;   ///< what the status line was given to tell; empty when all is well
  bool running_ = false;  ///< started and not paused or stopped
  bool lost_ = false;
  bool rewinds_ = false;   ///< opening it again would begin it anew, as with a file
  bool opening_ = false;   ///< the device is being opened again
  bool delivers_ = false;  ///< a buffer has come since the start
  bool silent_ = false;    ///< exact zeros have been reported
  double lastBuffer_ = 0;  ///< monotonic milliseconds
  double lastSound_ = 0;   ///< of the last sample that was not zero
  double lostSince_ = 0;
  double nextTry_ = 0;
  double lastWatch_ = 0;
  DeliveryBalance balance_;
  double overRunSecond_ = 0;  ///< when the second began in which over-runs are logged
  int overRunLines_ = 0;      ///< of that second
};

}  // namespace tarvolt
