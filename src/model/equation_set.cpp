#include "model/equation_set.h"

#include "text/ansi.h"

namespace tarvolt {

bool EquationSet::Applies(int channel) const {
  if (channel < 0 || channel >= kChannels) return false;
  const auto row = static_cast<std::size_t>(channel);
  return ApplyToCH[row] != 0 && !Trim(EquString[row]).empty();
}

EquationSet EquationsOf(const Settings& settings) {
  return {settings.Equ, settings.ApplyToCH};
}

void PutEquations(const EquationSet& set, Settings& settings) {
  settings.Equ = set.EquString;
  settings.ApplyToCH = set.ApplyToCH;
}

}  // namespace tarvolt
