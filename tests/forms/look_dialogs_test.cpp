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
  Desk::WithNextDialog([](QWidget& dialog) {
    dialog.findChild<QSpinBox*>("XAxisTickMajorCount")->setValue(9);
    Press(dialog, QDialogButtonBox::Cancel);
  });
  desk.Choose("mnuTickGrid");
  EXPECT_EQ(desk.station.Form().Window().look.ticks, TickGrid());
  Desk::WithNextDialog([](QWidget& dialog) {
    EXPECT_EQ(dialog.objectName(), "FormTickGrid");
    dialog.findChild<QSpinBox*>("XAxisTickMajorCount")->setValue(9);
    dialog.findChild<QComboBox*>("GridLineStyle")->setCurrentIndex(2);
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
  Desk::WithNextDialog([](QWidget& dialog) {
    auto& colors = dynamic_cast<FormColors&>(dialog);
    ChartColors changed = colors.GetColorsFromLabels();
    EXPECT_EQ(changed, ChartColors());
    changed.PenColor[3] = 0x123456;
    changed.GridBackGroundColor = 0x202020;
    colors.LoadIntoLabels(changed);
    dialog.findChild<QPushButton*>("CmdSave")->click();
    dialog.findChild<QPushButton*>("CmdRestore")->click();
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
  view->findChild<QRadioButton*>("OptWidth")->setChecked(true);
  EXPECT_FALSE(view->findChild<QComboBox*>("TxtTo")->isEnabled());
  view->findChild<QLineEdit*>("TxtWidth")->setText("none");
  view->findChild<QPushButton*>("cmdApply")->click();
  EXPECT_EQ(view->findChild<QLabel*>("lblProblem")->text(), "The width must be a number of seconds above 0.");
  view->findChild<QComboBox*>("TxtFrom")->setEditText("12:00:02");
  view->findChild<QLineEdit*>("TxtWidth")->setText("4");
  view->findChild<QPushButton*>("cmdApplyAll")->click();
  EXPECT_EQ(view->findChild<QLabel*>("lblProblem")->text(), "");
  EXPECT_NEAR((desk.Chart().XAxisMax - desk.Chart().XAxisMin) * 86400, 4, 1e-3);
  view->findChild<QCheckBox*>("ChkAutoY")->setChecked(true);
  view->findChild<QCheckBox*>("ChkSpecifyY")->setChecked(true);
  EXPECT_FALSE(view->findChild<QCheckBox*>("ChkAutoY")->isChecked()) << "by hand or by the data";
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
  Desk::WithNextDialog([](QWidget& dialog) {
    EXPECT_EQ(dialog.objectName(), "FormFonts");
    EXPECT_EQ(dialog.findChild<QPushButton*>("TitleFont")->text(), "Arial, 18 pt");
    Press(dialog, QDialogButtonBox::Ok);
  });
  desk.Choose("mnuFonts");
  EXPECT_EQ(GetFonts(desk.station.TheSession()).title.size, 18);
  EXPECT_EQ(desk.station.Form().Window().look.fonts.title.size, 18);
}

TEST(LookDialogs, ADateIsEnteredOrCancelled) {
  const TimeStamp stamp = StampOf({2010, 1, 2, 12, 30, 15, 250});
  Desk::WithNextDialog([](QWidget& dialog) {
    EXPECT_EQ(dialog.objectName(), "FormDateEntry");
    auto* entry = dialog.findChild<QDateTimeEdit*>("TxtDate");
    EXPECT_EQ(entry->text(), "2010-01-02 12:30:15.250");
    entry->setDateTime(QDateTime(QDate(2011, 3, 27), QTime(2, 30, 0, 5), Qt::UTC));  // an hour that some zones skip
    Press(dialog, QDialogButtonBox::Ok);
  });
  EXPECT_EQ(FormDateEntry(nullptr, "Begins:", stamp), StampOf({2011, 3, 27, 2, 30, 0, 5}));
  Desk::WithNextDialog([](QWidget& dialog) { Press(dialog, QDialogButtonBox::Cancel); });
  EXPECT_EQ(FormDateEntry(nullptr, "Begins:", stamp), std::nullopt);
}

}  // namespace
}  // namespace tarvolt
