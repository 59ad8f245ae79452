// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QTimer>
#include <QToolButton>
#include <functional>
#include <stdexcept>

#include "forms/form_main/main_window.h"
#include "station/station.h"

namespace tarvolt {

/// What a form calls by this name.
template <class Object>
Object& Find(const QObject& form, const QString& name) {
  auto* object = form.findChild<Object*>(name);
  if (object == nullptr) throw std::runtime_error("nothing is called " + name.toStdString());
  return *object;
}

/// Presses a button of a form.
inline void Click(const QObject& form, const QString& name) {
  Find<QAbstractButton>(form, name).click();
}

/// Does this with the next modal dialog, which the call that follows opens.
inline void WithNextDialog(std::function<void(QWidget&)> act, int triesLeft = 100) {
  QTimer::singleShot(0, qApp, [act = std::move(act), triesLeft] {
    if (QWidget* dialog = QApplication::activeModalWidget()) return act(*dialog);
    ASSERT_GT(triesLeft, 0) << "no dialog opened";
    WithNextDialog(act, triesLeft - 1);
  });
}

/// A person at the main window of a simulated station.
class Desk {
 public:
  explicit Desk(const std::function<void(Station&)>& prepare = {}) {
    station.Set("ShowLoadOptions", false);
    if (prepare) prepare(station);
    station.For(person).Boot();
    window = std::make_unique<MainWindow>(station.TheSession(), station.Form(), person);
    window->resize(1000, 600);
    window->show();
    Settle();
  }

  /// Lets the widgets do what they have posted and shows the state.
  void Settle() {
    QApplication::processEvents();
    window->Refresh();
    QApplication::processEvents();
  }

  QAction* Action(const char* name) const {
    const auto found = window->findChildren<QAction*>(QString::fromLatin1(name));
    EXPECT_EQ(found.size(), 1) << name;
    return found.isEmpty() ? nullptr : found.front();
  }

  /// A menu's command, as its click or its key gives it. Nothing happens while it is disabled.
  void Choose(const char* name) {
    Action(name)->trigger();
    Settle();
  }

  template <class Widget>
  Widget* Find(const char* name) const {
    return &tarvolt::Find<Widget>(*window, QString::fromLatin1(name));
  }

  void Click(const char* name) {
    tarvolt::Click(*window, name);
    Settle();
  }

  std::string LabelText(const char* name) const { return Find<QLabel>(name)->text().toStdString(); }

  /// Lets the station record so many sets.
  void Record(int sets) {
    station.RunForSets(sets);
    Settle();
  }

  const StripChart& Chart() { return station.Form().Window().chart; }

  DesktopPerson person{false};
  Station station;
  std::unique_ptr<MainWindow> window;
};

}  // namespace tarvolt
