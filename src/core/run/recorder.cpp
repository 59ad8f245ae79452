#include "core/run/recorder.h"

#include <utility>

namespace tarvolt {

Recorder::Recorder(Session& sharedSession, RunControl& runControl, Person& itsPerson, UdsClient::SetEnded onSet)
    : session(sharedSession),
      control(runControl),
      person(itsPerson),
      backup(sharedSession, window),
      unsaved(sharedSession, window),
      sound(sharedSession, window),
      soundSource(sharedSession, window, sound, [&itsPerson] { itsPerson.ChooseSoundFormat(); }),
      uds(sharedSession, window, runControl, sound, std::move(onSet)),
      sources(window.run),
      commands(sharedSession, window),
      offsets(sharedSession, window),
      average(sharedSession, window),
      images(sharedSession, window, itsPerson),
      triggers(sharedSession, window),
      equations(static_cast<std::uint64_t>(sharedSession.host.clock.MonotonicMilliseconds()),
                [&sharedSession](const std::string& words) { sharedSession.Add2SLog(words); }),
      valueDisplay(window),
      limits(window, runControl),
      entries(*this),
      events(sharedSession.log) {
  RegisterSources();
  RegisterListeners();
}

// Sound is readied while the old chart is still on display; a data source may send as soon as it is connected.
void Recorder::RegisterSources() {
  sources.Add(soundSource);
  sources.Add(uds);
  sources.Add(equationRows);
}

// All who listen to a run, in the order in which a sample reaches them. What stands behind the limits may see the
// sample that ended a log when the next one has begun.
void Recorder::RegisterListeners() {
  events.Add(equations, "equations");
  events.Add(triggers, "triggers");
  events.Add(valueDisplay, "value display");
  events.Add(backup, "backup");
  events.Add(average, "channel average");
  events.Add(limits, "limits of the log");
  events.Add(images, "image saver");
  events.Add(entries, "entries of the observer log");
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
