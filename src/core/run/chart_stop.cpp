// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <stdexcept>

#include "core/run/average_rate.h"
#include "core/run/chart_run.h"
#include "files/backup_source.h"
#include "files/saving.h"
#include "text/number.h"

namespace tarvolt {

void ChartRun::StopChart() {
  if (run_.Starting()) run_.AbortFlag = true;  // what the start waits for is given up
  if (!run_.ChartRunning()) return;
  const bool logHasEnded = run_.MaxingOut();
  run_.phase = RunPhase::Stopping;
  StopTimers();
  recorder_.sources.Close();
  if (!logHasEnded) recorder_.events.LogEnded(LogEnd::Stopped);
  TestDcount();
  MarkDataForSaving();
  TellDropped();
  LogRate();
  ShowEnded();
  if (session_.settings.chart.AutoScale) window_.chart.AutoScale = true;
  recorder_.offsets.Close();
  AskToKeepOffsets();
  recorder_.commands.view.RememberYMax();
  recorder_.commands.view.cmdFullView();
  SaveAtStop();
  view_.Status.Say(view_.Status.Text() + "   Samples: " + NumberText(std::int64_t{run_.TotalSamples}));
  window_.chart.Mode = ChartMode::Browsing;
  recorder_.commands.look.ShowArrows();
  recorder_.events.RunEnded();
  run_.phase = RunPhase::Idle;
}

void ChartRun::TellDropped() {
  if (run_.DroppedSamples == 0) return;
  session_.Add2SLog("The clock stood or went back: " + NumberText(std::int64_t{run_.DroppedSamples}) +
                    " samples were dropped.");
  run_.DroppedSamples = 0;
}

void ChartRun::StopTimers() {
  recorder_.LoTime1->SetEnabled(false);
  run_.TickBusy = false;
  view_.Status.Release();
  recorder_.TimerKeepAlive->SetInterval(kKeepAliveIdle);
  if (window_.chart.AutoScale) window_.chart.ScaleYToData();
  ++window_.chart.RepaintRequests;
  run_.AbortFlag = true;
}

// Dcount may run ahead of what the store accepted. Ends with the index of the newest sample that has a time.
void ChartRun::TestDcount() {
  run_.Dcount = std::min(run_.Dcount, window_.chart.Count()) - 1;
  while (run_.Dcount > 0) {
    try {
      window_.chart.GetTime(run_.Dcount);
      break;
    } catch (const std::out_of_range&) {
      --run_.Dcount;
    }
  }
  run_.Dcount = std::max(run_.Dcount, 0);
}

// A mini window keeps only the last stretch of a run in the store: the backup has the rest.
bool ChartRun::HasData() const {
  return LastIndexOfRun(session_, window_) > 0;
}

void ChartRun::MarkDataForSaving() {
  if (!HasData()) return;
  if (window_.save.keeping.IsKept()) run_.DataNeedsSave = true;
}

void ChartRun::LogRate() {
  if (!HasData()) return;
  const AverageRate rate = CalcAvgRate(window_.chart, run_.TotalSamples, run_.ChartIsLMST);
  run_.StartStamp = run_.ChartIsLMST ? run_.time.startLMST : run_.time.firstStamp;
  run_.EndStamp = run_.CurrentStamp;
  session_.Add2SLog(" Chart Stopped (Avg Rate " + FormatNumber(rate.secondsPerSample, "###.##") + ")");
}

void ChartRun::ShowEnded() {
  recorder_.commands.look.UnloadMyInfoFile();
  view_.Status.Say("Ended:  " + recorder_.LocalTimeText());
}

void ChartRun::AskToKeepOffsets() {
  const Settings& settings = session_.settings;
  if (!settings.channels.UseOffsets || !run_.OffsetsChanged || !settings.program.ShowMsgBox) return;
  const Question question{"Offsets Changed",
                          "Channel offsets were changed.\nDo you want to keep these new offsets as defaults?",
                          Buttons::YesNo, Answer::No};
  if (session_.host.dialogs.Ask(question) != Answer::Yes) return;
  session_.settings.channels.DefaultChannelOffset = run_.ChannelOffset;
  SaveRegistrySettings(session_.store, session_.overrides, session_.home.string(), session_.settings);
}

void ChartRun::SaveAtStop() {
  if (HasData()) {
    recorder_.unsaved.SaveAtStop(!run_.ScheduleRunning);
  } else {
    recorder_.unsaved.NothingToSave();
  }
}

}  // namespace tarvolt
