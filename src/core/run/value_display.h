// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/chart_window.h"
#include "model/run_listener.h"

namespace tarvolt {

/// Shows the newest value of the channel that a person chose for the value display.
class ValueDisplay final : public RunListener {
 public:
  /// `window` outlives it.
  explicit ValueDisplay(ChartWindow& window) : window_(window) {}

  void SampleFinished(const FinishedSample& sample) override;

 private:
  ChartWindow& window_;
};

}  // namespace tarvolt
