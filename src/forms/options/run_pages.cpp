// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/options/run_pages.h"

#include <QLabel>
#include <utility>

#include "forms/qt_text.h"
#include "sources/source_table.h"

namespace tarvolt {
namespace {

void AddSampling(OptionPage& page) {
  page.Group(QStringLiteral("Samples"));
  page.Line("SampleRate", QStringLiteral("Sample period"), QStringLiteral("milliseconds"));
  page.Line("vAvg", QStringLiteral("Reads averaged into a sample"));
  page.Words({}).setObjectName(QStringLiteral("LblRate"));
  page.List("TimerType", QStringLiteral("Paced by"),
            {{QStringLiteral("the timer"), "0"}, {QStringLiteral("the sound card"), "1"}});
  page.Check("StartOnSecondBoundary", QStringLiteral("Take the first sample at a whole second"));
  page.Line("AvgSamplingPeriod", QStringLiteral("Average of a channel over"), QStringLiteral("seconds"));
}

void AddLimits(OptionPage& page) {
  page.Group(QStringLiteral("Length of a log"));
  page.Line("MaxArrayCount", QStringLiteral("Max Samples"));
  page.Words({}).setObjectName(QStringLiteral("LblFileSize"));
  page.Line("MaxDuration", QStringLiteral("Max duration"), QStringLiteral("hours"));
  page.Check("Continuous", QStringLiteral("Start a new log at the limit instead of stopping"));
  QCheckBox& restart =
      page.Check("UseRestartTime", QStringLiteral("Start a new log at a time of day instead of after the duration"));
  QLineEdit& time =
      page.Line("RestartTime", QStringLiteral("Time of day"), QStringLiteral("00:00:00, in the time base of the log"));
  time.setEnabled(false);
  QObject::connect(&restart, &QCheckBox::toggled, &time, [&time](bool checked) { time.setEnabled(checked); });
}

void AddTimeBase(OptionPage& page) {
  page.Group(QStringLiteral("Time base"));
  QCheckBox& ut = page.Check("LogUsingUT", QStringLiteral("Log using UT"));
  QCheckBox& sidereal = page.Check("LogLMST", QStringLiteral("Log using local mean sidereal time"));
  sidereal.setToolTip(QStringLiteral("Local Mean Sidereal Time logging - Date determined by UT."));
  QLabel& both = page.Words(QStringLiteral("Both are on, from a profile or the command line: logs are sidereal."));
  both.setObjectName(QStringLiteral("LblBothTimeBases"));
  for (const auto& [box, other] : {std::pair(&ut, &sidereal), std::pair(&sidereal, &ut)}) {
    QObject::connect(box, &QCheckBox::clicked, other, [other = other](bool checked) {
      if (checked) other->setChecked(false);
    });
    QObject::connect(box, &QCheckBox::toggled, &both,
                     [&ut, &sidereal, &both] { both.setVisible(ut.isChecked() && sidereal.isChecked()); });
  }
  both.hide();
  page.Check("TimeRefZero", QStringLiteral("Count the time from 00:00:00 at the first sample"));
}

void AddAxes(OptionPage& page) {
  page.Group(QStringLiteral("Axes"));
  page.Line("ChartWidth", QStringLiteral("Chart Width"), QStringLiteral("seconds"));
  page.Line("ChartUpdateRate", QStringLiteral("Repaint every"), QStringLiteral("samples"));
  QCheckBox& automatic = page.Check("AutoScale", QStringLiteral("Auto-scale the y axis"));
  QLineEdit& top = page.Line("ChartYaxisMax", QStringLiteral("Top of the y axis"));
  QObject::connect(&automatic, &QCheckBox::toggled, &top, [&top](bool checked) { top.setEnabled(!checked); });
  page.Line("XALabel", QStringLiteral("X axis label"));
  page.Line("YALabel", QStringLiteral("Y axis label"));
  page.Line("YAxisLabelPrecision", QStringLiteral("Decimals of the y axis"));
  page.Check("DisplayMilliseconds", QStringLiteral("Milliseconds on the x axis"));
}

void AddMoving(OptionPage& page) {
  page.Group(QStringLiteral("Buttons and title"));
  page.Line("ClickInc", QStringLiteral("A click changes the range by"), QStringLiteral("%"));
  page.Check("ArrowButtons", QStringLiteral("Show the arrow buttons"));
  page.Check("ArrowsReverse", QStringLiteral("Reverse the arrows"));
  page.Check("ShowStatusBar", QStringLiteral("Show the status line"));
  page.Check("AutoTitle", QStringLiteral("Title the chart by itself"));
  page.Line("AutoTitleFormat", QStringLiteral("Form of that title"));
}

void AddImages(OptionPage& page) {
  page.Group(QStringLiteral("Images of the chart"));
  page.Check("SaveFTPImage", QStringLiteral("Save images of the chart"));
  page.Line("SaveFTPImagePeriod", QStringLiteral("Period of the images"), QStringLiteral("minutes"));
  page.List(
      "SaveFTPFullView", QStringLiteral("Images of"),
      {{QStringLiteral("the view"), "0"}, {QStringLiteral("all of the chart"), "1"}, {QStringLiteral("both"), "2"}});
  page.Check("AutoStartFTP", QStringLiteral("Begin when a chart starts"));
}

}  // namespace

OptionPage* MakeTimingPage(OptionFields& fields, QWidget* parent) {
  auto* page = new OptionPage(fields, parent);
  AddSampling(*page);
  AddLimits(*page);
  AddTimeBase(*page);
  page->Close();
  return page;
}

OptionPage* MakeChartPage(OptionFields& fields, QWidget* parent) {
  auto* page = new OptionPage(fields, parent);
  AddAxes(*page);
  AddMoving(*page);
  AddImages(*page);
  page->Close();
  return page;
}

void ConvertCount(QWidget& timingPage, const Settings& draft) {
  timingPage.findChild<QLabel*>(QStringLiteral("LblRate"))->setText(ToQString(ConvertCountRate(draft)));
  timingPage.findChild<QLabel*>(QStringLiteral("LblFileSize"))->setText(ToQString(ConvertCountSize(draft)));
}

}  // namespace tarvolt
