// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QDropEvent>
#include <QMimeData>
#include <QTreeWidget>
#include <QtTest>
#include <string_view>

#include "forms/desk.h"
#include "forms/plot/qcp.h"

namespace tarvolt {
namespace {

// What can be chosen in which states of the window: idle, armed, running, stopped, loaded.
struct Choice {
  const char* command;
  const char* states;
};
constexpr Choice kChoices[] = {
    {"mnuStartChart", "iarsl"}, {"cmdStart", "iarsl"},   {"mnuLoadProfile", "iarsl"}, {"MnuLoadDataFile", "isl"},
    {"mnuStandAlone", "isl"},   {"mnuServer", "isl"},    {"mnuClient", "isl"},        {"mnuSave", "rsl"},
    {"mnuSaveView", "sl"},      {"cmdSaveView", "sl"},   {"cmdInfo", "sl"},           {"mnuDataFileInfo", "sl"},
    {"mnuFullView", "rsl"},     {"cmdFullView", "rsl"},  {"cmdOffset", "ar"},         {"mnuRecallXY", "s"},
    {"mnuChartView", "rsl"},    {"mnuCH1", "ar"},        {"mnuAvgCH1", "ar"},         {"cmdLeft", "rsl"},
    {"cmdCursor", "rsl"},       {"mnuRememberXY", "rsl"}};

TEST(MainWindow, CommandsAreEnabledThroughIdleArmedRunningStoppedAndLoaded) {
  Desk desk;
  const auto expect = [&](char state) {
    for (const Choice& choice : kChoices) {
      const auto* button = desk.window->findChild<QAbstractButton*>(QString::fromLatin1(choice.command));
      const bool enabled = button != nullptr ? button->isEnabled() : desk.Action(choice.command)->isEnabled();
      EXPECT_EQ(enabled, std::string_view(choice.states).find(state) != std::string_view::npos)
          << choice.command << " in " << state;
    }
  };
  expect('i');
  desk.Click("cmdStart");
  EXPECT_EQ(desk.station.Run().chartState(), ChartState::Armed);
  expect('a');
  desk.Record(20);
  expect('r');
  desk.Click("cmdStart");
  expect('s');
  desk.station.host.dialogs.ChooseFileNext(desk.station.FilesSaved().at(0));
  desk.Choose("MnuLoadDataFile");
  EXPECT_TRUE(desk.station.Form().Window().save.keeping.LoadedFromFile);
  expect('l');
}

TEST(MainWindow, SaysWhatTheRunDoes) {
  Desk desk;
  const auto starts = [&](const char* label, const char* text) {
    EXPECT_TRUE(desk.LabelText(label).starts_with(text)) << desk.LabelText(label);
  };
  EXPECT_EQ(desk.Find<QAbstractButton>("cmdStart")->text(), "&Start Chart");
  EXPECT_EQ(desk.Action("mnuStartChart")->text(), "Start New Chart");
  desk.Choose("mnuStartChart");
  desk.Record(35);
  EXPECT_EQ(desk.Find<QAbstractButton>("cmdStart")->text(), "&Stop Chart");
  EXPECT_EQ(desk.Action("mnuStartChart")->text(), "Stop Chart");
  EXPECT_TRUE(desk.window->windowTitle().startsWith(" New Chart Started: "));
  starts("lblLeftStatus", "Data Samp/Sec 10.");
  starts("lblStatus", "Started 12:00:00 UT");
  starts("lblRightStatus", "12:00:03 UT");
  desk.Choose("mnuCH2");
  desk.Record(36);
  EXPECT_EQ(desk.LabelText("LBLCHVAL"), "  CH2 -35");
  QTest::keyClick(desk.window.get(), Qt::Key_Escape);
  EXPECT_EQ(desk.LabelText("LBLCHVAL"), "");
  desk.Choose("mnuStartChart");
  EXPECT_TRUE(desk.LabelText("lblStatus").ends_with("   Samples: 36")) << desk.LabelText("lblStatus");
}

TEST(MainWindow, AMessageThatNobodyReadsHoldsNothingUp) {
  Desk desk([](Station& station) { station.Set("Dsrc0", 0); });
  desk.Click("cmdStart");
  EXPECT_TRUE(desk.station.host.dialogs.HasShown("You must select a data source for channel one."));
  EXPECT_EQ(desk.station.host.dialogs.Questions(), 0);
  EXPECT_TRUE(desk.Find<QAbstractButton>("cmdStart")->isEnabled());
}

TEST(MainWindow, ToolsScrollAndZoomWhileItRecords) {
  Desk desk([](Station& station) { station.Set("ChartWidth", 5); });
  desk.Click("cmdStart");
  desk.Record(200);
  for (const char* name : {"cmdLeft", "cmdIncX", "cmdDecX", "cmdIncY", "cmdDecY", "cmdUp", "cmdDown", "cmdRight"}) {
    const ChartRange before = RangeOf(desk.Chart());
    QTest::mousePress(desk.Find<QToolButton>(name), Qt::LeftButton);
    QTest::mouseRelease(desk.Find<QToolButton>(name), Qt::LeftButton);
    EXPECT_NE(RangeOf(desk.Chart()), before) << name;
  }
  desk.Settle();
  EXPECT_FALSE(desk.Find<QToolButton>("cmdAutoScrollEnable")->isChecked());
  EXPECT_EQ(desk.LabelText("lblStatus"), "Drag Mode - Plot Button Resumes");
  for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down}) {
    const ChartRange before = RangeOf(desk.Chart());
    QTest::keyClick(desk.window.get(), key);
    EXPECT_NE(RangeOf(desk.Chart()), before) << key;
  }
  desk.Record(260);
  EXPECT_EQ(desk.Chart().Count(), 260);
  desk.Click("cmdAutoScrollEnable");
  EXPECT_EQ(desk.Chart().XAxisMax, desk.Chart().GetTime(259));
  EXPECT_TRUE(desk.Find<QToolButton>("cmdAutoScrollEnable")->isChecked());
  desk.Choose("mnuFullView");
  EXPECT_EQ(desk.Chart().XAxisMin, desk.Chart().GetTime(0));
}

