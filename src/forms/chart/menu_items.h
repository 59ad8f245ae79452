// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMenu>
#include <functional>
#include <vector>

namespace tarvolt {

/// The menu items of one window, enabled and checked as its state says.
class MenuItems {
 public:
  using Command = std::function<void()>;
  using Test = std::function<bool()>;

  /// `refresh` is called after each command. The window outlives the items' commands.
  MenuItems(QWidget* window, std::function<void()> refresh) : window_(window), refresh_(std::move(refresh)) {}

  /// Adds an item. Its command runs outside of the click that asked for it, so that one which waits inside does not
  /// hold the menu down. Without a test an item is always enabled; with `checked` it has a tick.
  QAction* Add(QMenu& menu, const char* name, const QString& caption, const QKeySequence& key, Command command,
               Test enabled = {}, Test checked = {});

  /// The same for an action that stands in no menu, such as a button's.
  QAction* Make(const char* name, const QString& caption, Command command, Test enabled = {}, Test checked = {});

  /// Runs a command as an item's: outside of what asked for it.
  void RunLater(Command command);

  /// Keeps an item that was made elsewhere, such as a submenu's.
  void Watch(QAction* action, Test enabled, Test checked = {});

  /// Copies the state to the items.
  void Refresh();

 private:
  struct Item {
    QAction* action;
    Test enabled;
    Test checked;
  };

  QWidget* window_;
  std::function<void()> refresh_;
  std::vector<Item> items_;
};

}  // namespace tarvolt
