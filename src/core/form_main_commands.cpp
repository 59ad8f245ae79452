// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/chart/command_states.h"
#include "core/form_main.h"
#include "files/backup_source.h"
#include "files/saving.h"
#include "model/scoped_flag.h"

namespace tarvolt {

void FormMain::cmdStart() {
  if (!StatesOf(recorder_.window).cmdStart) return;
  if (recorder_.window.run.Starting()) return Escape();
  if (!recorder_.window.run.ChartRunning()) return StartChart("");
  StopChart();
}

void FormMain::mnuSave() {
  ChartWindow& window = recorder_.window;
  if (!StatesOf(window).mnuSave) return;
  if (window.run.ChartRunning() && LastIndexOfRun(session_, window) < 2) {
    session_.Tell("Tarvolt", "There is not enough data to save.");
    return;
  }
  if (window.run.ChartRunning()) {
    const ScopedFlag force(window.run.ForceSave);
    MaxedOut(MaxedOutMode::LimitReached);
    return;
  }
  recorder_.unsaved.SaveAsked();
}

void FormMain::cmdSaveView() {
  if (StatesOf(recorder_.window).SaveView) SaveView(session_, recorder_.window);
}

}  // namespace tarvolt