// The mouse over the plot of a stopped run.
class Mouse : public testing::Test {
 protected:
  Mouse() {
    desk.Click("cmdStart");
    desk.Record(100);
    desk.Click("cmdStart");
    plot = desk.Find<QCustomPlot>("iStripChartX1");
    Move(At(0.5, 0.5));  // the axes stand as the chart does
  }

  QPoint At(double part, double height) const {
    const QRect area = plot->axisRect()->rect();
    return QPoint(area.left() + qRound(area.width() * part), area.top() + qRound(area.height() * height));
  }

  void Wheel(const QPoint& at, int turned, Qt::KeyboardModifiers keys = {}) {
    QWheelEvent event(at, plot->mapToGlobal(at), {}, QPoint(0, turned), Qt::NoButton, keys, Qt::NoScrollPhase, false);
    QApplication::sendEvent(plot, &event);
  }

  double Span() { return desk.Chart().XAxisMax - desk.Chart().XAxisMin; }

  void Move(const QPoint& at, Qt::MouseButtons buttons = Qt::NoButton) {
    QMouseEvent event(QEvent::MouseMove, at, plot->mapToGlobal(at), Qt::NoButton, buttons, Qt::NoModifier);
    QApplication::sendEvent(plot, &event);
  }

  Desk desk;
  QCustomPlot* plot;
};

TEST_F(Mouse, WheelZoomsAboutThePointer) {
  const double span = Span();
  const double under = plot->xAxis->pixelToCoord(At(0.25, 0.5).x());
  Wheel(At(0.25, 0.5), 120);
  EXPECT_NEAR(Span(), span / 1.25, span * 1e-6);
  EXPECT_NEAR((under - desk.Chart().XAxisMin) / Span(), 0.25, 0.01) << "what is under the pointer stays there";
  Wheel(At(0.25, 0.5), -120);
  EXPECT_NEAR(Span(), span, span * 1e-6);
  const double height = desk.Chart().YAxisMax - desk.Chart().YAxisMin;
  Wheel(At(0.5, 0.5), 240, Qt::ShiftModifier);
  EXPECT_LT(desk.Chart().YAxisMax - desk.Chart().YAxisMin, height);
  EXPECT_NEAR(Span(), span, span * 1e-6);
}

TEST_F(Mouse, DraggingPansABandZoomsAndADoubleClickShowsAll) {
  const ChartRange all = RangeOf(desk.Chart());
  QTest::mousePress(plot, Qt::LeftButton, {}, At(0.5, 0.5));
  Move(At(0.25, 0.5), Qt::LeftButton);
  QTest::mouseRelease(plot, Qt::LeftButton, {}, At(0.25, 0.5));
  EXPECT_NEAR((desk.Chart().XAxisMin - all.xMin) / (all.xMax - all.xMin), 0.25, 0.01);
  QTest::mouseDClick(plot, Qt::LeftButton, {}, At(0.5, 0.5));
  QTest::mouseRelease(plot, Qt::LeftButton, {}, At(0.5, 0.5));
  EXPECT_EQ(desk.Chart().XAxisMin, all.xMin);
  desk.Settle();
  QTest::mousePress(plot, Qt::RightButton, {}, At(0.2, 0.2));
  Move(At(0.6, 0.7), Qt::RightButton);
  QTest::mouseRelease(plot, Qt::RightButton, {}, At(0.6, 0.7));
  EXPECT_NEAR((desk.Chart().XAxisMin - all.xMin) / (all.xMax - all.xMin), 0.2, 0.01);
  EXPECT_NEAR((desk.Chart().XAxisMax - all.xMin) / (all.xMax - all.xMin), 0.6, 0.01);
  EXPECT_NEAR((all.yMax - desk.Chart().YAxisMax) / (all.yMax - all.yMin), 0.2, 0.01);
}

