#pragma once

#include <filesystem>

#include "model/chart_window.h"
#include "model/session.h"

namespace tarvolt {

enum class SaveOutcome {
  Saved,      ///< the file stands complete under its final name
  NotWanted,  ///< a rule or a person said no; nothing was written
  Failed      ///< the disk refused; the samples stay in the store and in the backup, the run marker stays set
};

/// The SaveIF test when a log is turned over: at equality it saves.
bool SaveIfAtTurnover(const Settings& settings, const StripChart& chart);

/// The SaveIF test at the end of a run: at equality it does not save.
bool SaveIfAtStop(const Settings& settings, const StripChart& chart);

/// Decides about and carries out the save at the end of a run. May ask a person when the settings say so and
/// `mayPrompt`; yields only then. On success or when nothing is wanted the run marker is reset to "OK". Fails while a
/// save of the view waits for a person.
SaveOutcome CheckForSave(Session& session, ChartWindow& window, bool mayPrompt);

/// Saves the stretch in view under a name that a person chooses: asks in any case. Yields. The log itself counts as
/// unsaved as before. Not wanted while another one waits for its name.
SaveOutcome SaveView(Session& session, ChartWindow& window);

/// Writes the chart beside `name` and renames it over it. Tells a failure in the session log and by message. Values
/// that do not fit an integer save are asked about, which yields, only with `mayAsk` and ShowMsgBox.
SaveOutcome SaveDataFile(Session& session, ChartWindow& window, const std::filesystem::path& name, bool mayAsk);

}  // namespace tarvolt
