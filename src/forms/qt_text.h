// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace tarvolt {

/// The edge between the recorder's single-byte text (Windows-1252) and Qt's. What has no byte becomes "?".
QString ToQString(std::string_view text);
std::string FromQString(const QString& text);

/// The same for the name of a file or folder, of which no character is lost.
QString PathToQString(std::string_view path);
std::string PathFromQString(const QString& path);

}  // namespace tarvolt
