// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/form_main.h"

#include "core/chart/command_states.h"
#include "core/run/observer_entries.h"
#include "core/station/command_runner.h"
#include "core/station/start_up.h"
#include "core/station/station_names.h"

namespace tarvolt {

FormMain::FormMain(Session& session, Person& person)
    : session_(session),
      recorder_(session, *this, person, [this](std::optional<TimeStamp> time) { pipeline_.GetAllData(time); }),
      chartRun_(recorder_),
      pipeline_(recorder_),
      soundClock_(recorder_, chartRun_, pipeline_),
      keepAlive_(recorder_, chartRun_),
      shutDown_(recorder_, chartRun_),
      options_(recorder_, chartRun_),
      profiles_(session, [this] { options_.UpdateAfterOptionsChange(); }),
      loads_(session, recorder_.window, recorder_.commands, person, [this] { return MakeRoomForLoad(); }),
      equations_(recorder_, [this] { mnuSave(); }),
      sound_(recorder_),
      recovered_(recorder_, loads_) {
  EventLoop& loop = session_.host.loop;
  recorder_.LoTime1 = loop.MakeTimer([this] { pipeline_.TimerTick(); });
  recorder_.TimerKeepAlive = loop.MakeTimer([this] { keepAlive_.Fire(); });
  recorder_.TimerKeepAlive->SetInterval(kKeepAliveIdle);
  recorder_.TimerKeepAlive->SetEnabled(true);
  recorder_.images.OnSaved([this](const std::string& name) { EnterImageSaved(session_, recorder_.window, name); });
  recorder_.window.olog.OnOpen([&person] { person.OpenObserverLog(); });
}

FormMain::~FormMain() = default;

bool FormMain::Form_Load(const std::string& commandLine) {
  if (!StartUp(recorder_, chartRun_).Run()) return false;
  ProcessCmd(commandLine);
  return true;
}

void FormMain::Form_Unload() {
  shutDown_.Run();
}

void FormMain::StartChart(const std::string& profile) {
  if (recorder_.window.Mode == SessionMode::Client) {
    session_.LogAndTell("Tarvolt", "A chart cannot be started in Client Mode.");
    return;
  }
  chartRun_.StartChart(profile);
  NameSessionLog(session_, recorder_.window);
}

void FormMain::StopChart() {
  chartRun_.StopChart();
}

void FormMain::MaxedOut(MaxedOutMode mode) {
  chartRun_.MaxedOut(mode);
}

void FormMain::Escape() {
  recorder_.average.StopAvgSampling();
  recorder_.commands.look.ClearValueDisplay();
  recorder_.window.run.AbortFlag = true;
  recorder_.window.run.CancelSchedule = true;
}

void FormMain::RequestEnd() {
  recorder_.window.run.EndRequested = true;
  Escape();
  StopChart();
}

void FormMain::mnuExit() {
  if (shutDown_.AskToEnd()) RequestEnd();
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
  if (!StatesOf(recorder_.window).ModeMenus) {
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
  RunCommandLine(*this, session_, text);
}

bool FormMain::MakeRoomForLoad() {
  const Result<bool> room = recorder_.unsaved.MakeRoom();
  if (room) return *room;
  session_.Add2SLog(room.Words());
  session_.Tell("Tarvolt", room.Words());
  return false;
}

}  // namespace tarvolt
