#include "core/observer_entries.h"

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

void EnterChartStarted(Recorder& recorder) {
  const Settings& settings = recorder.session.settings;
  if (settings.LLocalStart) recorder.window.olog.AddEntry("Local Chart Started:  " + DateNow(recorder), true);
  if (settings.LocalIdentity) SendIdentityToLog(recorder.session, recorder.window, IdentityMode::Local);
}

void EnterChartStopped(Recorder& recorder) {
  if (!recorder.session.settings.LLocalStart) return;
  recorder.window.olog.AddEntry("Local Chart Stopped:  " + DateNow(recorder), true);
}

void EnterImageSaved(const Session& session, ChartWindow& window, const std::filesystem::path& file) {
  if (session.settings.LImages) window.olog.AddEntry("Image File Saved: " + file.string(), true);
}

void SendIdentityToLog(const Session& session, ChartWindow& window, IdentityMode mode) {
  const Settings& settings = session.settings;
  const DataFileHeader& header = window.header;
  const bool displayWest = settings.DisplayWest;
  const StationIdentity station = mode == IdentityMode::Local
                                      ? StationIdentity{settings.LocalName,
                                                        settings.Author,
                                                        LatitudeText(settings.UserLat),
                                                        LongitudeForDisplay(settings.UserLng, displayWest),
                                                        settings.QTH,
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
