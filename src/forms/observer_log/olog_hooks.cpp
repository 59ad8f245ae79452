// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/observer_log/olog_hooks.h"

#include <QDesktopServices>
#include <QFileDialog>
#include <QUrl>
#include <utility>

#include "forms/qt_text.h"

namespace tarvolt {
namespace {

bool OpenWord(WordKind kind, const std::string& word) {
  const QString text = ToQString(word);
  return QDesktopServices::openUrl(kind == WordKind::WebAddress ? QUrl(text) : QUrl::fromLocalFile(text));
}

std::optional<std::string> ChooseFolder(const std::string& folder) {
  const QString chosen = QFileDialog::getExistingDirectory(nullptr, QStringLiteral("Default Observer Log Directory"),
                                                           PathToQString(folder));
  if (chosen.isEmpty()) return std::nullopt;
  return PathFromQString(chosen);
}

}  // namespace

OLogHooks DesktopOLogHooks(std::function<void()> grabPicture) {
  return {std::move(grabPicture), OpenWord, ChooseFolder};
}

}  // namespace tarvolt
