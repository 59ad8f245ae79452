// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/chart/chart_notations.h"

namespace tarvolt {

// A file has the whole log, also where the window has let its beginning go.
void AddLabelNow(ChartWindow& window, int channel, const std::string& text) {
  const std::int32_t newest = window.LastSampleIndex();
  if (newest < 0) return;
  window.notations.Add(
      {window.chart.GetTime(newest), window.run.StoreStart + newest, text, static_cast<std::int16_t>(channel)});
}

}  // namespace tarvolt
