#include "core/form_main.h"

namespace tarvolt {

void FormMain::Form_Unload() {
  StopChart();
  recorder_.pending.SaveAll();
  chartRun_.RetrySaves();
  session_.store.SaveSetting(Section::Settings, "ShutDown", HasUnsavedSamples() ? "Running" : "OK");
  recorder_.LoTime1->SetEnabled(false);
  recorder_.TimerKeepAlive->SetEnabled(false);
  if (!recorder_.saveFailed) chartRun_.AskToSave();
  if (HasUnsavedSamples()) {
    session_.Add2SLog("Samples that the disk refused stay in the backup in " + session_.DataFolder().string());
    session_.store.SaveSetting(Section::Settings, "ShutDown", "Running");
  }
  recorder_.window.run.AbortFlag = true;
  recorder_.window.chart.ClearData();
  recorder_.commands.UnloadMyInfoFile();
  SaveRecentFiles(session_.store, session_.recent);
  SaveProfileFiles(session_.store, session_.recent);
}

}  // namespace tarvolt
