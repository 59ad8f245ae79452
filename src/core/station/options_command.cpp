// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/station/options_command.h"

#include <algorithm>
#include <set>

#include "config/text_file.h"
#include "core/sound/sound_card.h"
#include "core/station/station_names.h"

namespace tarvolt {
namespace {

std::optional<OptionsProblem> SaveNotes(Session& session, const std::string& notes) {
  if (notes == session.notes) return {};
  std::string problem;
  if (!ReplaceTextFile(session.host.files, session.settings.files.NotesFileName, notes, problem)) {
    return OptionsProblem{"Tarvolt", "The notes could not be stored: " + problem, "NotesFileName"};
  }
  session.notes = notes;
  return {};
}

OptionsProblem NoDataDirectory(const std::string& text) {
  return {"Tarvolt", text, "DataDirectory"};
}

void LogHiddenChanges(Session& session, const Settings& draft) {
  for (const auto& [key, text] : session.overrides) {
    if (SettingText(draft, key) == SettingText(session.settings, key)) continue;
    session.Add2SLog(key + " was set for this run alone: its change lasts for this run and is not stored.");
  }
}

}  // namespace

std::optional<OptionsProblem> ReadyDataDirectory(Session& session, const Settings& draft) {
  const std::filesystem::path folder = draft.files.DataDirectory;
  if (folder.empty() || session.host.files.FolderExists(folder)) return {};
  if (!folder.is_absolute()) return NoDataDirectory("The Data Directory must be given with its whole path.");
  const Question question{
      "Tarvolt",
      "Your specified Data Directory:\n" + draft.files.DataDirectory + "\nis not found.\nDo you want it to be created?",
      Buttons::YesNo, Answer::Yes};
  const bool isOwn = folder == session.home / "Data";
  if (!isOwn && draft.program.ShowMsgBox && session.host.dialogs.Ask(question) != Answer::Yes) {
    return NoDataDirectory("The Data Directory " + draft.files.DataDirectory + " is not found.");
  }
  std::error_code error;
  session.host.files.MakeFolders(folder, error);
  if (!error) return {};
  return NoDataDirectory("The Data Directory " + draft.files.DataDirectory + " cannot be created: " + error.message());
}

OptionsCommand::OptionsCommand(Recorder& recorder, ChartRun& chartRun)
    : recorder_(recorder), chartRun_(chartRun), session_(recorder.session) {}

// What belongs to the card is the new one's before anything of the dialog is laid over it, so that the old one's
// calibration is not stored for it.
std::optional<OptionsProblem> OptionsCommand::TakeAnotherCard(const OptionTexts& texts, Settings& draft) const {
  constexpr const char* kKey = "SoundCardName";
  const auto found = std::find_if(texts.begin(), texts.end(), [](const auto& text) { return text.first == kKey; });
  if (found == texts.end() || found->second == draft.sound.SoundCardName) return {};
  if (!recorder_.window.AtRest()) {
    return OptionsProblem{"Tarvolt", "The sound card cannot be changed while a chart is running.", kKey};
  }
  draft.sound.SoundCardName = found->second;
  LoadCardSettings(session_.store, session_.overrides, session_.home.string(), draft);
  return {};
}

// The settings are laid over those in force now: the run, a profile or a command may have changed others since the
// dialog was opened.
std::optional<OptionsProblem> OptionsCommand::Take(const OptionTexts& texts, Settings& draft,
                                                   std::vector<OptionsProblem>& lifted) const {
  draft = session_.settings;
  if (auto problem = TakeAnotherCard(texts, draft)) return problem;
  if (auto problem = ReadOptionTexts(texts, draft)) return problem;
  lifted = LiftOptions(draft);
  return {};
}

std::optional<OptionsProblem> OptionsCommand::Confirm(const OptionTexts& texts, const std::optional<std::string>& notes,
                                                      const std::vector<std::string>& pageKeys) {
  std::set<std::string> changed(pageKeys.begin(), pageKeys.end());
  for (const auto& [key, text] : texts) changed.insert(key);
  const auto isChanged = [&](const OptionsProblem& problem) { return changed.count(problem.key) > 0; };
  Settings draft;
  std::vector<OptionsProblem> problems;
  std::vector<OptionsProblem> lifted;
  const auto take = [&]() -> std::optional<OptionsProblem> {
    if (auto problem = Take(texts, draft, lifted)) return problem;
    problems = CheckOptions(draft, SoundFactsOf(session_, draft));
    const auto refusal = std::find_if(problems.begin(), problems.end(), isChanged);
    return refusal == problems.end() ? std::nullopt : std::optional(*refusal);
  };
  if (auto problem = take()) return problem;
  if (changed.count("DataDirectory") > 0) {
    if (auto problem = ReadyDataDirectory(session_, draft)) return problem;
    if (auto problem = take()) return problem;  // time may have passed in a question
  } else if (!draft.files.DataDirectory.empty() && !session_.host.files.FolderExists(draft.files.DataDirectory)) {
    problems.push_back(NoDataDirectory("The Data Directory " + draft.files.DataDirectory + " is not found."));
  }
  if (notes) {
    if (auto problem = SaveNotes(session_, *notes)) return problem;
  }
  std::vector<OptionsProblem> warnings = OptionWarnings(session_.settings, draft, SoundFactsOf(session_, draft));
  warnings.insert(warnings.begin(), problems.begin(), problems.end());
  warnings.insert(warnings.end(), lifted.begin(), lifted.end());
  for (const OptionsProblem& warning : warnings) {
    session_.LogAndTell(warning.title, warning.text);
  }
  Apply(draft);
  return {};
}

void OptionsCommand::UpdateAfterOptionsChange() {
  const ChartWindow& window = recorder_.window;
  if (window.run.phase == RunPhase::Idle) {
    window.chart.Count() == 0 ? chartRun_.TakeTimeBase() : chartRun_.TakeClockOffset();
  }
  recorder_.commands.look.UpdateAfterOptionsChange();
  recorder_.triggers.FollowSetting();
  const LogPlan& log = window.run.log;
  const TimingSettings& timing = session_.settings.timing;
  const bool restartMoves = log.UseRestartTime != timing.UseRestartTime || log.RestartTime != timing.RestartTime;
  if (window.run.ChartRunning() && restartMoves) session_.Add2SLog("The restart time counts from the next log on.");
}

void OptionsCommand::Apply(const Settings& draft) {
  const RunState& run = recorder_.window.run;
  const Settings& now = session_.settings;
  const bool nameChanges = draft.station.LocalName != now.station.LocalName;
  LogHiddenChanges(session_, draft);
  session_.settings = draft;
  SaveRegistrySettings(session_.store, session_.overrides, session_.home.string(), session_.settings);
  UpdateAfterOptionsChange();
  if (nameChanges && !run.ChartRunning() && recorder_.window.chart.Count() == 0) {
    ShowLocalName(session_, recorder_.window);
  }
  NameSessionLog(session_, recorder_.window);
  session_.Add2SLog("Options changed.");
}

}  // namespace tarvolt
