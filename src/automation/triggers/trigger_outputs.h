// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "automation/triggers/trigger_object.h"
#include "text/result.h"

namespace tarvolt {

/// The pins and outputs that triggers drive. Each call waits for nothing: it is made while a sample is being
/// finished.
class TriggerOutputs {
 public:
  virtual ~TriggerOutputs() = default;

  /// Readies the device of an action. Called at the start of a chart for each device that its triggers name.
  virtual Outcome Open(TriggerAction device) = 0;

  /// A pin of the parallel port's connector, by its number there; data bits are 1 to 9.
  virtual Outcome SetPin(int baseAddress, int pin, bool high) = 0;

  virtual Outcome SetU3Digital(int channel, double value) = 0;
  virtual Outcome SetU3Analog(int channel, double volts) = 0;
  virtual Outcome SetU12Digital(int channel, double value) = 0;

  /// The U12 takes both of its analog levels at once, in volts.
  virtual Outcome SetU12Analog(double level0, double level1) = 0;
};

}  // namespace tarvolt
