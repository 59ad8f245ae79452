// SPDX-License-Identifier: GPL-3.0-or-later
#include "apps/tarvolt/desktop_station.h"

#include "core/station/command_line.h"
#include "text/number.h"

namespace tarvolt {
namespace {

constexpr int kSuccess = 0;
constexpr int kFailed = 1;

}  // namespace

bool IsUnattended(const StationOptions& options) {
  return options.start || StartsAlone(options.slashCommands);
}

DesktopStation::DesktopStation(const Host& host, DesktopDialogs& dialogs, const StationOptions& options,
                               const std::filesystem::path& home)
    : options_(options),
      dialogs_(dialogs),
      session_(host, home),
      person_(!IsUnattended(options)),
      form_(session_, person_) {
  session_.overrides = options.overrides;
  endTimer_ = host.loop.MakeTimer([this] {
    dialogs_.EndWaiting();
    form_.RequestEnd();
  });
}

int DesktopStation::Run() {
  if (!form_.Form_Load("")) return kFailed;
  window_ = std::make_unique<MainWindow>(session_, form_, person_);
  dialogs_.SetParent(window_.get());
  window_->show();
  int result = ObeyOptions(form_, session_, options_);
  if (result == kSuccess && !form_.Window().run.EndRequested) StartAsAsked();
  const bool stays = result == kSuccess || !IsUnattended(options_);  // a person reads in the window what is wrong
  while (stays && !form_.Window().run.EndRequested) session_.host.loop.Yield();
  form_.Form_Unload();
  if (form_.HasUnsavedSamples()) result = kFailed;
  window_.reset();
  return result;
}

void DesktopStation::StartAsAsked() {
  if (options_.start && !form_.Window().run.ChartRunning()) form_.StartChart("");
  if (options_.seconds <= 0) return;
  endTimer_->SetInterval(RoundToInt32(options_.seconds * 1000));
  endTimer_->SetEnabled(true);
}

}  // namespace tarvolt
