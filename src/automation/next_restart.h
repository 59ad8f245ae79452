#pragma once

#include "config/settings.h"
#include "model/run_state.h"
#include "platform/clock.h"

namespace tarvolt {

/// The stamp of the next planned restart, RestartTime on the day of the log's clock or the day after, always later than
/// now. In a sidereal run the day is that of its sidereal start. A RestartTime that is no time counts as midnight.
TimeStamp GetNextRestart(Clock& clock, const Settings& settings, const RunState& run);

}  // namespace tarvolt
