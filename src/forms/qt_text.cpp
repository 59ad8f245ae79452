#include "forms/qt_text.h"

#include "text/ansi.h"

namespace tarvolt {

QString ToQString(std::string_view text) {
  return QString::fromStdString(Utf8FromAnsi(text));
}

std::string FromQString(const QString& text) {
  return AnsiFromUtf8(text.toStdString());
}

}  // namespace tarvolt