TEST_F(Mouse, TheCursorToolTellsTheSampleAndSetsTheMarker) {
  desk.Click("cmdCursor");
  EXPECT_TRUE(desk.Find<QToolButton>("cmdCursor")->isChecked());
  Move(At(0.5, 0.1));
  desk.Settle();
  EXPECT_TRUE(desk.LabelText("lblStatus").starts_with("CH1   12:00:0")) << desk.LabelText("lblStatus");
  desk.Choose("mnuSetTimeMarker");
  EXPECT_TRUE(desk.Chart().TimeMarker.has_value());
  Move(At(0.7, 0.1));
  desk.Settle();
  EXPECT_NE(desk.LabelText("lblStatus").find("From Time Marker: 00:00:0"), std::string::npos);
  desk.Choose("mnuRemoveTimeMarker");
  EXPECT_FALSE(desk.Chart().TimeMarker.has_value());
  desk.Click("cmdCursor");
  EXPECT_EQ(desk.Chart().Mode, ChartMode::Browsing);
}

TEST(MainWindow, OffsetsAreMovedInTheirFrameDuringARun) {
  Desk desk;
  desk.Click("cmdStart");
  desk.Record(10);
  EXPECT_FALSE(desk.Find<QFrame>("FrameOffset")->isVisible());
  desk.Click("cmdOffset");
  EXPECT_TRUE(desk.Find<QFrame>("FrameOffset")->isVisible());
  QTest::mouseClick(desk.Find<QToolButton>("cmdOffSetUp"), Qt::LeftButton);
  EXPECT_EQ(desk.station.Run().ChannelOffset[0], 1);
  auto* value = desk.Find<QLineEdit>("TxtOffset");
  value->setFocus();
  value->selectAll();
  QTest::keyClicks(value, "-7.5");
  QTest::keyClick(value, Qt::Key_Return);
  EXPECT_EQ(desk.station.Run().ChannelOffset[0], -7.5);
  desk.Click("cmdStart");
  EXPECT_FALSE(desk.Find<QFrame>("FrameOffset")->isVisible());
}

TEST(MainWindow, KeysAreThoseOfTheSystem) {
  Desk desk;
  for (const auto& [name, key] : {std::pair("mnuStartChart", Qt::Key_F8), std::pair("mnuFullView", Qt::Key_F9),
                                  std::pair("mnuAutoScroll", Qt::Key_F11), std::pair("mnuAutoScale", Qt::Key_F12)})
    EXPECT_EQ(desk.Action(name)->shortcut(), QKeySequence(key)) << name;
  EXPECT_EQ(desk.Action("mnuExit")->shortcut(), QKeySequence("Ctrl+Q"));
  const auto press = [&](Qt::Key key) { QTest::keyClick(desk.window.get(), key, Qt::ShiftModifier); };
  press(Qt::Key_F4);
  EXPECT_EQ(desk.LabelText("lblStatus"), "IP = 192.0.2.7");
  press(Qt::Key_F5);
  EXPECT_EQ(desk.LabelText("lblStatus"), "No Message Received ");
  press(Qt::Key_F3);
  EXPECT_FALSE(desk.window->statusBar()->isVisible());
  desk.Click("cmdStart");
  desk.Record(5);
  press(Qt::Key_F5);
  EXPECT_TRUE(desk.LabelText("lblStatus").starts_with("Last Msg: ^^")) << desk.LabelText("lblStatus");
  QTest::keyClick(desk.window.get(), Qt::Key_2, Qt::AltModifier | Qt::KeypadModifier);
  EXPECT_EQ(desk.LabelText("lblStatus"), "Getting Average for CH2");
}

