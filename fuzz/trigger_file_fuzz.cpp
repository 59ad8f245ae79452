// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdint>
#include <string>
#include <string_view>

#include "automation/triggers/trigger_file.h"
#include "require.h"

namespace tarvolt {
namespace {

// The states of a trigger exclude each other, whatever numbers a file has given it.
void RequireStates(const TriggerDefinition& definition) {
  clsTriggerObject trigger;
  static_cast<TriggerDefinition&>(trigger) = definition;
  trigger.Enabled = true;
  for (int sample = 0; sample < 50; ++sample) {
    const bool wasBusy = trigger.Busy;
    const int fired = trigger.Update(definition.Threshold + (sample % 7 < 4 ? 1 : -1));
    Require(fired == 0 || (trigger.Busy && !wasBusy && !trigger.Resting));
    Require(!(trigger.Busy && trigger.Resting));
  }
}

}  // namespace
}  // namespace tarvolt

/// Whatever a trigger file holds, what was read of it can be written and comes back the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tarvolt;
  const auto read = ParseTriggers(std::string_view(reinterpret_cast<const char*>(data), size));
  if (!read) return 0;
  const auto again = ParseTriggers(FormatTriggers(*read));
  Require(again && *again == *read);
  for (const TriggerDefinition& trigger : *read) RequireStates(trigger);
  return 0;
}
