// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/chart/picture_commands.h"

#include <QFileDialog>
#include <QMessageBox>

#include "forms/plot/chart_picture.h"
#include "forms/qt_text.h"

namespace tarvolt {
namespace {

void AskAndSave(StripChartPlot& plot, const PictureSaved& saved) {
  QString name =
      QFileDialog::getSaveFileName(&plot, QStringLiteral("Save Chart as Picture"), QStringLiteral("chart.png"),
                                   QStringLiteral("PNG (*.png);;SVG (*.svg);;PDF (*.pdf)"));
  if (name.isEmpty()) return;
  if (QFileInfo(name).suffix().isEmpty()) name += QStringLiteral(".png");
  std::string problem;
  if (SaveChartPicture(plot, name, plot.width(), plot.height(), problem)) {
    if (saved) saved(PathFromQString(name));
    return;
  }
  QMessageBox::warning(&plot, QStringLiteral("Save Chart as Picture"),
                       name + QStringLiteral(": ") + ToQString(problem));
}

}  // namespace

void AddPictureCommands(QMenu& menu, StripChartPlot& plot, const PictureSaved& saved) {
  StripChartPlot* chart = &plot;
  menu.addAction(QStringLiteral("Save as &Picture..."), chart, [chart, saved] { AskAndSave(*chart, saved); })
      ->setObjectName(QStringLiteral("mnuSavePicture"));
  menu.addAction(QStringLiteral("&Copy Picture"), QKeySequence::Copy, chart, [chart] { CopyChartPicture(*chart); })
      ->setObjectName(QStringLiteral("mnuCopyPicture"));
  menu.addAction(QStringLiteral("&Print..."), QKeySequence::Print, chart, [chart] { PrintChart(*chart); })
      ->setObjectName(QStringLiteral("mnuPrint"));
}

}  // namespace tarvolt
