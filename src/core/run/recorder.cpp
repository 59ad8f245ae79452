// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/run/recorder.h"

#include <utility>

namespace tarvolt {

Recorder::Recorder(Session& sharedSession, RunControl& runControl, Person& itsPerson, UdsClient::SetEnded onSet)
    : session(sharedSession),
      control(runControl),
      person(itsPerson),
      uds(sharedSession, window, runControl, sound, std::move(onSet)) {
  RegisterSources();
  RegisterListeners();
}

// The zone is looked at again after the clock: between the two readings it may have changed, and a stamp an hour ahead
// would cost all samples of the hour behind it.
TimeStamp Recorder::CalcTime() {
  Clock& clock = session.host.clock;
  const bool follows = window.run.ChartRunning() ? window.run.log.DetectTZ : session.settings.place.DetectTZ;
  if (!follows) return tarvolt::CalcTime(clock, window.run.time);
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
  if (session.settings.place.DetectTZ) session.settings.place.TZ = zone;
  const bool isUT = window.run.ChartRunning() ? window.run.log.LogUsingUT : session.settings.place.LogUsingUT;
  if (time.logLMST || isUT) time.utOffset = -zone / 24;
  session.log.SetUTOffset(isUT ? time.utOffset : 0);
  session.Add2SLog("Your Timezone has Changed.");
}

}  // namespace tarvolt
