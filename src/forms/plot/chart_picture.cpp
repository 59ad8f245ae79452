#include "forms/plot/chart_picture.h"

#include <QClipboard>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPrintDialog>
#include <QPrinter>
#include <QSvgGenerator>
#include <filesystem>

namespace tarvolt {
namespace {

constexpr int kLargest = 20000;
constexpr int kPictureWidth = 1200;
constexpr int kPictureHeight = 600;

bool SaveSvg(StripChartPlot& plot, const QString& file, int width, int height) {
  QSvgGenerator generator;
  generator.setFileName(file);
  generator.setSize(QSize(width, height));
  generator.setViewBox(QRect(0, 0, width, height));
  QCPPainter painter;
  if (!painter.begin(&generator)) return false;
  painter.setMode(QCPPainter::pmVectorized);
  painter.setMode(QCPPainter::pmNoCaching);
  plot.toPainter(&painter, width, height);
  return painter.end();
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
    written = plot.savePdf(file, width, height);
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

void PrintChart(StripChartPlot& plot) {
  QPrinter printer(QPrinter::HighResolution);
  printer.setPageOrientation(QPageLayout::Landscape);
  QPrintDialog dialog(&printer, &plot);
  if (dialog.exec() != QDialog::Accepted) return;
  QCPPainter painter(&printer);
  painter.setMode(QCPPainter::pmVectorized);
  painter.setMode(QCPPainter::pmNoCaching);
  const QRectF page = painter.viewport();
  const double scale = std::min(page.width() / plot.width(), page.height() / plot.height());
  painter.scale(scale, scale);
  plot.TakeOver();
  plot.toPainter(&painter, plot.width(), plot.height());
}

}  // namespace tarvolt
