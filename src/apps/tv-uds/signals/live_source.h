// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "apps/tv-uds/signals/signal.h"
#include "apps/tv-uds/signals/source.h"

namespace tarvolt::uds {

/// Sets of a simulated signal, without an end.
class LiveSource : public Source {
 public:
  /// `channels` 1 to 8; `rate` sets a second, which says how much time lies between two sets.
  LiveSource(std::unique_ptr<Signal> signal, int channels, double rate);

  int Channels() const override { return channels_; }
  std::optional<std::vector<double>> Set(std::int64_t number) const override;
  bool KeepsEverySet() const override { return false; }

 private:
  std::unique_ptr<Signal> signal_;
  int channels_;
  double rate_;
};

}  // namespace tarvolt::uds
