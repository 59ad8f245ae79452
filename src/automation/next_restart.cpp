#include "automation/next_restart.h"

#include "timebase/time_text.h"

namespace tarvolt {

TimeStamp GetNextRestart(Clock& clock, const Settings& settings, const RunState& run) {
  const TimeStamp base = run.ChartIsLMST ? run.time.startLMST : CalcTime(clock, run.time);
  const double timeOfDay = ParseHMS(settings.RestartTime).value_or(0);
  const TimeStamp today = WholeDay(base) + timeOfDay;
  return today > base ? today : today + 1;
}

}  // namespace tarvolt
