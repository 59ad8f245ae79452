// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "host/alsa_inputs.h"
#include "host/driver_calls.h"
#include "host/qt_event_loop.h"
#include "platform/clock.h"
#include "platform/file_system.h"
#include "platform/wave_in_device.h"

namespace tarvolt {

/// The sound inputs of the machine: ALSA's, and wave files by their names.
class SoundInputs final : public WaveInDevices {
 public:
  /// All references outlive it and what it makes.
  SoundInputs(QtEventLoop& loop, Clock& clock, FileSystem& files, DriverCalls& drivers);

  std::vector<std::string> List() override;
  bool IsThere(const std::string& name) override;
  std::optional<WaveFormat> FixedFormat(const std::string& name) override;
  std::vector<WaveFormat> Formats(const std::string& name, std::span<const WaveFormat> asked) override;
  std::unique_ptr<WaveInDevice> Make(const std::string& name) override;

 private:
  QtEventLoop& loop_;
  Clock& clock_;
  FileSystem& files_;
  DriverCalls& drivers_;
  AlsaInputs alsa_;
};

}  // namespace tarvolt
