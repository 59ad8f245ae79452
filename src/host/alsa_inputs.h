// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "host/driver_calls.h"
#include "platform/wave_in_device.h"

namespace tarvolt {

/// The capture inputs that ALSA knows, by names that survive re-plugging: the card's id, the number of its device and a
/// description, "PCH,0: HDA Intel PCH, ALC269VC Analog"; and the default of a sound server, where one runs. The
/// description is for people: only the part before the colon is looked for. ALSA's own words on standard error are kept
/// off it. A server that does not answer counts as there.
class AlsaInputs {
 public:
  /// `drivers` outlives it.
  explicit AlsaInputs(DriverCalls& drivers);

  /// Neither a card nor a server: nothing of ALSA is even loaded.
  std::vector<std::string> List() const;

  bool IsThere(const std::string& name) const;
  std::vector<WaveFormat> Formats(const std::string& name, std::span<const WaveFormat> asked) const;

 private:
  bool ServerAnswers() const;

  DriverCalls& drivers_;
};

/// ALSA's name for an input of that name; nothing for a name that is none of ours.
std::optional<std::string> AlsaPcmName(const std::string& name);

/// ALSA's name for the mixer of that input; nothing where there is no card, or no server, to have one.
std::optional<std::string> AlsaControlName(const std::string& name);

}  // namespace tarvolt
