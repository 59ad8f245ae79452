// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/chart/menu_items.h"

#include <utility>

namespace tarvolt {

QAction* MenuItems::Make(const char* name, const QString& caption, Command command, Test enabled, Test checked) {
  auto* action = new QAction(caption, window_);
  action->setObjectName(QString::fromLatin1(name));
  action->setCheckable(static_cast<bool>(checked));
  QObject::connect(action, &QAction::triggered, window_, [this, command = std::move(command)] { RunLater(command); });
  Watch(action, std::move(enabled), std::move(checked));
  return action;
}

QAction* MenuItems::Add(QMenu& menu, const char* name, const QString& caption, const QKeySequence& key, Command command,
                        Test enabled, Test checked) {
  QAction* action = Make(name, caption, std::move(command), std::move(enabled), std::move(checked));
  action->setShortcut(key);
  menu.addAction(action);
  return action;
}

void MenuItems::RunLater(Command command) {
  QMetaObject::invokeMethod(
      window_,
      [this, command = std::move(command)] {
        command();
        refresh_();
      },
      Qt::QueuedConnection);
}

void MenuItems::Watch(QAction* action, Test enabled, Test checked) {
  items_.push_back({action, std::move(enabled), std::move(checked)});
}

void MenuItems::Refresh() {
  for (const Item& item : items_) {
    if (item.enabled) item.action->setEnabled(item.enabled());
    if (item.checked) item.action->setChecked(item.checked());
  }
}

}  // namespace tarvolt