TEST(MainWindow, ADataFileDroppedOnItIsLoaded) {
  Desk desk;
  desk.Click("cmdStart");
  desk.Record(50);
  desk.Click("cmdStart");
  const std::string file = desk.station.FilesSaved().at(0);
  const auto drop = [&desk](const std::string& name) {
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(QString::fromStdString(name))});
    QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(desk.window.get(), &enter);
    QDropEvent event(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(desk.window.get(), &event);
    desk.Settle();
  };
  drop("/station/notes.txt");
  EXPECT_FALSE(desk.station.Form().Window().save.keeping.LoadedFromFile);
  drop(file);
  EXPECT_TRUE(desk.station.Form().Window().save.keeping.LoadedFromFile);
  EXPECT_EQ(desk.Chart().Count(), 50);
  EXPECT_TRUE(desk.window->windowTitle().contains("  File: "));
}

TEST(MainWindow, ClosingItEndsTheRunAndSaves) {
  Desk desk;
  desk.Click("cmdStart");
  desk.Record(40);
  desk.window->close();
  EXPECT_TRUE(desk.window->isVisible()) << "it is asked about, and recording goes on by default";
  desk.station.host.dialogs.AnswerNext(Answer::Yes);
  desk.window->close();
  desk.Settle();
  EXPECT_TRUE(desk.station.Run().EndRequested);
  EXPECT_EQ(desk.station.FilesSaved().size(), 1u);
}

TEST(MainWindow, ProfilesAreSavedLoadedAndRemembered) {
  Desk desk;
  desk.station.TheSession().settings.timing.ChartWidth = 77;
  desk.station.host.dialogs.ChooseFileNext("/station/night.tvp");
  desk.Choose("mnuSaveProfile");
  desk.station.TheSession().settings.timing.ChartWidth = 5;
  desk.station.host.dialogs.ChooseFileNext("/station/night.tvp");
  desk.Choose("mnuLoadProfile");
  EXPECT_EQ(desk.station.TheSession().settings.timing.ChartWidth, 77);
  EXPECT_TRUE(desk.station.Logged("Loaded Profile night.tvp"));
  EXPECT_EQ(desk.station.TheSession().recent.profiles[0], "/station/night.tvp");
  desk.station.host.dialogs.ChooseFileNext("/station/none.tvp");
  desk.Choose("mnuLoadProfile");
  EXPECT_TRUE(desk.station.host.dialogs.HasShown("Could not load the profile /station/none.tvp"));
}

TEST(MainWindow, RealTimePriorityIsAskedAboutFirst) {
  Desk desk;
  desk.station.host.dialogs.AnswerNext(Answer::No);
  desk.Choose("mnuPriorityRealTime");
  EXPECT_FALSE(desk.station.Logged("Priority is set to"));
  desk.Choose("mnuPriorityHigh");
  EXPECT_TRUE(desk.station.Logged("Priority is set to"));
  EXPECT_EQ(desk.station.host.dialogs.Questions(), 1);
}

TEST(MainWindow, ReviewWindowsAreFiveAtMostAndShowWhatIsLoaded) {
  Desk desk;
  desk.Click("cmdStart");
  desk.Record(50);
  desk.Click("cmdStart");
  for (int i = 0; i < 7; ++i) desk.Choose("mnuReview");
  std::vector<FormReview*> reviews;
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    if (auto* review = dynamic_cast<FormReview*>(widget)) reviews.push_back(review);
  }
  ASSERT_EQ(reviews.size(), 5u);
  EXPECT_TRUE(reviews[0]->Review().LoadDataFile(desk.station.FilesSaved().at(0)));
  desk.Settle();
  EXPECT_EQ(reviews[0]->Review().Window().chart.Count(), 50);
  EXPECT_TRUE(reviews[0]->windowTitle().contains("  File : "));
  EXPECT_FALSE(desk.station.Form().Window().save.keeping.LoadedFromFile) << "the main window keeps its own chart";
}

TEST(MainWindow, RecoveredChartsAreListedAndDeleted) {
  Desk desk([](Station& station) {
    station.StartChart();
    station.RunForSets(30);
    station.Kill();
  });
  desk.Choose("mnuRecoveredCharts");
  auto* list = desk.Find<QTreeWidget>("LstRecovered");
  ASSERT_EQ(list->topLevelItemCount(), 1);
  EXPECT_EQ(list->topLevelItem(0)->text(1), QStringLiteral("00:00:03"));
  EXPECT_EQ(list->topLevelItem(0)->text(3), QStringLiteral("30"));
  desk.station.host.dialogs.AnswerNext(Answer::Yes);
  desk.Click("cmdDeleteRecovered");
  EXPECT_EQ(list->topLevelItemCount(), 0);
  EXPECT_EQ(desk.LabelText("LblRecovered"), "There are no recovered charts.");
}

}  // namespace
}  // namespace tarvolt
