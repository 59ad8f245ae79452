// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/equation_set.h"

#include "text/ansi.h"

namespace tarvolt {

bool EquationSet::Applies(int channel) const {
  if (channel < 0 || channel >= kChannels) return false;
  const auto row = static_cast<std::size_t>(channel);
  return ApplyToCH[row] != 0 && !Trim(EquString[row]).empty();
}

EquationSet EquationsOf(const Settings& settings) {
  return {settings.channels.Equ, settings.channels.ApplyToCH};
}

void PutEquations(const EquationSet& set, Settings& settings) {
  settings.channels.Equ = set.EquString;
  settings.channels.ApplyToCH = set.ApplyToCH;
}

}  // namespace tarvolt
