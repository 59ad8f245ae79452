// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/plot/chart_picture.h"

#include <QClipboard>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMessageBox>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinter>
#include <QSvgGenerator>
#include <filesystem>

namespace tarvolt {
namespace {

constexpr int kLargest = 20000;
constexpr int kPictureWidth = 1200;
constexpr int kPictureHeight = 600;

/// Draws a picture of so many pixels into the middle of the device, as large as fits. Every vector form comes through
/// here. Texts are measured for the screen, so the device must count as many dots to the inch as the plot does.
bool DrawVectors(StripChartPlot& plot, QPaintDevice& device, int width, int height) {
  QCPPainter painter;
  if (!painter.begin(&device)) return false;
  painter.setMode(QCPPainter::pmVectorized);
  painter.setMode(QCPPainter::pmNoCaching);
  const QRect page = painter.viewport();
  QRect target(QPoint(), QSize(width, height).scaled(page.size(), Qt::KeepAspectRatio));
  target.moveCenter(page.center());
  painter.setViewport(target);
  painter.setWindow(0, 0, width, height);
  plot.toPainter(&painter, width, height);
  return painter.end();
}

bool SaveSvg(StripChartPlot& plot, const QString& file, int width, int height) {
  QSvgGenerator generator;
  generator.setFileName(file);
  generator.setSize(QSize(width, height));
  generator.setViewBox(QRect(0, 0, width, height));
  generator.setResolution(plot.logicalDpiX());
  return DrawVectors(plot, generator, width, height);
}

bool SavePdf(StripChartPlot& plot, const QString& file, int width, int height) {
  QPdfWriter writer(file);
  writer.setResolution(plot.logicalDpiX());
  writer.setPageLayout({QPageSize(QSize(width, height), QString(), QPageSize::ExactMatch), QPageLayout::Portrait, {}});
  return DrawVectors(plot, writer, width, height);
}

}  // namespace

bool SaveChartPicture(StripChartPlot& plot, const QString& file, int width, int height, std::string& problem) {
  if (width < 1 || height < 1 || width > kLargest || height > kLargest) {
    problem = "the size must be 1 to 20000 each way";
    return false;
  }
  const QString ending = QFileInfo(file).suffix().toLower();
  bool written = false;
  plot.TakeOver();
  if (ending == QLatin1String("png")) {
    written = plot.savePng(file, width, height);
  } else if (ending == QLatin1String("svg")) {
    written = SaveSvg(plot, file, width, height);
  } else if (ending == QLatin1String("pdf")) {
    written = SavePdf(plot, file, width, height);
  } else {
    problem = "a picture's name must end in .png, .svg or .pdf";
    return false;
  }
  if (!written) problem = "the file cannot be written";
  return written;
}

bool DrawChartFile(const ChartWindow& window, const std::optional<ChartRange>& range, const QString& file,
                   std::string& problem) {
  StripChartPlot plot(window);
  plot.ShowRange(range);
  // What reads the picture meanwhile finds the old one or the new one.
  const QString part = file + QStringLiteral(".part.") + QFileInfo(file).suffix();
  if (!SaveChartPicture(plot, part, kPictureWidth, kPictureHeight, problem)) {
    QFile::remove(part);
    return false;
  }
  std::error_code error;
  std::filesystem::rename(part.toStdString(), file.toStdString(), error);
  if (error) problem = error.message();
  return !error;
}

void CopyChartPicture(StripChartPlot& plot) {
  plot.TakeOver();
  QGuiApplication::clipboard()->setPixmap(plot.toPixmap());
}

bool PrintChartOn(StripChartPlot& plot, QPrinter& printer) {
  printer.setResolution(plot.logicalDpiX());
  plot.TakeOver();
  return DrawVectors(plot, printer, plot.width(), plot.height());
}

void PrintChart(StripChartPlot& plot) {
  QPrinter printer;
  printer.setPageOrientation(QPageLayout::Landscape);
  QPrintDialog dialog(&printer, &plot);
  if (dialog.exec() != QDialog::Accepted || PrintChartOn(plot, printer)) return;
  QMessageBox::warning(&plot, QStringLiteral("Print"), QStringLiteral("The chart cannot be printed."));
}

}  // namespace tarvolt
