// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTableWidget>

#include "core/chart/chart_look_store.h"
#include "forms/date_entry/form_date_entry.h"
#include "forms/desk.h"
#include "forms/look/color_button.h"
#include "forms/look/form_colors.h"
#include "forms/look/form_fonts.h"
#include "forms/plot/strip_chart_plot.h"

namespace tarvolt {
namespace {

void Press(QWidget& dialog, QDialogButtonBox::StandardButton button) {
  dialog.findChild<QDialogButtonBox*>()->button(button)->click();
}

TEST(LookDialogs, TicksGoToTheChartAndTheStoreOnOkAlone) {
  Desk desk;
  WithNextDialog([](QWidget& dialog) {
    Find<QSpinBox>(dialog, "XAxisTickMajorCount").setValue(9);
    Press(dialog, QDialogButtonBox::Cancel);
  });
  desk.Choose("mnuTickGrid");
  EXPECT_EQ(desk.station.Form().Window().look.ticks, TickGrid());
  WithNextDialog([](QWidget& dialog) {
    EXPECT_EQ(dialog.objectName(), "FormTickGrid");
    Find<QSpinBox>(dialog, "XAxisTickMajorCount").setValue(9);
    Find<QComboBox>(dialog, "GridLineStyle").setCurrentIndex(2);
    Press(dialog, QDialogButtonBox::Ok);
  });
  desk.Choose("mnuTickGrid");
  EXPECT_EQ(desk.station.Form().Window().look.ticks.XAxisTickMajorCount, 9);
  EXPECT_EQ(GetTickGrid(desk.station.TheSession()).GridLineStyle, 2);
  auto& plot = dynamic_cast<StripChartPlot&>(*desk.Find<QCustomPlot>("iStripChartX1"));
  plot.TakeOver();  // a drawing may still be resting
  EXPECT_EQ(plot.xAxis->grid()->pen().style(), Qt::DotLine);
}

TEST(LookDialogs, ColorsAreSavedAndRestored) {
  Desk desk;
  WithNextDialog([](QWidget& dialog) {
    auto& colors = dynamic_cast<FormColors&>(dialog);
    ChartColors changed = colors.GetColorsFromLabels();
    EXPECT_EQ(changed, ChartColors());
    changed.PenColor[3] = 0x123456;
    changed.GridBackGroundColor = 0x202020;
    colors.LoadIntoLabels(changed);
    Click(dialog, "CmdSave");
    Click(dialog, "CmdRestore");
    EXPECT_EQ(colors.GetColorsFromLabels(), ChartColors());
    Press(dialog, QDialogButtonBox::Close);
  });
  desk.Choose("mnuColors");
  EXPECT_EQ(desk.station.Form().Window().look.colors.PenColor[3], 0x123456) << "restored, but not saved";
  EXPECT_EQ(GetStripChartColors(desk.station.TheSession()).GridBackGroundColor, 0x202020);
}

TEST(LookDialogs, AViewByNumbersSaysWhatIsWrongAndClosesWithItsChart) {
  Desk desk;
  desk.Click("cmdStart");
  desk.Record(100);
  desk.Choose("mnuChartView");
  auto* view = desk.Find<QWidget>("FormChartView");
  desk.Choose("mnuFullView");
  view->close();
  desk.Settle();
  EXPECT_TRUE(desk.Action("mnuLastView")->isEnabled()) << "the view before the full one is not lost with it";
  desk.Choose("mnuChartView");
  EXPECT_TRUE(view->isVisible());
  EXPECT_EQ(view->windowTitle(), "Chart View for Main Window Chart ");
  Find<QRadioButton>(*view, "OptWidth").setChecked(true);
  EXPECT_FALSE(Find<QComboBox>(*view, "TxtTo").isEnabled());
  Find<QLineEdit>(*view, "TxtWidth").setText("none");
  Click(*view, "cmdApply");
  EXPECT_EQ(Find<QLabel>(*view, "lblProblem").text(), "The width must be a number of seconds above 0.");
  Find<QComboBox>(*view, "TxtFrom").setEditText("12:00:02");
  Find<QLineEdit>(*view, "TxtWidth").setText("4");
  Click(*view, "cmdApplyAll");
  EXPECT_EQ(Find<QLabel>(*view, "lblProblem").text(), "");
  EXPECT_NEAR((desk.Chart().XAxisMax - desk.Chart().XAxisMin) * 86400, 4, 1e-3);
  Find<QCheckBox>(*view, "ChkAutoY").setChecked(true);
  Find<QCheckBox>(*view, "ChkSpecifyY").setChecked(true);
  EXPECT_FALSE(Find<QCheckBox>(*view, "ChkAutoY").isChecked()) << "by hand or by the data";
  desk.Choose("mnuSave");
  EXPECT_FALSE(view->isVisible()) << "a new log began";
}

TEST(LookDialogs, InformationOfAnUnsavedRunIsWhatItsFileWouldSay) {
  Desk desk([](Station& station) { station.Set("AutoSaveStandAlone", false); });
  desk.station.TheSession().notes = "Clear sky";
  desk.Click("cmdStart");
  desk.Record(20);
  desk.Click("cmdStart");
  desk.Choose("mnuDataFileInfo");
  auto* info = desk.Find<QWidget>("FormFileInfo");
  EXPECT_TRUE(info->isVisible());
  EXPECT_EQ(info->findChild<QPlainTextEdit*>()->toPlainText(), "Clear sky");
  const auto* header = info->findChild<QTableWidget*>("Header");
  const auto field = [header](const char* name) {
    return header->item(header->findItems(name, Qt::MatchExactly).value(0)->row(), 1)->text().toStdString();
  };
  EXPECT_EQ(field("End"), FormatDate(desk.Chart().GetTime(19), "YYYY-MM-DD hh:nn:ss.zzz"));
  EXPECT_EQ(field("Version"), "01.00.00");
  info->close();
  desk.Settle();
  desk.Click("cmdInfo");
  EXPECT_TRUE(info->isVisible());
  desk.Click("cmdStart");
  EXPECT_FALSE(info->isVisible());
}

TEST(LookDialogs, FontsAreKeptOnOkAlone) {
  Desk desk;
  desk.station.TheSession().store.SaveSetting(Section::Settings, "TitleFontSize", "18");
  desk.station.Form().Chart().look.TakeLook();
  WithNextDialog([](QWidget& dialog) {
    EXPECT_EQ(dialog.objectName(), "FormFonts");
    EXPECT_EQ(Find<QPushButton>(dialog, "TitleFont").text(), "Arial, 18 pt");
    Press(dialog, QDialogButtonBox::Ok);
  });
  desk.Choose("mnuFonts");
  EXPECT_EQ(GetFonts(desk.station.TheSession()).title.size, 18);
  EXPECT_EQ(desk.station.Form().Window().look.fonts.title.size, 18);
}

TEST(LookDialogs, ADateIsEnteredOrCancelled) {
  const TimeStamp stamp = StampOf({2010, 1, 2, 12, 30, 15, 250});
  WithNextDialog([](QWidget& dialog) {
    EXPECT_EQ(dialog.objectName(), "FormDateEntry");
    auto* entry = dialog.findChild<QDateTimeEdit*>("TxtDate");
    EXPECT_EQ(entry->text(), "2010-01-02 12:30:15.250");
    entry->setDateTime(QDateTime(QDate(2011, 3, 27), QTime(2, 30, 0, 5), Qt::UTC));  // an hour that some zones skip
    Press(dialog, QDialogButtonBox::Ok);
  });
  EXPECT_EQ(FormDateEntry(nullptr, "Begins:", stamp), StampOf({2011, 3, 27, 2, 30, 0, 5}));
  WithNextDialog([](QWidget& dialog) { Press(dialog, QDialogButtonBox::Cancel); });
  EXPECT_EQ(FormDateEntry(nullptr, "Begins:", stamp), std::nullopt);
}

}  // namespace
}  // namespace tarvolt
