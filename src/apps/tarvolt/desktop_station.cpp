#include "apps/tarvolt/desktop_station.h"

#include "core/command_line.h"
#include "forms/first_use/form_first_use.h"
#include "text/number.h"

namespace tarvolt {
namespace {

constexpr int kSuccess = 0;
constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

}  // namespace

DesktopStation::DesktopStation(const Host& host, DesktopDialogs& dialogs, const StationOptions& options,
                               const std::filesystem::path& home)
    : options_(options), dialogs_(dialogs), session_(host, home), form_(session_) {
  session_.overrides = options.overrides;
  endTimer_ = host.loop.MakeTimer([this] {
    dialogs_.EndWaiting();
    form_.RequestEnd();
  });
}

int DesktopStation::Run() {
  if (!IsUnattended()) {
    form_.OnFirstUse([this](Settings& settings) {
      return RunFirstUse(session_, settings, [this] { return form_.EndRequested(); });
    });
  }
  if (!form_.Form_Load("")) return kFailed;
  window_ = std::make_unique<MainWindow>(session_, form_);
  dialogs_.SetParent(window_.get());
  window_->show();
  int result = Load();
  if (result == kSuccess && !form_.EndRequested()) StartAsAsked();
  const bool stays = result == kSuccess || !IsUnattended();  // a person reads in the window what is wrong
  while (stays && !form_.EndRequested()) session_.host.loop.Yield();
  form_.Form_Unload();
  if (form_.HasUnsavedSamples()) result = kFailed;
  window_.reset();
  return result;
}

// A command line that starts a chart, or keeps messages off, must not wait for a person.
bool DesktopStation::IsUnattended() const {
  return options_.start || StartsAlone(options_.slashCommands);
}

// A station that was given a profile or a file must not go on with something else.
int DesktopStation::Load() {
  if (!options_.profile.empty() && !form_.LoadProfile(options_.profile)) return kFailed;
  if (options_.mode != SessionMode::StandAlone) form_.EnterMode(options_.mode);
  if (!options_.load.empty() && !form_.LoadDataFile(options_.load)) return kFailed;
  return form_.RunCommandLine(options_.slashCommands) ? kSuccess : kWrongUsage;
}

void DesktopStation::StartAsAsked() {
  if (options_.start && !form_.Window().run.ChartRunning) form_.StartChart("");
  if (options_.seconds <= 0) return;
  endTimer_->SetInterval(RoundToInt32(options_.seconds * 1000));
  endTimer_->SetEnabled(true);
}

}  // namespace tarvolt
