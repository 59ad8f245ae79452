#pragma once

#include <string>

#include "automation/triggers/trigger_object.h"

namespace tarvolt {

/// The pins and outputs that triggers drive. Each call gives in words what went wrong, an empty text when it worked,
/// and waits for nothing: it is made while a sample is being finished.
class TriggerOutputs {
 public:
  virtual ~TriggerOutputs() = default;

  /// Readies the device of an action. Called at the start of a chart for each device that its triggers name.
  virtual std::string Open(TriggerAction device) = 0;

  /// A pin of the parallel port's connector, by its number there; data bits are 1 to 9.
  virtual std::string SetPin(int baseAddress, int pin, bool high) = 0;

  virtual std::string SetU3Digital(int channel, double value) = 0;
  virtual std::string SetU3Analog(int channel, double volts) = 0;
  virtual std::string SetU12Digital(int channel, double value) = 0;

  /// The U12 takes both of its analog levels at once, in volts.
  virtual std::string SetU12Analog(double level0, double level1) = 0;
};

}  // namespace tarvolt
