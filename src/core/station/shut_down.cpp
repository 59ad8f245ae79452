// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/station/shut_down.h"

#include "model/scoped_flag.h"

namespace tarvolt {

ShutDown::ShutDown(Recorder& recorder, ChartRun& chartRun)
    : recorder_(recorder), chartRun_(chartRun), session_(recorder.session) {}

bool ShutDown::AskToEnd() {
  if (asking_) return false;
  if (!session_.settings.program.ShowMsgBox) return true;
  const ScopedFlag asking(asking_);
  const Question question{"Tarvolt",
                          "A chart is being recorded.\nDo you want to stop the recording and end the program?",
                          Buttons::YesNo, Answer::No};
  if (recorder_.window.run.ChartRunning() && session_.host.dialogs.Ask(question) != Answer::Yes) return false;
  return recorder_.person.LetsEnd() && StopAndSave();
}

// What can go nowhere stays in its backup, and is no reason to stay.
bool ShutDown::StopAndSave() {
  recorder_.window.save.NameCancelled = false;
  chartRun_.StopChart();
  if (recorder_.window.save.NameCancelled) return false;
  const Result<bool> room = recorder_.unsaved.MakeRoom();
  return !room || *room;
}

void ShutDown::Run() {
  chartRun_.StopChart();
  recorder_.LoTime1->SetEnabled(false);
  recorder_.TimerKeepAlive->SetEnabled(false);
  recorder_.unsaved.SettleAtEnd();
  const bool isUnsaved = recorder_.unsaved.Any();
  if (isUnsaved) {
    session_.Add2SLog("Samples that the disk refused stay in the backup in " + session_.DataFolder().string());
  }
  session_.store.SaveSetting(Section::Settings, "ShutDown", isUnsaved ? "Running" : "OK");
  recorder_.window.run.AbortFlag = true;
  recorder_.window.chart.ClearData();
  recorder_.commands.look.UnloadMyInfoFile();
  SaveRecentFiles(session_.store, session_.recent);
  SaveProfileFiles(session_.store, session_.recent);
}

}  // namespace tarvolt
