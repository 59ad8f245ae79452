// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/station/station_names.h"

#include "files/naming.h"

namespace tarvolt {

bool ShowLocalName(const Session& session, ChartWindow& window) {
  const std::string& name = session.settings.station.LocalName;
  const bool known = !name.empty() && name != "unknown";
  window.view.Title = known ? name : "unknown user";
  return known;
}

// A data folder that is not there yet is left for the start of a chart to report.
void NameSessionLog(Session& session, ChartWindow& window) {
  if (session.log.HasFileName() || !session.host.files.FolderExists(session.DataFolder())) return;
  session.log.SetFileName(NameDataFile(session, window, NameKind::Log, true));
}

}  // namespace tarvolt
