#include <gtest/gtest.h>

#include <QDropEvent>
#include <QMimeData>
#include <QTreeWidget>
#include <QtTest>
#include <map>

#include "forms/desk.h"
#include "forms/plot/qcp.h"

namespace tarvolt {
namespace {

// What can be chosen in one state of the window, command by command.
using Enabled = std::map<std::string, bool>;

constexpr const char* kCommands[] = {
    "mnuStartChart", "cmdStart",        "MnuLoadDataFile", "mnuSave",       "mnuSaveView", "cmdSaveView",
    "cmdInfo",       "mnuDataFileInfo", "mnuStandAlone",   "mnuServer",     "mnuClient",   "mnuFullView",
    "cmdFullView",   "cmdOffset",       "mnuRecallXY",     "mnuChartView",  "mnuCH1",      "mnuAvgCH1",
    "cmdLeft",       "cmdCursor",       "mnuRememberXY",   "mnuLoadProfile"};

Enabled StatesOf(const Desk& desk) {
  Enabled states;
  for (const char* name : kCommands) {
    const auto* button = desk.window->findChild<QAbstractButton*>(QString::fromLatin1(name));
    states[name] = button != nullptr ? button->isEnabled() : desk.Action(name)->isEnabled();
  }
  return states;
}

void ExpectOff(const Enabled& states, std::initializer_list<const char*> off, const char* when) {
  for (const auto& [name, enabled] : states) {
    const bool shouldBeOff = std::any_of(off.begin(), off.end(), [&](const char* other) { return name == other; });
    EXPECT_EQ(enabled, !shouldBeOff) << name << " " << when;
  }
}

TEST(MainWindow, CommandsAreEnabledThroughIdleArmedRunningStoppedAndLoaded) {
  Desk desk;
  ExpectOff(
      StatesOf(desk),
      {"mnuSave", "mnuSaveView", "cmdSaveView", "cmdInfo", "mnuDataFileInfo", "mnuFullView", "cmdFullView", "cmdOffset",
       "mnuRecallXY", "mnuChartView", "mnuCH1", "mnuAvgCH1", "cmdLeft", "cmdCursor", "mnuRememberXY"},
      "when idle");
  desk.Click("cmdStart");
  EXPECT_EQ(desk.station.Run().chartState(), ChartState::Armed);
  ExpectOff(StatesOf(desk),
            {"MnuLoadDataFile", "mnuSave", "mnuSaveView", "cmdSaveView", "cmdInfo", "mnuDataFileInfo", "mnuStandAlone",
             "mnuServer", "mnuClient", "mnuFullView", "cmdFullView", "mnuRecallXY", "mnuChartView", "cmdLeft",
             "cmdCursor", "mnuRememberXY"},
            "when armed");
  desk.Record(20);
  ExpectOff(StatesOf(desk),
            {"MnuLoadDataFile", "mnuSaveView", "cmdSaveView", "cmdInfo", "mnuDataFileInfo", "mnuStandAlone",
             "mnuServer", "mnuClient", "mnuRecallXY"},
            "when running");
  desk.Click("cmdStart");
  ExpectOff(StatesOf(desk), {"cmdOffset", "mnuCH1", "mnuAvgCH1"}, "when stopped");
  const std::string file = desk.station.FilesSaved().at(0);
  desk.station.host.dialogs.ChooseFileNext(file);
  desk.Choose("MnuLoadDataFile");
  EXPECT_TRUE(desk.station.Form().Window().save.keeping.LoadedFromFile);
  ExpectOff(StatesOf(desk), {"cmdOffset", "mnuCH1", "mnuAvgCH1", "mnuRecallXY"}, "when loaded");
}

TEST(MainWindow, SaysWhatTheRunDoes) {
  Desk desk;
  EXPECT_EQ(desk.Find<QAbstractButton>("cmdStart")->text(), "&Start Chart");
  EXPECT_EQ(desk.Action("mnuStartChart")->text(), "Start New Chart");
  desk.Choose("mnuStartChart");
  desk.Record(35);
  EXPECT_EQ(desk.Find<QAbstractButton>("cmdStart")->text(), "&Stop Chart");
  EXPECT_EQ(desk.Action("mnuStartChart")->text(), "Stop Chart");
  EXPECT_TRUE(desk.window->windowTitle().startsWith(" New Chart Started: "))
      << desk.window->windowTitle().toStdString();
  EXPECT_TRUE(desk.LabelText("lblLeftStatus").startsWith("Data Samp/Sec 10."))
      << desk.LabelText("lblLeftStatus").toStdString();
  EXPECT_TRUE(desk.LabelText("lblLeftStatus").contains("   Samples: 29"))
      << desk.LabelText("lblLeftStatus").toStdString();
  EXPECT_EQ(desk.LabelText("lblStatus"), "Started 12:00:00 UT");
  EXPECT_EQ(desk.LabelText("lblRightStatus"), "12:00:03 UT");
  desk.Choose("mnuCH2");
  desk.Record(36);
  EXPECT_EQ(desk.LabelText("LBLCHVAL"), "  CH2 -35");
  QTest::keyClick(desk.window.get(), Qt::Key_Escape);
  EXPECT_EQ(desk.LabelText("LBLCHVAL"), "");
  desk.Choose("mnuStartChart");
  EXPECT_EQ(desk.Find<QAbstractButton>("cmdStart")->text(), "&Start Chart");
  EXPECT_TRUE(desk.LabelText("lblStatus").endsWith("   Samples: 36")) << desk.LabelText("lblStatus").toStdString();
  EXPECT_EQ(desk.station.FirstChannelIn(desk.station.FilesSaved().at(0)), Ramp(36));
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
  const double right = desk.Chart().XAxisMax;
  desk.Find<QToolButton>("cmdLeft")->click();
  QTest::mousePress(desk.Find<QToolButton>("cmdLeft"), Qt::LeftButton);
  QTest::mouseRelease(desk.Find<QToolButton>("cmdLeft"), Qt::LeftButton);
  EXPECT_LT(desk.Chart().XAxisMax, right);
  desk.Settle();
  EXPECT_FALSE(desk.Find<QToolButton>("cmdAutoScrollEnable")->isChecked());
  EXPECT_EQ(desk.LabelText("lblStatus"), "Drag Mode - Plot Button Resumes");
  for (const char* name : {"cmdIncX", "cmdDecX", "cmdIncY", "cmdDecY", "cmdUp", "cmdDown", "cmdRight"}) {
    const ChartRange before = RangeOf(desk.Chart());
    QTest::mousePress(desk.Find<QToolButton>(name), Qt::LeftButton);
    QTest::mouseRelease(desk.Find<QToolButton>(name), Qt::LeftButton);
    EXPECT_NE(RangeOf(desk.Chart()), before) << name;
  }
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
  EXPECT_TRUE(desk.LabelText("lblStatus").startsWith("CH1   12:00:0")) << desk.LabelText("lblStatus").toStdString();
  desk.Choose("mnuSetTimeMarker");
  EXPECT_TRUE(desk.Chart().TimeMarker.has_value());
  Move(At(0.7, 0.1));
  desk.Settle();
  EXPECT_TRUE(desk.LabelText("lblStatus").contains("From Time Marker: 00:00:0"));
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
  EXPECT_EQ(desk.Action("mnuStartChart")->shortcut(), QKeySequence(Qt::Key_F8));
  EXPECT_EQ(desk.Action("mnuFullView")->shortcut(), QKeySequence(Qt::Key_F9));
  EXPECT_EQ(desk.Action("mnuAutoScroll")->shortcut(), QKeySequence(Qt::Key_F11));
  EXPECT_EQ(desk.Action("mnuAutoScale")->shortcut(), QKeySequence(Qt::Key_F12));
  EXPECT_EQ(desk.Action("mnuExit")->shortcut(), QKeySequence("Ctrl+Q"));
  QTest::keyClick(desk.window.get(), Qt::Key_F4, Qt::ShiftModifier);
  EXPECT_EQ(desk.LabelText("lblStatus"), "IP = 192.0.2.7");
  QTest::keyClick(desk.window.get(), Qt::Key_F5, Qt::ShiftModifier);
  EXPECT_EQ(desk.LabelText("lblStatus"), "No Message Received ");
  QTest::keyClick(desk.window.get(), Qt::Key_F3, Qt::ShiftModifier);
  EXPECT_FALSE(desk.window->statusBar()->isVisible());
  QTest::keyClick(desk.window.get(), Qt::Key_F3, Qt::ShiftModifier);
  desk.Click("cmdStart");
  desk.Record(5);
  QTest::keyClick(desk.window.get(), Qt::Key_F5, Qt::ShiftModifier);
  EXPECT_TRUE(desk.LabelText("lblStatus").startsWith("Last Msg: ^^")) << desk.LabelText("lblStatus").toStdString();
  QTest::keyClick(desk.window.get(), Qt::Key_2, Qt::AltModifier | Qt::KeypadModifier);
  EXPECT_EQ(desk.LabelText("lblStatus"), "Getting Average for CH2");
}

TEST(MainWindow, AFileDroppedOnItIsLoadedInStandAloneModeAlone) {
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
  desk.Choose("mnuServer");
  drop(file);
  EXPECT_TRUE(desk.station.host.dialogs.HasShown("Must be in Stand Alone Mode or using review window to load file."));
  EXPECT_FALSE(desk.station.Form().Window().save.keeping.LoadedFromFile);
  desk.Choose("mnuStandAlone");
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
  desk.Settle();
  EXPECT_TRUE(desk.station.Running()) << "it is asked about, and recording goes on by default";
  desk.station.host.dialogs.AnswerNext(Answer::Yes);
  desk.window->close();
  desk.Settle();
  EXPECT_TRUE(desk.station.Run().EndRequested);
  EXPECT_FALSE(desk.station.Running());
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
  EXPECT_EQ(desk.station.TheSession().settings.timing.ChartWidth, 77);
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
  EXPECT_EQ(desk.LabelText("LblRecovered"), QStringLiteral("There are no recovered charts."));
}

}  // namespace
}  // namespace tarvolt
