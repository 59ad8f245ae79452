// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/triggers/form_triggers.h"

#include <gtest/gtest.h>

#include <QPushButton>
#include <QTest>

#include "automation/triggers/trigger_file.h"
#include "forms/desk.h"

namespace tarvolt {
namespace {

constexpr const char* kFile = "/station/Triggers.ini";
constexpr const char* kCopy = "/station/TempTriggers.ini";

// A station with triggers 1 and 3, and a person with the dialog.
class FormTriggersTest : public ::testing::Test {
 protected:
  FormTriggersTest()
      : desk([this](Station& station) {
          stored[0].Threshold = 3;
          stored[0].MinResetSamples = 2;
          stored[0].ShowInSessionLog = true;
          stored[0].Notation = "three";
          stored[2].Action = "custom";
          stored[2].LPTnum = 0x378;
          stored[2].Threshold = 1e9;
          stored[4].LPTpin = 14;  // what no field shows
          stored[4].LPTnum = -200;
          stored[4].MinDuration = -3;
          stored[4].LJU3command = "XX";
          stored[4].LJU12command = "ao";
          stored[4].LJU12channel = 70000;
          station.host.disk.Put(kFile, FormatTriggers(stored));
          station.Set("CHTrigger0", "1010000000").Set("ChTriggerEnabled0", true);
        }) {}

  void Open() { desk.Choose("mnuTriggers"); }
  template <class Widget>
  Widget& Field(int trigger, const char* name) {
    return Find<Widget>(Find<TriggerPage>(*desk.window, QStringLiteral("Trigger%1").arg(trigger)), name);
  }
  void Type(int trigger, const char* name, const char* text) {
    Field<QLineEdit>(trigger, name).setText(QString::fromLatin1(text));
  }
  void ChooseAction(int trigger, const char* action) {
    Field<QComboBox>(trigger, "cmbTriggerActionType").setCurrentText(QString::fromLatin1(action));
  }
  std::string Problem() {
    auto* label = desk.Find<QLabel>("LblProblem");
    return label->isHidden() ? std::string() : label->text().toStdString();
  }
  std::optional<TriggerDefinitions> InFile(const char* name) {
    const auto text = desk.station.host.disk.Contents(name);
    return text ? ParseTriggers(*text) : std::nullopt;
  }

