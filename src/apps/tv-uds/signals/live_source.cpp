// SPDX-License-Identifier: GPL-3.0-or-later
#include "apps/tv-uds/signals/live_source.h"

#include <utility>

namespace tarvolt::uds {

LiveSource::LiveSource(std::unique_ptr<Signal> signal, int channels, double rate)
    : signal_(std::move(signal)), channels_(channels), rate_(rate) {}

std::optional<std::vector<double>> LiveSource::Set(std::int64_t number) const {
  const Signal::Moment moment{number, static_cast<double>(number) / rate_};
  std::vector<double> values;
  for (int channel = 0; channel < channels_; ++channel) values.push_back(signal_->Value(channel, moment));
  return values;
}

}  // namespace tarvolt::uds
