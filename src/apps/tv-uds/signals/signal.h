// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tarvolt::uds {

/// A simulated quantity. The value depends on nothing but the arguments and the seed, so that any stretch can be made
/// again, sets may be left out, and the same events are seen at every rate.
class Signal {
 public:
  virtual ~Signal() = default;

  /// Where a sample stands: its number since the start of the connection and the seconds that it stands for.
  struct Moment {
    std::int64_t number = 0;
    double seconds = 0;
  };

  /// The value of channel 0 to 7.
  virtual double Value(int channel, const Moment& moment) const = 0;
};

/// The names that MakeSignal knows.
const std::vector<std::string>& SignalKinds();

/// The signal of that name; null for a name that is not one.
std::unique_ptr<Signal> MakeSignal(std::string_view kind, std::uint64_t seed);

}  // namespace tarvolt::uds
