// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "apps/tv-uds/signals/signal.h"

namespace tarvolt::uds {

/// A sine of amplitude 1000 with a period of a minute on the first channel, half a minute on the second, and so on.
class Sine : public Signal {
 public:
  double Value(int channel, const Moment& moment) const override;
};

/// The number of the sample plus 1000000 for each channel: a lost or repeated sample shows in the values.
class Ramp : public Signal {
 public:
  double Value(int channel, const Moment& moment) const override;
};

/// A calibration staircase: eleven levels from 0 up, five seconds each. A step is 100 on the first channel, 200 on the
/// second, and so on.
class Staircase : public Signal {
 public:
  double Value(int channel, const Moment& moment) const override;
};

}  // namespace tarvolt::uds
