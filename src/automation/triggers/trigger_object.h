// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tarvolt {

/// What a trigger does when it fires, beside its notes.
enum class TriggerAction { NoteOnly, Execute, Lpt, LjU3, LjU12 };

/// The action of a name, "EXECUTE", "LPT", "LJU3" or "LJU12" in any case; any other text is for notes alone.
TriggerAction ActionOf(std::string_view name);

/// A trigger as a person describes it and as a file keeps it.
struct TriggerDefinition {
  std::string Action;                  ///< a name as of ActionOf
  double Threshold = 0;                ///< the level; a value on it passes whichever way the trigger looks
  std::int32_t MinDuration = 0;        ///< samples past the threshold needed to fire; 0 and 1 fire at the first
  bool TriggerBelowThreshold = false;  ///< fire below the level, not above it
  std::int32_t MinResetSamples = 0;    ///< samples in a row not past the threshold needed to re-arm; 0 is 1
  std::int32_t RestPeriod = 0;         ///< samples ignored after that
  std::string Parameter;               ///< command line of EXECUTE, with tags
  bool OneShot = false;                ///< off after the first firing of a run
  std::string LJU3command = "DO";      ///< "DO" digital output, "AO" analog output
  std::int16_t LJU3channel = 0;
  double LJU3value = 1;
  std::string LJU12command = "DO";
  std::int32_t LJU12channel = 0;
  double LJU12value = 1;
  std::int32_t LPTnum = 1;        ///< base address of the port; 200 and below is none
  std::int32_t LPTpin = 1;        ///< 1 to 12: the data bits, then the pins 14, 16 and 17
  double LPTvalue = 0;            ///< 1 sets the pin high, anything else low
  bool Annotate = false;          ///< put the note on the chart
  bool ShowInObLog = false;       ///< write it to the observer log
  bool ShowInSessionLog = false;  ///< write it to the session log
  bool ShowInStatusBar = false;
  std::string Notation;  ///< the note, with tags

  bool operator==(const TriggerDefinition&) const = default;
};

/// A trigger at work: it watches values sample by sample and says when to act.
///
///     Armed    fires after MinDuration passing samples in a row          -> Busy (OneShot: and no longer Enabled)
///     Busy     ends after MinResetSamples failing samples in a row       -> Resting, or Armed without a RestPeriod
///     Resting  ignores RestPeriod samples; the next one is judged again  -> Armed
class clsTriggerObject : public TriggerDefinition {
 public:
  bool Enabled = false;  ///< it works
  bool Busy = false;     ///< fired and not yet reset
  bool Resting = false;  ///< in the rest after a reset

  /// Judges a sample: 1 when the trigger fires now, else 0. Does nothing unless Enabled. Not a number does not pass.
  int Update(double value);

  /// Forgets what is under way: armed again, with nothing counted. Enabled stays.
  void CancelActions();

 private:
  bool Passes(double value) const;

  std::int64_t passCount_ = 0;   // samples past the threshold
  std::int64_t clearCount_ = 0;  // samples not past it
  std::int64_t restCount_ = 0;
};

}  // namespace tarvolt
