// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/window_place.h"

#include <QEvent>
#include <QGuiApplication>
#include <QWidget>
#include <utility>

#include "forms/qt_text.h"

namespace tarvolt {

WindowPlace::WindowPlace(QWidget& window, SettingsStore& store, std::string key)
    : QObject(&window), window_(window), store_(store), key_(std::move(key)) {
  Restore();
  window.installEventFilter(this);
}

// Four numbers in pixels: left, top, width and height.
void WindowPlace::Restore() {
  const QStringList numbers = ToQString(store_.GetSetting(Section::Settings, key_)).split(QLatin1Char(' '));
  const auto number = [&](int at) { return numbers.value(at).toInt(); };
  const QPoint corner(number(0), number(1));
  const QSize size(number(2), number(3));
  if (size.isEmpty() || QGuiApplication::screenAt(corner) == nullptr) return;
  window_.resize(size);
  window_.move(corner);
}

void WindowPlace::Store() {
  if (window_.isMinimized() || window_.isMaximized()) return;
  const QString text =
      QStringLiteral("%1 %2 %3 %4").arg(window_.x()).arg(window_.y()).arg(window_.width()).arg(window_.height());
  store_.SaveSetting(Section::Settings, key_, FromQString(text));
}

bool WindowPlace::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Hide && !event->spontaneous()) {
    Store();
    window_.move(window_.pos());  // and here again when it is shown, which a desktop does not do by itself
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace tarvolt
