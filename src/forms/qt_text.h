#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace tarvolt {

/// The edge between the recorder's single-byte text (Windows-1252) and Qt's. What has no byte becomes "?".
QString ToQString(std::string_view text);
std::string FromQString(const QString& text);

}  // namespace tarvolt
