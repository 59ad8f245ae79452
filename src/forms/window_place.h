// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <string>

#include "config/settings_store.h"

class QWidget;

namespace tarvolt {

/// Keeps the place and the size of a side window: it comes back where it was closed, in the next session too, unless
/// that place is on no screen any more.
class WindowPlace final : public QObject {
 public:
  /// Belongs to `window`, which has its usual size already, and moves it at once. `key` is a setting; `store` outlives
  /// the window.
  WindowPlace(QWidget& window, SettingsStore& store, std::string key);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Restore();
  void Store();

  QWidget& window_;
  SettingsStore& store_;
  std::string key_;
};

}  // namespace tarvolt
