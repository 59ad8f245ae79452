// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

#include "host/driver_calls.h"
#include "host/qt_event_loop.h"
#include "platform/wave_in_device.h"

namespace tarvolt {

/// A capture input of ALSA. A thread of its own reads the driver and makes whole buffers; only those reach the event
/// loop. An input that hangs in the driver is left to its thread: opening it waits for some seconds at most, stopping
/// it for half a second.
class AlsaWaveIn final : public WaveInDevice {
 public:
  /// `name` as AlsaInputs lists it. The loop and the drivers outlive it.
  AlsaWaveIn(QtEventLoop& loop, DriverCalls& drivers, std::string name);
  ~AlsaWaveIn() override;

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
  struct Capture;

  static void ReadDriver(std::shared_ptr<Capture> capture);
  static bool OpenDriver(Capture& capture);
  static void ReadUntilStopped(const std::shared_ptr<Capture>& capture);
  static double HeardAt(Capture& capture);
  static int ReadAvailable(Capture& capture, std::string& frames);
  static void PostDelivery(const std::shared_ptr<Capture>& capture);
  void Deliver(const std::shared_ptr<Capture>& capture);
  void EndCapture();

  QtEventLoop& loop_;
  DriverCalls& drivers_;
  std::string name_;
  WaveFormat format_;
  WaveBuffers buffers_;
  bool open_ = false;
  std::shared_ptr<Capture> capture_;
};

}  // namespace tarvolt
