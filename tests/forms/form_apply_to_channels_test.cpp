// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/equations/form_apply_to_channels.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLineEdit>
#include <QPlainTextEdit>

#include "forms/desk.h"

namespace tarvolt {
namespace {

TEST(FormApplytoChannels, AppliesToTheLoadedChartFromTheToolsMenu) {
  Desk desk;
  EXPECT_FALSE(desk.Action("mnuApplyFunction")->isEnabled());
  EXPECT_TRUE(desk.Action("mnuChannelEquations")->isEnabled());
  desk.Click("cmdStart");
  desk.Record(50);
  EXPECT_FALSE(desk.Action("mnuApplyFunction")->isEnabled());
  EXPECT_FALSE(desk.Action("mnuChannelEquations")->isEnabled());
  desk.Click("cmdStart");
  desk.station.host.dialogs.EnterNext("1");
  WithNextDialog([](QWidget& dialog) {
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Apply Function to Loaded Chart Data"));
    EXPECT_EQ(dialog.findChildren<QCheckBox*>().size(), 3);
    EXPECT_EQ(Find<QCheckBox>(dialog, "ChkCH2").text(), "CH 3");
    Find<QLineEdit>(dialog, "txtEqu2").setText("Z1*3");
    Click(dialog, "cmdOK");
  });
  desk.Choose("mnuApplyFunction");
  EXPECT_EQ(desk.Chart().ChannelCount(), 3);
  EXPECT_EQ(desk.Chart().GetValue(2, 20), 60);
}

/// The form over a station with no chart.
class FormApplytoChannelsTest : public testing::Test {
 protected:
  FormApplytoChannelsTest() {
    station.Boot();
    set.EquString = {"X*2", " ", "c"};
    set.EquString[7] = "hidden";
    set.ApplyToCH = {1, 0, 1};
    Open(4);
  }

  void Open(int channels) {
    form = std::make_unique<FormApplytoChannels>(station.TheSession(), station.Form().Window(),
                                                 EquationsRequest{"Equations", channels}, set, nullptr);
    form->show();
  }
  void Type(int row, const QString& text) { In<QLineEdit>(QStringLiteral("txtEqu%1").arg(row)).setText(text); }
  void Trigger(const char* name) { In<QAction>(name).trigger(); }
  template <class Object>
  Object& In(const QString& name) {
    return Find<Object>(*form, name);
  }
  QString Result() { return In<QPlainTextEdit>("txtTestResult").toPlainText(); }

  Station station;
  EquationSet set;
  std::unique_ptr<FormApplytoChannels> form;
};

TEST_F(FormApplytoChannelsTest, GivesItsRowsAndKeepsThoseItDoesNotShow) {
  Type(1, "  Z1+1 ");
  In<QCheckBox>("ChkCH1").setChecked(true);
  Type(2, "");
  const EquationSet now = form->Equations();
  EXPECT_EQ(now.EquString[1], "Z1+1");
  EXPECT_EQ(now.EquString[2], " ");
  EXPECT_EQ(now.EquString[7], "hidden");
  EXPECT_EQ(now.ApplyToCH, (std::array<std::int16_t, 8>{1, 1, 1}));
}

TEST_F(FormApplytoChannelsTest, StoresAndLoadsTheDefaults) {
  Type(0, "X*5");
  Click(*form, "CmdSave");
  EXPECT_EQ(In<QLabel>("LBLEquationFile").text(), "Default Equations Loaded");
  EXPECT_EQ(station.TheSession().store.GetSetting(Section::Settings, "Equ0"), "X*5");
  Type(0, "X*6");
  In<QCheckBox>("ChkCH0").setChecked(false);
  Click(*form, "cmdLoadDefaults");
  EXPECT_EQ(form->Equations().EquString[0], "X*5");
  EXPECT_EQ(form->Equations().ApplyToCH[0], 1);
  Session& session = station.TheSession();
  SaveRegistrySettings(session.store, session.overrides, session.home.string(), session.settings);
  EXPECT_EQ(session.store.GetSetting(Section::Settings, "Equ0"), "X*5") << "they outlast a store of all settings";

  session.settings.channels.ApplyToIncoming = true;
  for (const Answer answer : {Answer::No, Answer::Yes}) {
    Type(0, "X*7");
    station.host.dialogs.AnswerNext(answer);
    Click(*form, "CmdSave");
    EXPECT_EQ(session.settings.channels.Equ[0], answer == Answer::Yes ? "X*7" : "X*5")
        << "those of a chart do not replace those of the station unasked";
  }
  Type(0, QString(4001, '1'));
  Click(*form, "CmdSave");
  EXPECT_TRUE(Result().contains("too long")) << "no text is cut";
  EXPECT_EQ(session.settings.channels.Equ[0], "X*7");
}

TEST_F(FormApplytoChannelsTest, SavesAndLoadsEquationFiles) {
  station.host.dialogs.ChooseFileNext("/station/Equations.equ");
  Trigger("mnuSaveEquations");
  EXPECT_EQ(station.TheSession().store.GetSetting(Section::Settings, "EquPath"), "/station");
  EXPECT_TRUE(station.host.dialogs.HasShown("Save Equations to File (ext=equ)"));
  Type(0, "gone");
  In<QCheckBox>("ChkCH0").setChecked(false);
  station.host.dialogs.ChooseFileNext("/station/Equations.equ");
  Trigger("mnuLoadEquations");
  EXPECT_TRUE(station.host.dialogs.HasShown("Load Equations From File  (ext =equ)"));
  EXPECT_EQ(form->Equations().EquString[0], "X*2");
  EXPECT_EQ(form->Equations().ApplyToCH[0], 0) << "ticks are not in the file";
  EXPECT_EQ(In<QLabel>("LBLEquationFile").text(), QStringLiteral("Equations.equ"));
  station.host.dialogs.ChooseFileNext("/station/none.equ");
  Trigger("mnuLoadEquations");
  EXPECT_TRUE(Result().contains(QStringLiteral("/station/none.equ")));
}

TEST_F(FormApplytoChannelsTest, TestsTheEquationInHand) {
  In<QLineEdit>("txtEqu2").setFocus();
  Type(2, "x+1");
  station.host.dialogs.EnterNext("41");
  Trigger("mnuTest");
  EXPECT_TRUE(Result().endsWith(QStringLiteral("Solution: 42"))) << Result().toStdString();
  EXPECT_TRUE(station.host.dialogs.HasShown("Enter Test Value for X."));
  In<QLineEdit>("txtEqu1").setFocus();
  Trigger("mnuTest");
  EXPECT_EQ(Result(), QStringLiteral("No Equation to Test"));
}

}  // namespace
}  // namespace tarvolt
