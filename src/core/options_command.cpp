#include "core/options_command.h"

#include <algorithm>

#include "config/text_file.h"
#include "core/form_main.h"
#include "core/sound_card.h"

namespace tarvolt {
namespace {

std::optional<OptionsProblem> SaveNotes(Session& session, const std::string& notes) {
  if (notes == session.notes) return {};
  std::string problem;
  if (!ReplaceTextFile(session.host.files, session.settings.NotesFileName, notes, problem)) {
    return OptionsProblem{"Tarvolt", "The notes could not be stored: " + problem, "NotesFileName"};
  }
  session.notes = notes;
  return {};
}

void LogHiddenChanges(Session& session, const Settings& draft) {
  for (const auto& [key, text] : session.overrides) {
    if (SettingText(draft, key) == SettingText(session.settings, key)) continue;
    session.Add2SLog(key + " was set for this run alone: its change lasts for this run and is not stored.");
  }
}

}  // namespace

std::optional<OptionsProblem> ReadyDataDirectory(Session& session, const Settings& draft) {
  const std::filesystem::path folder = draft.DataDirectory;
  if (folder.empty() || session.host.files.FolderExists(folder)) return {};
  const auto refusal = [](const std::string& text) { return OptionsProblem{"Tarvolt", text, "DataDirectory"}; };
  if (!folder.is_absolute()) return refusal("The Data Directory must be given with its whole path.");
  const Question question{
      "Tarvolt",
      "Your specified Data Directory:\n" + draft.DataDirectory + "\nis not found.\nDo you want it to be created?",
      Buttons::YesNo, Answer::Yes};
  const bool isOwn = folder == session.home / "Data";
  if (!isOwn && draft.ShowMsgBox && session.host.dialogs.Ask(question) != Answer::Yes) {
    return refusal("The Data Directory " + draft.DataDirectory + " is not found.");
  }
  std::error_code error;
  session.host.files.MakeFolders(folder, error);
  if (!error) return {};
  return refusal("The Data Directory " + draft.DataDirectory + " cannot be created: " + error.message());
}

// What belongs to the card is the new one's before anything of the dialog is laid over it, so that the old one's
// calibration is not stored for it.
std::optional<OptionsProblem> FormMain::TakeAnotherCard(const OptionTexts& texts, Settings& draft) const {
  constexpr const char* kKey = "SoundCardName";
  const auto found = std::find_if(texts.begin(), texts.end(), [](const auto& text) { return text.first == kKey; });
  if (found == texts.end() || found->second == draft.SoundCardName) return {};
  if (!ChartIsAtRest()) {
    return OptionsProblem{"Tarvolt", "The sound card cannot be changed while a chart is running.", kKey};
  }
  draft.SoundCardName = found->second;
  LoadCardSettings(session_.store, session_.overrides, session_.home.string(), draft);
  return {};
}

// The settings are laid over those in force now: the run, a profile or a command may have changed others since the
// dialog was opened.
std::optional<OptionsProblem> FormMain::ConfirmOptions(const OptionTexts& texts,
                                                       const std::optional<std::string>& notes) {
  SoundFacts sound;
  Settings draft;
  const auto take = [&]() -> std::optional<OptionsProblem> {
    draft = session_.settings;
    if (auto problem = TakeAnotherCard(texts, draft)) return problem;
    if (auto problem = ReadOptionTexts(texts, draft)) return problem;
    sound = SoundFactsOf(session_, draft);
    LiftOptions(draft);
    return CheckOptions(draft, sound);
  };
  if (auto problem = take()) return problem;
  if (auto problem = ReadyDataDirectory(session_, draft)) return problem;
  if (auto problem = take()) return problem;  // time may have passed in a question
  if (notes) {
    if (auto problem = SaveNotes(session_, *notes)) return problem;
  }
  for (const OptionsProblem& warning : OptionWarnings(session_.settings, draft, sound)) {
    session_.Add2SLog(warning.text);
    session_.Tell(warning.title, warning.text);
  }
  ApplyOptions(draft);
  return {};
}

void FormMain::ApplyOptions(const Settings& draft) {
  const RunState& run = recorder_.window.run;
  const Settings& now = session_.settings;
  const bool restartMoves = draft.UseRestartTime != now.UseRestartTime || draft.RestartTime != now.RestartTime;
  const bool nameChanges = draft.LocalName != now.LocalName;
  LogHiddenChanges(session_, draft);
  session_.settings = draft;
  SaveRegistrySettings(session_.store, session_.overrides, session_.home.string(), session_.settings);
  UpdateAfterOptionsChange();
  if (restartMoves && run.ChartRunning) chartRun_.PlanNextRestart();
  if (nameChanges && !run.ChartRunning && recorder_.window.chart.Count() == 0) ShowLocalName();
  NameSessionLog();
  session_.Add2SLog("Options changed.");
}

}  // namespace tarvolt
