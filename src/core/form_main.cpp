#include "core/form_main.h"

#include "config/profile.h"
#include "text/ansi.h"

namespace tarvolt {

FormMain::FormMain(Session& session)
    : session_(session),
      recorder_(session, *this, [this](std::optional<TimeStamp> time) { pipeline_.GetAllData(time); }),
      chartRun_(recorder_),
      pipeline_(recorder_),
      soundClock_(recorder_, chartRun_, pipeline_),
      keepAlive_(recorder_, chartRun_),
      loads_(session, recorder_.window, recorder_.commands, [this] { return MakeRoomForLoad(); }) {
  EventLoop& loop = session_.host.loop;
  recorder_.LoTime1 = loop.MakeTimer([this] { pipeline_.TimerTick(); });
  recorder_.TimerKeepAlive = loop.MakeTimer([this] { keepAlive_.Fire(); });
  recorder_.TimerKeepAlive->SetInterval(kKeepAliveIdle);
  recorder_.TimerKeepAlive->SetEnabled(true);
  recorder_.images.OnSaved([this](const std::string& name) { NoteImageSaved(name); });
}

FormMain::~FormMain() = default;

void FormMain::StartChart(const std::string& profile) {
  if (recorder_.window.Mode == SessionMode::Client) {
    session_.Add2SLog("A chart cannot be started in Client Mode.");
    session_.Tell("Tarvolt", "A chart cannot be started in Client Mode.");
    return;
  }
  chartRun_.StartChart(profile);
  NameSessionLog();
}

void FormMain::StopChart() {
  chartRun_.StopChart();
}

void FormMain::MaxedOut(MaxedOutMode mode) {
  chartRun_.MaxedOut(mode);
}

void FormMain::Escape() {
  recorder_.average.StopAvgSampling();
  recorder_.commands.ClearValueDisplay();
  recorder_.window.run.AbortFlag = true;
  recorder_.window.run.CancelSchedule = true;
}

void FormMain::RequestEnd() {
  recorder_.window.run.EndRequested = true;
  Escape();
  StopChart();
}

void FormMain::EnterMode(SessionMode mode) {
  struct ModeWords {
    SessionMode mode;
    const char* entry;
    const char* title;
  };
  static constexpr ModeWords kWords[] = {{SessionMode::StandAlone, " Enter Stand Alone Mode ", "  Stand Alone "},
                                         {SessionMode::Server, " Enter Server Mode ", "  Server Mode "},
                                         {SessionMode::Client, " Enter Client Mode ", "  Client Chart "}};
  if (!recorder_.window.view.ModeMenus) {
    session_.Add2SLog("The mode stays as it is while a chart runs.");
    return;
  }
  for (const ModeWords& words : kWords) {
    if (words.mode != mode) continue;
    recorder_.window.Mode = mode;
    recorder_.window.view.Title = words.title;
    session_.Add2SLog(words.entry);
  }
}

void FormMain::ProcessCmd(std::string_view text) {
  RunCommandLine(text);
}

bool FormMain::RunCommandLine(std::string_view text) {
  if (IsDataFileName(text)) {
    LoadDataFile(std::string(text));
    return true;
  }
  std::string rest(text);
  SlashCommand command;
  while (ParseCmd(rest, command)) {
    if (!RunCommand(command)) return false;
  }
  return true;
}

// False for a word that ends the processing.
bool FormMain::RunCommand(const SlashCommand& command) {
  const std::string& word = command.word;
  if (word == "C") {
    EnterMode(SessionMode::Client);
  } else if (word == "S") {
    EnterMode(SessionMode::Server);
  } else if (word == "SC") {
    StartChart("");
  } else if (word == "ILS") {
    session_.Override("ILS", command.argument);
  } else if (word == "NM") {
    session_.Override("ShowMsgBox", "False");
  } else if (word == "L") {
    LoadDataFile(command.argument);
  } else if (word == "PF") {
    LoadProfile(command.argument);
  } else {
    const bool isForLater = word == "K1" || word == "K2" || word == "CN" || word == "U" || word == "N" || word == "R";
    const std::string refusal = isForLater ? "Command Line Parameter " + word +
                                                 " needs schedules or connections, which this version does not have."
                                           : "Unrecognized Command Line Parameter " + word;
    session_.Add2SLog(refusal);
    session_.Tell("Tarvolt", refusal);
    return false;
  }
  return true;
}

bool FormMain::MakeRoomForLoad() {
  if (!chartRun_.AskToSave() && !recorder_.saveFailed) return false;
  if (chartRun_.SetUnsavedAside()) return true;
  session_.Add2SLog("The last chart waits for room on the disk: no file can be loaded in its place.");
  return false;
}

bool FormMain::LoadProfile(const std::string& path) {
  std::string problem;
  if (LoadProfileFile(session_.host.files, path, session_.overrides, session_.home.string(), session_.settings,
                      problem)) {
    ReadNotes();
    UpdateAfterOptionsChange();
    AddProfileFile(session_.recent, path);
    session_.Add2SLog("Loaded Profile " + std::filesystem::path(path).filename().string());
    return true;
  }
  const std::string refusal = "Could not load the profile " + path + ": " + problem;
  session_.Add2SLog(refusal);
  session_.Tell("Tarvolt", refusal);
  return false;
}

}  // namespace tarvolt
