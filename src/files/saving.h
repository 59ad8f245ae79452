// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>

#include "model/chart_window.h"
#include "model/session.h"

namespace tarvolt {

enum class SaveOutcome {
  Saved,      ///< the file stands complete under its final name
  NotWanted,  ///< a rule says that nobody wants the samples
  Unsaved,    ///< nothing was written: autosave is off, or a person said no or was shown why not
  Failed      ///< the disk refused; the samples stay in the store and in the backup
};

/// The SaveIF test when a log is turned over: at equality it saves.
bool SaveIfAtTurnover(const ChartWindow& window);

/// The SaveIF test at the end of a run: at equality it does not save.
bool SaveIfAtStop(std::int32_t saveIF, double value, const ChartWindow& window);

/// How a save at rest comes about.
enum class SaveReason {
  RunEnded,  ///< the rules of the station decide
  Asked,     ///< a person wants it, as far as SaveIF does
  Wanted,    ///< a person has answered that it is to be saved, whatever the rules
  Again      ///< the disk refused it before; nobody is asked
};

/// Decides about and carries out the save of the chart on display while no run is on. May ask a person for the name
/// when the settings say so and `mayPrompt`; yields only then. Unsaved while a save of the view waits for a person.
SaveOutcome CheckForSave(Session& session, ChartWindow& window, SaveReason reason, bool mayPrompt);

/// Saves the stretch in view under a name that a person chooses: asks in any case. Yields. The log itself counts as
/// unsaved as before. Unsaved while another one waits for its name.
SaveOutcome SaveView(Session& session, ChartWindow& window);

/// Writes the chart beside `name` and renames it over it. Reports a failure in the session log and by message. Values
/// that do not fit an integer save are asked about, which yields, only with `mayAsk` and ShowMsgBox; else the log says
/// so.
SaveOutcome SaveDataFile(Session& session, ChartWindow& window, const std::filesystem::path& name, bool mayAsk);

}  // namespace tarvolt
