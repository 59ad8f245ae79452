// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <QPainter>
#include <QPrinter>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <cmath>
#include <limits>
#include <random>

#include "display/chart_steps.h"
#include "forms/plot/chart_colors.h"
#include "forms/plot/chart_picture.h"
#include "forms/plot/strip_chart_plot.h"

namespace tarvolt {
namespace {

constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();
constexpr int kWidth = 700;
constexpr int kHeight = 400;

// A window with one channel of these values, one each second, all of it in view.
ChartWindow WindowOf(const std::vector<double>& values) {
  ChartWindow window;
  window.chart.SetChannelCount(1);
  window.chart.SetCapacity(static_cast<std::int32_t>(values.size()));
  window.chart.LegendShown = false;
  window.run.ChannelCount = 1;
  for (std::size_t i = 0; i < values.size(); ++i) {
    window.chart.AddTime(40000 + static_cast<double>(i) / 86400);
    window.chart.SetValue(0, static_cast<std::int32_t>(i), values[i]);
  }
  FitX(window.chart);
  FitY(window.chart, 1);
  return window;
}

QImage Draw(StripChartPlot& plot) {
  plot.TakeOver();
  plot.setViewport(QRect(0, 0, kWidth, kHeight));
  return plot.toPixmap(kWidth, kHeight).toImage().convertToFormat(QImage::Format_RGB32);
}

struct Extent {
  int top = kHeight;
  int bottom = -1;
};

// Where the colour stands in each column of pixels.
std::vector<Extent> ExtentsOf(const QImage& image, const QColor& color) {
  std::vector<Extent> extents(static_cast<std::size_t>(image.width()));
  for (int x = 0; x < image.width(); ++x) {
    for (int y = 0; y < image.height(); ++y) {
      if (image.pixel(x, y) != color.rgb()) continue;
      extents[x].top = std::min(extents[x].top, y);
      extents[x].bottom = std::max(extents[x].bottom, y);
    }
  }
  return extents;
}

// Every sample joined with the next, drawn by the same axes.
QImage DrawEverySample(const StripChartPlot& plot, const ChartWindow& window) {
  QImage image(kWidth, kHeight, QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  painter.setClipRect(plot.axisRect()->rect());
  painter.setPen(QPen(ColorOf(window.look.colors.PenColor[0]), 1));
  QPolygonF line;
  for (std::int32_t i = 0; i <= window.chart.Count(); ++i) {
    const double value = i < window.chart.Count() ? window.chart.GetValue(0, i) : kNotANumber;
    if (std::isnan(value)) {
      painter.drawPolyline(line);
      line.clear();
      continue;
    }
    line << QPointF(plot.xAxis->coordToPixel(window.chart.GetTime(i)), plot.yAxis->coordToPixel(value));
  }
  return image;
}

TEST(Plot, ThePyramidDrawsThePictureOfEverySample) {
  std::mt19937 engine(11);
  std::normal_distribution<double> noise(0, 1);
  for (const int samples : {300, 3000, 40000, 200000}) {
    std::vector<double> values;
    for (int i = 0; i < samples; ++i) {
      const bool spike = i % (samples / 5) == samples / 7;
      values.push_back(std::sin(i * 6.0 / samples) * 10 + noise(engine) + (spike ? 40 : 0));
    }
    const ChartWindow window = WindowOf(values);
    StripChartPlot plot(window);
    const QColor color = ColorOf(window.look.colors.PenColor[0]);
    const std::vector<Extent> drawn = ExtentsOf(Draw(plot), color);
    const std::vector<Extent> wanted = ExtentsOf(DrawEverySample(plot, window), color);
    const QRect area = plot.axisRect()->rect();
    int differing = 0;
    constexpr int kTicks = 8;  // pixels at the edges, where the ticks lie over the channel
    for (int x = area.left() + kTicks; x < area.right() - kTicks; ++x) {
      ASSERT_GE(drawn[x].bottom, 0) << samples << ": nothing in column " << x;
      // A pixel of rounding, and one column more or less for a line that runs between two of them.
      const int top = std::min({wanted[x - 1].top, wanted[x].top, wanted[x + 1].top});
      const int bottom = std::max({wanted[x - 1].bottom, wanted[x].bottom, wanted[x + 1].bottom});
      EXPECT_GE(drawn[x].top, top - 1) << samples << " column " << x;
      EXPECT_LE(drawn[x].bottom, bottom + 1) << samples << " column " << x;
      if (std::abs(drawn[x].top - wanted[x].top) > 1 || std::abs(drawn[x].bottom - wanted[x].bottom) > 1) ++differing;
    }
    EXPECT_LT(differing, area.width() / 20) << samples;
    const auto highest = [](const std::vector<Extent>& extents) {
      int top = kHeight;
      for (const Extent& extent : extents) top = std::min(top, extent.top);
      return top;
    };
    EXPECT_NEAR(highest(drawn), highest(wanted), 1) << "a spike of one sample is never lost";
  }
}

TEST(Plot, AValueThatIsNoNumberBreaksTheLine) {
  std::vector<double> values(20, 5);
  for (int i = 5; i < 15; ++i) values[i] = kNotANumber;
  const ChartWindow window = WindowOf(values);
  StripChartPlot plot(window);
  const auto drawn = ExtentsOf(Draw(plot), ColorOf(window.look.colors.PenColor[0]));
  const QRect area = plot.axisRect()->rect();
  EXPECT_GE(drawn[area.left() + area.width() / 10].bottom, 0);
  EXPECT_LT(drawn[area.center().x()].bottom, 0) << "nothing is drawn in the gap";
  EXPECT_GE(drawn[area.right() - area.width() / 10].bottom, 0);
}

TEST(Plot, SurvivesEveryKindOfData) {
  for (const std::vector<double>& values : {std::vector<double>{},
                                            {5},
                                            {7, 7, 7},
                                            {kNotANumber},
                                            {kNotANumber, kNotANumber, kNotANumber},
                                            {1e300, -1e300, 0},
                                            {std::numeric_limits<double>::max(), -std::numeric_limits<double>::max()},
                                            {std::numeric_limits<double>::infinity(), 1, 2},
                                            {5e-324, 0, 5e-324}}) {
    ChartWindow window = WindowOf(values);
    window.chart.LegendShown = true;
    StripChartPlot plot(window);
    const QImage image = Draw(plot);
    EXPECT_FALSE(image.isNull());
    EXPECT_EQ(plot.legend->itemCount(), values.empty() ? 0 : 1);
    if (values == std::vector<double>{5}) {
      const auto drawn = ExtentsOf(image, ColorOf(window.look.colors.PenColor[0]));
      EXPECT_TRUE(std::any_of(drawn.begin(), drawn.end(), [](const Extent& extent) { return extent.bottom >= 0; }))
          << "one sample is a point";
    }
    IncX(window.chart, 100);
    IncY(window.chart, 100);
    ScrollRight(window.chart);
    EXPECT_FALSE(Draw(plot).isNull());
  }
}

// The words of a PDF of one page and where they stand, in points.
std::vector<std::pair<QString, QRectF>> WordsOf(const QString& pdf) {
  QProcess reader;
  reader.start("pdftotext", {"-bbox", pdf, "-"});
  EXPECT_TRUE(reader.waitForFinished());
  static const QRegularExpression kWord(R"xml(<word xMin="(.*?)" yMin="(.*?)" xMax="(.*?)" yMax="(.*?)">(.*?)<)xml");
  std::vector<std::pair<QString, QRectF>> words;
  for (const QRegularExpressionMatch& word : kWord.globalMatch(reader.readAllStandardOutput())) {
    const auto number = [&word](int at) { return word.captured(at).toDouble(); };
    words.push_back({word.captured(5), QRectF(QPointF(number(1), number(2)), QPointF(number(3), number(4)))});
  }
  return words;
}

TEST(Plot, APrintIsThePictureInTheMiddleOfThePage) {
  if (QStandardPaths::findExecutable("pdftotext").isEmpty()) GTEST_SKIP() << "no pdftotext to read the PDF with";
  const ChartWindow window = WindowOf({1, 5, 2, 8, 3});
  StripChartPlot plot(window);
  plot.resize(kWidth, kHeight);
  QTemporaryDir folder;
  QPrinter printer(QPrinter::HighResolution);
  printer.setOutputFileName(folder.filePath("print.pdf"));
  printer.setPageOrientation(QPageLayout::Landscape);
  ASSERT_TRUE(PrintChartOn(plot, printer));
  std::string problem;
  ASSERT_TRUE(SaveChartPicture(plot, folder.filePath("saved.pdf"), kWidth, kHeight, problem)) << problem;
  const auto printed = WordsOf(folder.filePath("print.pdf"));
  const auto saved = WordsOf(folder.filePath("saved.pdf"));
  ASSERT_EQ(printed.size(), saved.size());
  ASSERT_GT(saved.size(), 7u) << "the ticks of both axes";
  EXPECT_NEAR(saved[0].second.height(), 14, 5) << "letters of a size to read";
  const QRectF page = printer.pageLayout().fullRectPoints();
  const double scale = printed[0].second.width() / saved[0].second.width();
  EXPECT_GT(scale * kWidth, page.width() * 0.85) << "as large as the margins leave it";
  for (std::size_t i = 0; i < saved.size(); ++i) {
    EXPECT_EQ(printed[i].first, saved[i].first);
    const QPointF wanted = page.center() + (saved[i].second.center() - QPointF(kWidth, kHeight) / 2) * scale;
    EXPECT_LT(QLineF(wanted, printed[i].second.center()).length(), 3) << saved[i].first.toStdString();
  }
}

TEST(Plot, PicturesAreWrittenInTheFormOfTheirName) {
  const ChartWindow window = WindowOf({1, 5, 2, 8, 3});
  StripChartPlot plot(window);
  QTemporaryDir folder;
  std::string problem;
  const auto beginning = [](const QString& name) {
    QFile file(name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.read(200);
  };
  ASSERT_TRUE(SaveChartPicture(plot, folder.filePath("a.png"), 500, 300, problem)) << problem;
  EXPECT_EQ(QImage(folder.filePath("a.png")).size(), QSize(500, 300));
  ASSERT_TRUE(SaveChartPicture(plot, folder.filePath("a.svg"), 500, 300, problem)) << problem;
  EXPECT_TRUE(beginning(folder.filePath("a.svg")).contains("<svg"));
  EXPECT_FALSE(SaveChartPicture(plot, folder.filePath("a.bmp"), 500, 300, problem));
  EXPECT_FALSE(SaveChartPicture(plot, folder.filePath("a.png"), 0, 300, problem));
  EXPECT_FALSE(SaveChartPicture(plot, folder.filePath("no/where.png"), 500, 300, problem));
  EXPECT_FALSE(problem.empty());
}

}  // namespace
}  // namespace tarvolt
