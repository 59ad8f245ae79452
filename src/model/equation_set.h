// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "config/settings.h"

namespace tarvolt {

/// The texts of the channels' equations, and which of them apply.
struct EquationSet {
  std::array<std::string, kChannels> EquString;
  std::array<std::int16_t, kChannels> ApplyToCH{};  ///< 1 when ticked

  /// True when the channel, counted from 0, is ticked and has an equation.
  bool Applies(int channel) const;
  bool operator==(const EquationSet&) const = default;
};

/// The equations in force.
EquationSet EquationsOf(const Settings& settings);
void PutEquations(const EquationSet& set, Settings& settings);

}  // namespace tarvolt
