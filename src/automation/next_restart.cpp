#include "automation/next_restart.h"

#include <algorithm>

#include "timebase/time_text.h"

namespace tarvolt {

TimeStamp GetNextRestart(Clock& clock, const Settings& settings, const RunState& run) {
  // The stamps of a source may be ahead of the clock; the restart that has just fired must not be due again.
  TimeStamp base = run.ChartIsLMST ? run.time.startLMST : CalcTime(clock, run.time);
  if (!run.ChartIsLMST && !run.TimeRefZero) base = std::max(base, run.CurrentStamp);
  const double timeOfDay = ParseHMS(settings.RestartTime).value_or(0);
  const TimeStamp today = WholeDay(base) + timeOfDay;
  return today > base ? today : today + 1;
}

}  // namespace tarvolt
