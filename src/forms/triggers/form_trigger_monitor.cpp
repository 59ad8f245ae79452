// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/triggers/form_trigger_monitor.h"

#include <QGridLayout>

namespace tarvolt {
namespace {

constexpr int kDiameter = 22;

QString StateOf(const clsTriggerObject& trigger) {
  if (trigger.Busy) return trigger.Enabled ? QStringLiteral("fired") : QStringLiteral("fired, and done for this run");
  if (trigger.Resting) return QStringLiteral("resting");
  return trigger.Enabled ? QStringLiteral("armed") : QStringLiteral("off until a chart is started");
}

}  // namespace

FormTriggerMonitor::FormTriggerMonitor(QWidget* owner) : QWidget(owner, Qt::Window) {
  setObjectName(QStringLiteral("FormTriggerMonitor"));
  setWindowTitle(QStringLiteral("Trigger Monitor"));
  auto* grid = new QGridLayout(this);
  grid->setSizeConstraint(QLayout::SetFixedSize);
  grid->setHorizontalSpacing(14);
  for (int slot = 0; slot < kTriggerSlots; ++slot) {
    auto* number = new QLabel(QString::number(NumberOfSlot(slot)), this);
    number->setAlignment(Qt::AlignCenter);
    grid->addWidget(number, 0, slot);
    lights_[slot] = new QLabel(this);
    lights_[slot]->setObjectName(QStringLiteral("LED%1").arg(NumberOfSlot(slot)));
    lights_[slot]->setFixedSize(kDiameter, kDiameter);
    grid->addWidget(lights_[slot], 1, slot, Qt::AlignCenter);
  }
  ReSetAll();
}

void FormTriggerMonitor::Refresh(const Triggers& triggers) {
  for (int slot = 0; slot < kTriggerSlots; ++slot) {
    if (triggers[slot].Busy != lit_[slot]) triggers[slot].Busy ? SetLED(slot) : ReSetLED(slot);
    const QString tip = QStringLiteral("Trigger %1: %2").arg(NumberOfSlot(slot)).arg(StateOf(triggers[slot]));
    if (lights_[slot]->toolTip() != tip) lights_[slot]->setToolTip(tip);
  }
}

void FormTriggerMonitor::SetLED(int slot) {
  Paint(slot, true);
}

void FormTriggerMonitor::ReSetLED(int slot) {
  Paint(slot, false);
}

void FormTriggerMonitor::ReSetAll() {
  for (int slot = 0; slot < kTriggerSlots; ++slot) ReSetLED(slot);
}

void FormTriggerMonitor::Paint(int slot, bool lit) {
  lit_[slot] = lit;
  lights_[slot]->setStyleSheet(QStringLiteral("border: 1px solid #444444; border-radius: %1px; background: %2")
                                   .arg(kDiameter / 2)
                                   .arg(lit ? QStringLiteral("#ff2020") : QStringLiteral("#4a1a1a")));
}

}  // namespace tarvolt
