// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/chart/chart_look_store.h"
#include "forms/equations/form_apply_to_channels.h"
#include "forms/form_main/main_window.h"
#include "forms/look/form_colors.h"
#include "forms/look/form_fonts.h"
#include "forms/look/form_tick_grid.h"
#include "forms/plot/chart_picture.h"
#include "forms/qt_text.h"

// The dialogs and further windows that the main window opens.

namespace tarvolt {

void MainWindow::ShowTickGrid() {
  FormTickGrid dialog(window_.look.ticks, this);
  if (dialog.exec() != QDialog::Accepted) return;
  SaveTickGrid(session_, dialog.GetFromControls());
  TakeLookEverywhere();
}

void MainWindow::ShowColors() {
  FormColors dialog(
      window_.look.colors,
      [this](const ChartColors& colors) {
        SaveColors(session_, colors);
        TakeLookEverywhere();
      },
      this);
  dialog.exec();
}

void MainWindow::ShowFonts() {
  FormFonts dialog(window_.look.fonts, this);
  if (dialog.exec() != QDialog::Accepted) return;
  SaveFonts(session_, dialog.Fonts());
  TakeLookEverywhere();
}

bool MainWindow::EditEquations(const EquationsRequest& request, EquationSet& set) {
  FormApplytoChannels dialog(session_, window_, request, set, this);
  if (dialog.exec() != QDialog::Accepted) return false;
  set = dialog.Equations();
  return true;
}

bool MainWindow::DrawChart(const std::filesystem::path& file, bool fullView, std::string& problem) {
  const auto all = FullRange(window_.chart, window_.run.ChannelCount);
  return DrawChartFile(window_, fullView ? std::optional(all) : std::nullopt, ToQString(file.string()), problem);
}

// The box of a log that was closed may still wait for its deletion.
void MainWindow::OpenObserverLog() {
  if (!olog_ || !form_.OLog().IsOpen()) {
    olog_ = new FormObserverLog(session_, form_, DesktopOLogHooks([this] { CopyChartPicture(*plot_); }));
    olog_->show();
    return;
  }
  olog_->setWindowState(olog_->windowState() & ~Qt::WindowMinimized);
  olog_->show();
  olog_->raise();
  olog_->activateWindow();
}

// The log stays open to the last entry of the run, unless its text is not wanted.
bool MainWindow::ObserverLogMayEnd() {
  if (!olog_ || !form_.OLog().IsOpen() || !session_.settings.program.ShowMsgBox) return true;
  if (!olog_->MayClose()) return false;
  if (olog_ && olog_->HasUnsaved()) olog_->KillMe();
  return true;
}

}  // namespace tarvolt
