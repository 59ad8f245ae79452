// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace tarvolt::uds {

/// Channels that a data set may have.
inline constexpr int kMostChannels = 8;

/// Where the values of the data sets come from.
class Source {
 public:
  virtual ~Source() = default;

  /// Values in every set, 1 to 8.
  virtual int Channels() const = 0;

  /// The values of the set `number`, counted from 0 at the start of a connection; nothing behind the last set.
  virtual std::optional<std::vector<double>> Set(std::int64_t number) const = 0;

  /// True when no set may ever be left out, however late it is; false when the world goes on without a slow reader.
  virtual bool KeepsEverySet() const = 0;
};

}  // namespace tarvolt::uds
