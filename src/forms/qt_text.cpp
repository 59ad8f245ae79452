// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/qt_text.h"

#include "text/ansi.h"
#include "text/path_text.h"

namespace tarvolt {

QString ToQString(std::string_view text) {
  return QString::fromStdString(Utf8FromAnsi(text));
}

std::string FromQString(const QString& text) {
  return AnsiFromUtf8(text.toStdString());
}

QString PathToQString(std::string_view path) {
  return QString::fromStdString(Utf8FromPathText(path));
}

std::string PathFromQString(const QString& path) {
  return PathTextFromUtf8(path.toStdString());
}

}  // namespace tarvolt
