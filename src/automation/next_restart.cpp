// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/next_restart.h"

#include "timebase/time_text.h"

namespace tarvolt {

TimeStamp GetNextRestart(const std::string& restartTime, TimeStamp base) {
  const TimeStamp today = WholeDay(base) + ParseHMS(restartTime).value_or(0);
  return today > base ? today : today + 1;
}

}  // namespace tarvolt
