// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/triggers/trigger_object.h"

#include "text/ansi.h"

namespace tarvolt {

TriggerAction ActionOf(std::string_view name) {
  const std::string action = Upper(Trim(name));
  if (action == "EXECUTE") return TriggerAction::Execute;
  if (action == "LPT") return TriggerAction::Lpt;
  if (action == "LJU3") return TriggerAction::LjU3;
  if (action == "LJU12") return TriggerAction::LjU12;
  return TriggerAction::NoteOnly;
}

bool clsTriggerObject::Passes(double value) const {
  return TriggerBelowThreshold ? value <= Threshold : value >= Threshold;
}

int clsTriggerObject::Update(double value) {
  if (!Enabled) return 0;
  if (Resting) {
    if (++restCount_ <= RestPeriod) return 0;
    Resting = false;
    restCount_ = 0;
  }
  if (Passes(value)) {
    ++passCount_;
    clearCount_ = 0;
    if (passCount_ < MinDuration || Busy) return 0;
    passCount_ = 0;
    Busy = true;
    if (OneShot) Enabled = false;
    return 1;
  }
  ++clearCount_;
  if (!Busy) {
    passCount_ = 0;
  } else if (clearCount_ >= MinResetSamples) {
    passCount_ = 0;
    clearCount_ = 0;
    Busy = false;
    Resting = RestPeriod > 0;
  }
  return 0;
}

void clsTriggerObject::CancelActions() {
  Busy = false;
  Resting = false;
  passCount_ = 0;
  clearCount_ = 0;
  restCount_ = 0;
}

}  // namespace tarvolt