  TriggerDefinitions stored;
  Desk desk;
};

TEST_F(FormTriggersTest, DoneWithoutAChangeKeepsEveryTrigger) {
  Open();
  desk.Click("CmdDone");
  EXPECT_TRUE(InFile(kCopy) == stored);
  EXPECT_EQ(desk.station.TheSession().settings.channels.CHTrigger[0], "1010000000");
  EXPECT_EQ(desk.station.TheSession().settings.channels.ChTriggerEnabled, (std::array<bool, kChannels>{true}));
  Open();
  Field<QComboBox>(5, "CboLPTpin").setCurrentText(QStringLiteral("PIN 2"));
  Field<QComboBox>(5, "CboLJU3command").setCurrentIndex(1);
  Field<QSpinBox>(5, "SpnMinDuration").setValue(1);
  desk.Click("CmdDone");
  stored[4].LPTpin = 2;
  stored[4].LJU3command = "AO";
  stored[4].MinDuration = 1;
  EXPECT_TRUE(InFile(kCopy) == stored);
}

TEST_F(FormTriggersTest, EveryFieldReachesItsTrigger) {
  TriggerDefinition wanted;
  Open();
  Type(10, "TxtThreshold", "-1,5");
  Field<QCheckBox>(10, "ChkTriggerBelowThreshold").setChecked(wanted.TriggerBelowThreshold = true);
  Field<QSpinBox>(10, "SpnMinDuration").setValue(wanted.MinDuration = 4);
  Field<QSpinBox>(10, "SpnMinResetSamples").setValue(wanted.MinResetSamples = 5);
  Field<QSpinBox>(10, "SpnRestPeriod").setValue(wanted.RestPeriod = 6);
  Field<QCheckBox>(10, "ChkOneShot").setChecked(wanted.OneShot = true);
  ChooseAction(10, "Execute");
  Type(10, "TxtParameter", "/opt/notify \"two words\"");
  Field<QComboBox>(10, "CboLJU3command").setCurrentIndex(1);
  Field<QSpinBox>(10, "SpnLJU3channel").setValue(wanted.LJU3channel = 7);
  Type(10, "TxtLJU3value", "2.5");
  Field<QComboBox>(10, "CboLJU12command").setCurrentIndex(1);
  Field<QSpinBox>(10, "SpnLJU12channel").setValue(wanted.LJU12channel = 1);
  Type(10, "TxtLJU12value", "3.5");
  Type(10, "TxtLPTnum", "3bc");
  Field<QComboBox>(10, "CboLPTpin").setCurrentText(QStringLiteral("PIN 16"));
  Type(10, "TxtLPTvalue", "1");
  Type(10, "TxtNotation", "B\xFCrst [DATE TIME]");
  Field<QCheckBox>(10, "ChkAnnotate").setChecked(wanted.Annotate = true);
  Field<QCheckBox>(10, "ChkShowInObLog").setChecked(wanted.ShowInObLog = true);
  Field<QCheckBox>(10, "ChkShowInSessionLog").setChecked(wanted.ShowInSessionLog = true);
  Field<QCheckBox>(10, "ChkShowInStatusBar").setChecked(wanted.ShowInStatusBar = true);
  Field<QCheckBox>(10, "ChkWatch8").setChecked(true);
  Field<QCheckBox>(1, "ChkWatch1").setChecked(false);
  desk.Find<QCheckBox>("ChkChTriggerEnabled8")->setChecked(true);
  desk.Click("CmdDone");

  wanted.Threshold = -1.5;
  wanted.Action = "EXECUTE";
  wanted.Parameter = "/opt/notify \"two words\"";
  wanted.LJU3command = wanted.LJU12command = "AO";
  wanted.LJU3value = 2.5;
  wanted.LJU12value = 3.5;
  wanted.LPTnum = 0x3BC;
  wanted.LPTpin = 11;
  wanted.LPTvalue = 1;
  wanted.Notation = "B\xFCrst [DATE TIME]";
  stored[9] = wanted;
  EXPECT_TRUE(InFile(kCopy) == stored);
  const Settings& settings = desk.station.TheSession().settings;
  EXPECT_EQ(settings.channels.CHTrigger[0], "0010000000");
  EXPECT_EQ(settings.channels.CHTrigger[7], "0000000001");
  EXPECT_TRUE(settings.channels.ChTriggerEnabled[0] && settings.channels.ChTriggerEnabled[7]);
}

TEST_F(FormTriggersTest, OnlyTheFieldsOfTheActionShow) {
  Open();
  const std::map<std::string, std::string> fieldOf = {
      {"Execute", "TxtParameter"}, {"LJU3", "TxtLJU3value"}, {"LJU12", "TxtLJU12value"}, {"LPT", "TxtLPTnum"}};
  for (const char* action : {"Execute", "LJU3", "LJU12", "LPT", "(notes only)"}) {
    ChooseAction(1, action);
    desk.Settle();
    for (const auto& [name, field] : fieldOf) {
      EXPECT_EQ(Field<QLineEdit>(1, field.c_str()).isVisible(), name == action) << field << " with " << action;
    }
  }
  ChooseAction(1, "LJU3");
  const QLabel& caption = Field<QLabel>(1, "LblLJU3value");
  EXPECT_EQ(caption.text().toStdString(), "1 = set high ; 0 = set low");
  Field<QComboBox>(1, "CboLJU3command").setCurrentIndex(1);
  EXPECT_EQ(caption.text().toStdString(), "DAC Voltage");
}

TEST_F(FormTriggersTest, AWrongNumberIsShownAndNothingIsTaken) {
  Open();
  Type(1, "TxtNotation", "changed");
  Type(4, "TxtThreshold", "high");
  desk.Click("CmdDone");
  EXPECT_EQ(Problem(), "Trigger 4: \"high\" is not a number.");
  EXPECT_EQ(desk.Find<QTabWidget>("TabTriggers")->currentIndex(), 3);
  EXPECT_FALSE(InFile(kCopy));
  Type(4, "TxtThreshold", "1");
  Type(5, "TxtLPTnum", "3xyz");
  desk.Click("CmdDone");
  EXPECT_EQ(Problem(), "Trigger 5: \"3xyz\" is not a number.");
  Type(5, "TxtLPTnum", "378");
  QTest::keyClick(&Field<QLineEdit>(5, "TxtLPTnum"), Qt::Key_Return);
  EXPECT_EQ((*InFile(kCopy))[0].Notation, "changed");
}

TEST_F(FormTriggersTest, AChosenFileIsLoadedAndSavedAndTheTriggersInForceWaitForDone) {
  SimDialogs& dialogs = desk.station.host.dialogs;
  TriggerDefinitions others;
  others[6].Notation = "from the file";
  desk.station.host.disk.Put("/station/other.ini", FormatTriggers(others));
  desk.station.host.disk.Put("/station/wrong.ini", "nothing here");
  Open();
  dialogs.ChooseFileNext("/station/wrong.ini");
  desk.Click("cmdLoadTriggers");
  EXPECT_EQ(Problem(), "Could not load the triggers of /station/wrong.ini: it holds no trigger");
  EXPECT_EQ(Field<QLineEdit>(1, "TxtNotation").text().toStdString(), "three");
  dialogs.ChooseFileNext("/station/other.ini");
  desk.Click("cmdLoadTriggers");
  EXPECT_EQ(Problem(), "");
  EXPECT_EQ(Field<QLineEdit>(7, "TxtNotation").text().toStdString(), "from the file");
  Type(8, "TxtNotation", "added");
  dialogs.ChooseFileNext("/station/mine.ini");
  desk.Click("cmdSaveTriggers");
  others[7].Notation = "added";
  EXPECT_TRUE(InFile("/station/mine.ini") == others);
  EXPECT_EQ(desk.station.Form().Triggers().oTriggers()[0].Notation, "three");
  desk.Click("cmdCancel");
  EXPECT_FALSE(InFile(kCopy));
}

TEST_F(FormTriggersTest, TheMonitorLightsATriggerFromItsFiringToItsReset) {
  desk.station.uds.Measures([](std::int64_t set) {
    return std::vector<double>{set < 5 ? 0.0 : set < 8 ? 9.0 : 0.0, 0};
  });
  desk.Choose("mnuTriggerMonitor");
  EXPECT_TRUE(desk.Find<FormTriggerMonitor>("FormTriggerMonitor")->isVisible());
  const QString idle = desk.Find<QLabel>("LED2")->styleSheet();
  const auto lit = [&](const char* name) { return desk.Find<QLabel>(name)->styleSheet() != idle; };
  desk.Choose("mnuStartChart");
  desk.Record(5);
  EXPECT_FALSE(lit("LED1"));
  desk.Record(6);
  EXPECT_TRUE(lit("LED1"));
  EXPECT_TRUE(desk.station.Logged("three"));
  desk.Record(9);
  EXPECT_TRUE(lit("LED1")) << "one sample back is not yet the reset";
  desk.Record(10);
  EXPECT_FALSE(lit("LED1"));
  EXPECT_FALSE(lit("LED3"));
}

}  // namespace
}  // namespace tarvolt
