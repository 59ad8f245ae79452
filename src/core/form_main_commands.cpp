#include <filesystem>

#include "config/profile.h"
#include "core/form_main.h"
#include "core/observer_entries.h"
#include "core/priority.h"
#include "files/backup_source.h"
#include "files/saving.h"

namespace tarvolt {
namespace {

constexpr const char* kProfileFilter = "Tarvolt Profile|*.tvp";

// Put back however a command ends.
class FlagSet {
 public:
  explicit FlagSet(bool& flag) : flag_(flag) { flag_ = true; }
  ~FlagSet() { flag_ = false; }
  FlagSet(const FlagSet&) = delete;
  FlagSet& operator=(const FlagSet&) = delete;

 private:
  bool& flag_;
};

}  // namespace

void FormMain::cmdStart() {
  if (!recorder_.window.view.cmdStart) return;
  if (recorder_.window.run.Starting) return Escape();
  if (!recorder_.window.run.ChartRunning) return StartChart("");
  StopChart();
}

void FormMain::mnuSave() {
  ChartWindow& window = recorder_.window;
  if (window.run.Starting || window.run.Stopping || window.save.Loading) return;
  if (window.run.ChartRunning && LastIndexOfRun(session_, window) < 2) {
    session_.Tell("Tarvolt", "There is not enough data to save.");
    return;
  }
  if (window.run.ChartRunning) {
    const FlagSet force(window.run.ForceSave);
    MaxedOut(MaxedOutMode::LimitReached);
    return;
  }
  const FlagSet asked(window.save.UserAskedSave);
  recorder_.saveFailed = CheckForSave(session_, window, true) == SaveOutcome::Failed;
}

void FormMain::cmdSaveView() {
  ChartWindow& window = recorder_.window;
  if (window.chart.Count() == 0 || window.run.Starting || window.run.Stopping || window.save.Loading) return;
  SaveView(session_, window);
}

void FormMain::mnuLoadProfile() {
  const auto file =
      session_.host.dialogs.AskOpenFile({"Load Profile File", session_.home.string(), "", ".tvp", kProfileFilter});
  if (file) LoadProfile(*file);
}

void FormMain::mnuSaveProfile() {
  const auto file =
      session_.host.dialogs.AskSaveFile({"Save Profile File", session_.home.string(), "", ".tvp", kProfileFilter});
  if (!file) return;
  std::string problem;
  if (SaveProfileFile(session_.host.files, *file, session_.settings, problem)) return;
  session_.Add2SLog("Could not save the profile " + *file + ": " + problem);
  session_.Tell("Tarvolt", "Could not save the profile " + *file + ": " + problem);
}

void FormMain::mnuProfile(int place) {
  if (place < 0 || place >= static_cast<int>(session_.recent.profiles.size())) return;
  const std::string path = session_.recent.profiles[place];
  if (!path.empty()) LoadProfile(path);
}

void FormMain::mnuPriority(PriorityClass priority) {
  if (priority == PriorityClass::RealTime) {
    const Question question{"Tarvolt",
                            "Real Time priority can make the rest of the system stand still.\nDo you want it?",
                            Buttons::YesNo, Answer::No};
    if (session_.host.dialogs.Ask(question) != Answer::Yes) return;
  }
  SetPriority(session_, priority);
}

void FormMain::UpdateAfterOptionsChange() {
  const ChartWindow& window = recorder_.window;
  if (!window.run.ChartRunning && !window.run.Starting && !window.run.Stopping) {
    window.chart.Count() == 0 ? chartRun_.TakeTimeBase() : chartRun_.TakeClockOffset();
  }
  recorder_.commands.UpdateAfterOptionsChange();
  recorder_.triggers.FollowSetting();
}

void FormMain::NoteImageSaved(const std::filesystem::path& file) {
  EnterImageSaved(session_, recorder_.window, file);
}

void FormMain::ShowStatus(const std::string& text) {
  recorder_.window.view.StatusText = text;
  recorder_.window.view.StatusHold = 0;
}

}  // namespace tarvolt
