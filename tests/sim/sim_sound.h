// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/wave_in_device.h"
#include "sim/sim_loop.h"
#include "sim/sim_random.h"

namespace tarvolt {

/// The sound inputs of a simulated machine; none at first. What an input hears is a function of the time, so that a gap
/// in the delivery is a gap in the signal:
///
///     host.sound.Plug("USB,0: Receiver", [](std::int64_t frame) { return std::pair(1000, -500); });
///     host.loop.After(1h, [&] { host.sound.Unplug("USB,0: Receiver"); });
class SimSound final : public WaveInDevices {
 public:
  /// Left and right at a frame, counted at the input's rate since the machine was switched on.
  using Signal = std::function<std::pair<int, int>(std::int64_t frame)>;

  SimSound(SimLoop& loop, std::uint64_t seed);
  ~SimSound() override;

  std::vector<std::string> List() override;
  bool IsThere(const std::string& name) override { return signals_.count(name) > 0; }
  std::optional<WaveFormat> FixedFormat(const std::string& name) override;
  std::vector<WaveFormat> Formats(const std::string& name, std::span<const WaveFormat> asked) override;
  std::unique_ptr<WaveInDevice> Make(const std::string& name) override;

  /// An input is there from now on, or hears something else.
  void Plug(const std::string& name, Signal signal);

  /// It has but this one format, as a file has.
  void Fix(const std::string& name, const WaveFormat& format) { fixed_[name] = format; }

  /// It is pulled out: who has it open is reported.
  void Unplug(const std::string& name);

  /// It keeps its connection and delivers nothing, until the next Heal.
  void Stall(const std::string& name) { stalled_.insert(name); }

  /// Buffers come late by up to so much, several at a time then.
  void Jitter(std::chrono::milliseconds most) { jitter_ = most; }

  /// Buffers of any size come, also empty ones, until the next Heal.
  void WrongSizes() { wrongSizes_ = true; }

  /// Those who try to open an input are refused with this reason, until the next Heal.
  void RefuseOpening(const std::string& why) { refusal_ = why; }
  void Heal();

  /// Inputs opened so far, and open now.
  int Openings() const { return openings_; }
  int OpenNow() const;

  /// Bytes of a buffer that was asked for last.
  std::int32_t LastBufferBytes() const { return lastBufferBytes_; }

 private:
  class Input;

  SimLoop& loop_;
  SimRandom random_;
  std::map<std::string, Signal> signals_;
  std::map<std::string, WaveFormat> fixed_;
  std::set<std::string> stalled_;
  std::shared_ptr<std::set<Input*>> inputs_ = std::make_shared<std::set<Input*>>();  ///< some die after this
  std::chrono::milliseconds jitter_{0};
  bool wrongSizes_ = false;
  std::string refusal_;
  int openings_ = 0;
  std::int32_t lastBufferBytes_ = 0;
};

}  // namespace tarvolt
