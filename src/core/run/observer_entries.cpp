// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/run/observer_entries.h"

#include "core/run/recorder.h"
#include "timebase/position.h"

namespace tarvolt {
namespace {

std::string DateNow(Recorder& recorder) {
  return FormatDate(recorder.CalcTime(), "YYYY/MM/DD hh:nn:ss");
}

std::string LatitudeText(double degrees) {
  return degrees <= kUnsetPosition ? "unknown" : FormatLatitude(degrees);
}

}  // namespace

void RunEntries::LogBegan() {
  const ObserverLogSettings& wanted = recorder_.session.settings.observerLog;
  ChartWindow& window = recorder_.window;
  if (wanted.LLocalStart) window.olog.AddEntry("Local Chart Started:  " + DateNow(recorder_), true);
  if (wanted.LocalIdentity) SendIdentityToLog(recorder_.session, window, IdentityMode::Local);
}

void RunEntries::RunEnded() {
  if (!recorder_.session.settings.observerLog.LLocalStart) return;
  recorder_.window.olog.AddEntry("Local Chart Stopped:  " + DateNow(recorder_), true);
}

void EnterImageSaved(const Session& session, ChartWindow& window, const std::filesystem::path& file) {
  if (session.settings.observerLog.LImages) window.olog.AddEntry("Image File Saved: " + file.string(), true);
}

void SendIdentityToLog(const Session& session, ChartWindow& window, IdentityMode mode) {
  const Settings& settings = session.settings;
  const DataFileHeader& header = window.header;
  const bool displayWest = settings.place.DisplayWest;
  const StationIdentity station = mode == IdentityMode::Local
                                      ? StationIdentity{settings.station.LocalName,
                                                        settings.station.Author,
                                                        LatitudeText(settings.place.UserLat),
                                                        LongitudeForDisplay(settings.place.UserLng, displayWest),
                                                        settings.station.QTH,
                                                        session.notes}
                                      : StationIdentity{header.localName,
                                                        header.author,
                                                        LatitudeText(header.latitude),
                                                        LongitudeForDisplay(header.longitude, displayWest),
                                                        header.location,
                                                        window.notes};
  window.olog.AddEntry(IdentityBlock(mode, station), true);
}

}  // namespace tarvolt
