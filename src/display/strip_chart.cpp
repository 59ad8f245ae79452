// SPDX-License-Identifier: GPL-3.0-or-later
#include "display/strip_chart.h"

namespace tarvolt {

void StripChart::ScaleYToData() {
  if (Count() == 0) return;
  YAxisMin = DataMin();
  YAxisMax = DataMax();
  if (YAxisMin != YAxisMax) return;
  YAxisMin -= 0.1;
  YAxisMax += 0.1;
}

}  // namespace tarvolt
