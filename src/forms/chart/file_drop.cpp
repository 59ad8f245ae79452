// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/chart/file_drop.h"

#include <QUrl>

#include "core/station/command_line.h"
#include "forms/qt_text.h"

namespace tarvolt {

std::string DroppedDataFile(const QMimeData& data) {
  if (!data.hasUrls() || data.urls().isEmpty()) return {};
  const std::string name = PathFromQString(data.urls().front().toLocalFile());
  return IsDataFileName(name) ? name : std::string();
}

}  // namespace tarvolt
