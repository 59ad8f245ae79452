// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLabel>
#include <QWidget>
#include <array>

#include "automation/triggers/trigger_slots.h"

namespace tarvolt {

/// A light for each trigger: on from its firing to its reset.
class FormTriggerMonitor final : public QWidget {
 public:
  explicit FormTriggerMonitor(QWidget* owner);

  /// Shows the triggers as they are now.
  void Refresh(const Triggers& triggers);

  /// Slots count from 0.
  void SetLED(int slot);
  void ReSetLED(int slot);
  void ReSetAll();

 private:
  void Paint(int slot, bool lit);

  std::array<QLabel*, kTriggerSlots> lights_{};
  std::array<bool, kTriggerSlots> lit_{};
};

}  // namespace tarvolt
