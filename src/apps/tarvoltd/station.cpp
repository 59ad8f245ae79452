#include "apps/tarvoltd/station.h"

#include <iostream>

#include "text/ansi.h"
#include "text/number.h"

namespace tarvolt {

namespace {

constexpr int kSuccess = 0;
constexpr int kFailed = 1;

std::string OneLine(const std::string& text) {
  return Trim(ReplaceAll(ReplaceAll(text, "\r", ""), "\n", " "));
}

}  // namespace

Station::Station(LinuxHost& host, const StationOptions& options, const std::filesystem::path& home)
    : host_(host), options_(options), status_(options.quiet), session_(host.Record(), home), form_(session_) {
  session_.overrides = options.overrides;
  session_.log.AddListener([this](const std::string& line) {
    lastLogged_ = line;
    status_.PrintLog(line);
  });
  // Nobody reads a message here, so it goes to the log; one that the log has just taken is not repeated.
  host_.OnDialogText([this](const std::string& text) {
    const std::string line = OneLine(text);
    const std::string said = OneLine(lastLogged_.substr(std::min<std::size_t>(lastLogged_.size(), 9)));
    if (line.find(said) == std::string::npos || said.empty()) session_.Add2SLog(line);
  });
}

int Station::Run() {
  ListenToTheOutside();
  int result = Load() ? kSuccess : kFailed;
  if (result == kSuccess && !form_.EndRequested()) result = Record();
  form_.Form_Unload();
  Summarise();
  return result;
}

void Station::ListenToTheOutside() {
  host_.OnStopSignal([this] { form_.RequestEnd(); });
  host_.OnEscape([this] { form_.Escape(); });
  secondTimer_ = session_.host.loop.MakeTimer([this] { status_.Show(session_, form_.Window()); });
  secondTimer_->SetInterval(1000);
  secondTimer_->SetEnabled(true);
  endTimer_ = session_.host.loop.MakeTimer([this] { form_.RequestEnd(); });
}

// Start-up, with the command line's own words obeyed at its end.
bool Station::Load() {
  form_.Form_Load("");
  if (!options_.profile.empty()) form_.ProcessCmd("/PF \"" + options_.profile + "\"");
  if (!form_.CommandLineUnderstood()) return false;
  if (options_.mode != SessionMode::StandAlone) form_.EnterMode(options_.mode);
  form_.ProcessCmd(options_.slashCommands);
  return form_.CommandLineUnderstood();
}

int Station::Record() {
  if (options_.start && !form_.Window().run.ChartRunning) form_.StartChart("");
  const bool recording = form_.Window().run.ChartRunning;
  if (options_.start && !recording) return kFailed;
  if (options_.seconds > 0) {
    endTimer_->SetInterval(RoundToInt32(options_.seconds * 1000));
    endTimer_->SetEnabled(true);
  }
  while (!form_.EndRequested()) {
    session_.host.loop.Yield();
    if (options_.start && !form_.Window().run.ChartRunning) break;
  }
  return kSuccess;
}

void Station::Summarise() {
  secondTimer_->SetEnabled(false);
  status_.Clear();
}

}  // namespace tarvolt
