#include "forms/chart/menu_items.h"

#include <utility>

namespace tarvolt {

QAction* MenuItems::Add(QMenu& menu, const char* name, const QString& caption, const QKeySequence& key, Command command,
                        Test enabled, Test checked) {
  QAction* action = menu.addAction(caption);
  action->setObjectName(QString::fromLatin1(name));
  action->setShortcut(key);
  action->setCheckable(static_cast<bool>(checked));
  QObject::connect(action, &QAction::triggered, window_, [this, command = std::move(command)] {
    QMetaObject::invokeMethod(
        window_,
        [this, command] {
          command();
          refresh_();
        },
        Qt::QueuedConnection);
  });
  Watch(action, std::move(enabled), std::move(checked));
  return action;
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
