// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <QLineEdit>
#include <array>
#include <functional>

#include "logs/observer_macros.h"

namespace tarvolt {

/// Captions and texts of the ten macro buttons. Deletes itself when closed.
class FormOMacros final : public QDialog {
 public:
  /// `macro` has the focus at first; `changed` is called when new macros stand in the store.
  FormOMacros(SettingsStore& store, int macro, std::function<void()> changed, QWidget* parent);

  void accept() override;

 private:
  SettingsStore& store_;
  std::function<void()> changed_;
  std::array<QLineEdit*, kOMacros> captions_{};
  std::array<QLineEdit*, kOMacros> texts_{};
};

}  // namespace tarvolt
