// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/load/load_menus.h"

#include "forms/qt_text.h"

namespace tarvolt {
namespace {

using LoadRecent = void (LoadCommands::*)(int place);

// The list as it stands when the menu opens. A load waits until the menu is gone.
void FillRecent(QMenu& menu, const std::array<std::string, 5>& names, const QString& objectName, LoadCommands& loads,
                LoadRecent load) {
  menu.clear();
  for (int place = 0; place < static_cast<int>(names.size()); ++place) {
    if (names[place].empty()) continue;
    QAction* action = menu.addAction(ToQString(names[place]).replace(QLatin1Char('&'), QStringLiteral("&&")));
    action->setObjectName(objectName.arg(place + 1));
    QObject::connect(action, &QAction::triggered, &menu, [&menu, &loads, load, place] {
      QMetaObject::invokeMethod(
          &menu, [&loads, load, place] { (loads.*load)(place); }, Qt::QueuedConnection);
    });
  }
  if (menu.isEmpty()) menu.addAction(QStringLiteral("(none)"))->setEnabled(false);
}

void AddRecentMenu(QMenu& parent, MenuItems& items, const QString& caption, const std::array<std::string, 5>& names,
                   const QString& objectName, LoadCommands& loads, LoadRecent load) {
  QMenu* menu = parent.addMenu(caption);
  QObject::connect(menu, &QMenu::aboutToShow, menu,
                   [menu, &names, objectName, &loads, load] { FillRecent(*menu, names, objectName, loads, load); });
  items.Watch(menu->menuAction(), [&loads] { return loads.CanLoad(); });
}

}  // namespace

void AddLoadMenus(QMenu& menu, MenuItems& items, const Session& session, LoadCommands& loads) {
  const auto canLoad = [&loads] { return loads.CanLoad(); };
  items.Add(
      menu, "MnuLoadDataFile", QStringLiteral("&Load Data File..."), QKeySequence::Open,
      [&loads] { loads.MnuLoadDataFile(); }, canLoad);
  QMenu& ways = *menu.addMenu(QStringLiteral("Load &With"));
  items.Watch(ways.menuAction(), canLoad);
  items.Add(
      ways, "mnuLoadWithOffsets", QStringLiteral("&Offsets of this Station..."), {},
      [&loads] { loads.mnuLoadWithOffsets(); }, canLoad);
  items.Add(
      ways, "mnuLoadWithFileOffsets", QStringLiteral("Offsets in the &File..."), {},
      [&loads] { loads.mnuLoadWithFileOffsets(); }, canLoad);
  items.Add(
      ways, "mnuLoadSelectedChannels", QStringLiteral("&Selected Channels..."), {},
      [&loads] { loads.mnuLoadSelectedChannels(); }, canLoad);
  AddRecentMenu(menu, items, QStringLiteral("Recently Loa&ded"), session.recent.loaded,
                QStringLiteral("mnuRecentLoaded%1"), loads, &LoadCommands::mnuRecentLoaded);
  AddRecentMenu(menu, items, QStringLiteral("Recently Sav&ed"), session.recent.saved,
                QStringLiteral("mnuRecentSaved%1"), loads, &LoadCommands::mnuRecentSaved);
}

}  // namespace tarvolt
