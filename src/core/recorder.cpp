#include "core/recorder.h"

#include <utility>

namespace tarvolt {

Recorder::Recorder(Session& sharedSession, RunControl& runControl, UdsClient::SetEnded onSet)
    : session(sharedSession),
      control(runControl),
      backup(sharedSession, window),
      pending(sharedSession),
      sound(sharedSession, window),
      uds(sharedSession, window, runControl, sound, std::move(onSet)),
      commands(sharedSession, window),
      offsets(sharedSession, window),
      average(sharedSession, window),
      images(sharedSession, window),
      triggers(sharedSession, window),
      equations(static_cast<std::uint64_t>(sharedSession.host.clock.MonotonicMilliseconds())) {}

// The zone is looked at again after the clock: between the two readings it may have changed, and a stamp an hour ahead
// would cost all samples of the hour behind it.
TimeStamp Recorder::CalcTime() {
  Clock& clock = session.host.clock;
  if (!session.settings.DetectTZ) return tarvolt::CalcTime(clock, window.run.time);
  constexpr int kTries = 10;
  TimeStamp now = 0;
  for (int tries = 0; tries < kTries; ++tries) {
    FollowZone(DetectTimeZoneHours(clock));
    now = tarvolt::CalcTime(clock, window.run.time);
    if (DetectTimeZoneHours(clock) == window.run.time.tz) break;
  }
  return now;
}

void Recorder::FollowZone(double zone) {
  TimeBase& time = window.run.time;
  if (zone == time.tz) return;
  time.tz = zone;
  session.settings.TZ = zone;
  if (time.logLMST || window.run.ChartIsUT) time.utOffset = -zone / 24;
  session.log.SetUTOffset(time.utOffset);
  session.Add2SLog("Your Timezone has Changed.");
}

}  // namespace tarvolt
