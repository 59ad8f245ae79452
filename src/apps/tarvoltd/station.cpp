// SPDX-License-Identifier: GPL-3.0-or-later
#include "apps/tarvoltd/station.h"

#include <algorithm>

#include "text/ansi.h"
#include "text/number.h"

namespace tarvolt {

namespace {

constexpr int kSuccess = 0;
constexpr int kFailed = 1;

/// Length of the time and the blank in front of a log line's text.
constexpr std::size_t kLogTime = 9;

}  // namespace

Station::Station(const Host& host, const StationOptions& options, const std::filesystem::path& home)
    : options_(options), live_(options.quiet), session_(host, home), form_(session_, nobody_) {
  session_.overrides = options.overrides;
  session_.log.AddListener([this](const std::string& line) {
    lastLogged_ = line;
    live_.PrintLog(line);
  });
}

// What the log has just taken is not repeated.
void Station::TakeDialogText(const std::string& line) {
  const std::string said = lastLogged_.size() > kLogTime ? Trim(lastLogged_.substr(kLogTime)) : "";
  if (said.empty() || line.find(said) == std::string::npos) session_.Add2SLog(line);
}

int Station::Run() {
  StartTimers();
  form_.Form_Load("");
  int result = ObeyOptions(form_, session_, options_);
  if (result == kSuccess && !form_.Window().run.EndRequested) result = Record();
  form_.Form_Unload();
  EndTimers();
  return form_.HasUnsavedSamples() ? kFailed : result;
}

void Station::StartTimers() {
  secondTimer_ = session_.host.loop.MakeTimer([this] { live_.Show(session_, form_.Window()); });
  secondTimer_->SetInterval(1000);
  secondTimer_->SetEnabled(true);
  endTimer_ = session_.host.loop.MakeTimer([this] { form_.RequestEnd(); });
}

int Station::Record() {
  if (options_.start && !form_.Window().run.ChartRunning()) form_.StartChart("");
  const bool recording = form_.Window().run.ChartRunning();
  if (options_.start && !recording) return kFailed;
  if (options_.seconds > 0) {
    endTimer_->SetInterval(RoundToInt32(options_.seconds * 1000));
    endTimer_->SetEnabled(true);
  }
  while (!form_.Window().run.EndRequested) {
    session_.host.loop.Yield();
    if (options_.start && !form_.Window().run.ChartRunning()) break;
  }
  return kSuccess;
}

void Station::EndTimers() {
  secondTimer_->SetEnabled(false);
  live_.Clear();
}

}  // namespace tarvolt
