// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/run/value_display.h"

#include "text/number.h"

namespace tarvolt {

void ValueDisplay::SampleFinished(const FinishedSample& sample) {
  const int shown = window_.run.ShownChannel;
  if (shown < 1 || shown > static_cast<int>(sample.raw.size())) return;
  window_.view.ValueLabel =
      "  CH" + NumberText(std::int64_t{shown}) + " " + NumberText(sample.raw[static_cast<std::size_t>(shown - 1)]);
}

}  // namespace tarvolt
