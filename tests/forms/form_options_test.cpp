// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/options/form_options.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>

#include "forms/desk.h"
#include "forms/dialogs/desktop_dialogs.h"
#include "forms/first_use/form_first_use.h"

namespace tarvolt {
namespace {

// The dialog over a whole recorder, driven as a person would.
class FormOptionsTest : public testing::Test {
 protected:
  FormOptionsTest() {
    station_.Boot();
    Open();
  }
  ~FormOptionsTest() override { delete dialog_; }

  void Open() {
    delete dialog_;
    dialog_ = new FormOptions(station_.TheSession(), station_.Form(), nullptr);
    dialog_->show();
  }

  template <class Widget>
  Widget& Find(const char* name) {
    return tarvolt::Find<Widget>(*dialog_, name);
  }
  void Type(const char* name, const char* text) { Find<QLineEdit>(name).setText(QString::fromLatin1(text)); }
  void Tick(const char* name, bool on) { Find<QCheckBox>(name).setChecked(on); }
  void Choose(const char* name, int row) { Find<QComboBox>(name).setCurrentIndex(row); }
  void Click(const char* name) { Find<QPushButton>(name).click(); }
  QString Text(const char* name) { return Find<QLineEdit>(name).text(); }
  QString Page() {
    auto& tabs = Find<QTabWidget>("TabOptions");
    return tabs.tabText(tabs.currentIndex());
  }
  std::string Stored(const char* key) { return station_.TheSession().store.GetSetting(Section::Settings, key); }
  const Settings& InForce() { return station_.TheSession().settings; }

  Station station_;
  QPointer<FormOptions> dialog_;
};

TEST_F(FormOptionsTest, ARefusalShowsItsWordsItsPageAndItsFieldAndTheDialogStays) {
  struct Case {
    const char* field;
    const char* text;
    const char* page;
    const char* words;
  };
  for (const Case& wrong : {Case{"TxtUserLat", "91:00", "Identity", "There is an error in your Latitude format."},
                            Case{"TxtMaxArrayCount", "9", "Timing", "Max Samples must be at least 10"},
                            Case{"TxtClickInc", "much", "Chart", "\"much\" is not a number."},
                            Case{"TxtPwrMultiR", "0", "Sound", "Cannot set the Power Detection Factor to zero."}}) {
    Open();
    Type("TxtLocalName", "Elsewhere");
    Type(wrong.field, wrong.text);
    Find<QTabWidget>("TabOptions").setCurrentIndex(5);
    Click("cmdOK");
    EXPECT_TRUE(dialog_->isVisible());
    EXPECT_EQ(Page().toStdString(), wrong.page);
    EXPECT_EQ(dialog_->focusWidget(), &Find<QLineEdit>(wrong.field));
    EXPECT_EQ(Find<QLabel>("LblProblem").text().toStdString(), wrong.words);
    EXPECT_TRUE(Find<QLabel>("LblProblem").isVisibleTo(dialog_));
    EXPECT_EQ(station_.host.dialogs.Boxes().back().text, wrong.words);
    EXPECT_EQ(InForce().station.LocalName, "unknown");
  }
}

TEST_F(FormOptionsTest, AnAcceptedDialogStoresWhatWasChangedAndNothingElse) {
  station_.TheSession().settings.place.UserLat = -0.123456789;  // the field shows less of it
  station_.TheSession().settings.channels.Detection[5] = 7;     // and cannot show this at all
  Open();
  Type("TxtLocalName", "D\xFCren");
  Type("TxtMaxDuration", "12");
  Tick("ChkAutoScale", false);
  Choose("CboSaveIF", 2);
  Choose("CboUDSpush", 1);
  Find<QPlainTextEdit>("TxtNotes").setPlainText(QStringLiteral("two\nlines"));
  Find<QTabWidget>("TabOptions").setCurrentIndex(3);
  station_.TheSession().settings.place.TZ = 2;  // by the clock, while the dialog was open
  Click("cmdOK");
  EXPECT_FALSE(dialog_->isVisible());
  EXPECT_EQ(Stored("LocalName"), "D\xFCren");
  EXPECT_EQ(Stored("MaxDuration"), "0.5");
  EXPECT_EQ(Stored("AutoScale"), "False");
  EXPECT_EQ(Stored("SaveIF"), "-1");
  EXPECT_EQ(InForce().place.UserLat, -0.123456789);
  EXPECT_EQ(InForce().place.TZ, 2);
  EXPECT_EQ(InForce().channels.Detection[5], 1) << "what is shown is what is stored";
  EXPECT_EQ(station_.TheSession().notes, "two\nlines");
  EXPECT_EQ(Stored("OptionsTabII"), "3");
  Open();
  EXPECT_EQ(Page(), QStringLiteral("Chart"));
  EXPECT_EQ(Text("TxtMaxDuration"), QStringLiteral("12"));
}

TEST_F(FormOptionsTest, ApplyDuringARunChangesWhatIsSeen) {
  station_.StartChart();
  Type("TxtXALabel", "Time");
  Type("TxtvAvg", "0");
  Click("cmdApply");
  EXPECT_TRUE(dialog_->isVisible());
  EXPECT_EQ(Text("TxtvAvg"), QStringLiteral("1")) << "shown as it was lifted";
  EXPECT_EQ(station_.Form().Window().chart.XAxisLabel, "Time");
}

TEST_F(FormOptionsTest, RowsCountUpToTheFirstNoneAndTheEstimatesFollow) {
  EXPECT_TRUE(Find<QComboBox>("CboDsrc2").isEnabled());
  EXPECT_FALSE(Find<QComboBox>("CboDsrc3").isEnabled()) << "behind the first none";
  Choose("CboDsrc2", 8);
  EXPECT_TRUE(Find<QComboBox>("CboDsrc3").isEnabled());
  EXPECT_TRUE(Find<QComboBox>("CboDsrcCH2").isEnabled());
  EXPECT_FALSE(Find<QComboBox>("CboDetection2").isEnabled());
  EXPECT_TRUE(Find<QComboBox>("CboDsrc2").toolTip().startsWith(QStringLiteral("Equation Not Defined")));
  EXPECT_TRUE(Find<QLabel>("LblFileSize").text().contains(QStringLiteral("32,000,000")));
  Tick("ChkSaveAsIntegers", true);
  EXPECT_TRUE(Find<QLabel>("LblFileSize").text().contains(QStringLiteral("14,000,000")));
  Type("TxtClickInc", "much");  // what cannot be read does not hide the rest
  Type("TxtSampleRate", "20");
  Type("TxtvAvg", "100");
  EXPECT_EQ(Find<QLabel>("LblRate").text(), QStringLiteral("2  Seconds per Sample."));
  Choose("CboDsrc0", 0);
  EXPECT_FALSE(Find<QComboBox>("CboDsrc1").isEnabled());
}

TEST_F(FormOptionsTest, TheLongitudeFollowsItsSenseUnlessItWasTyped) {
  station_.TheSession().settings.place.UserLng = 10.25;
  Open();
  Tick("ChkDisplayWest", false);
  EXPECT_EQ(Text("TxtUserLng"), QStringLiteral("349:45:00.0"));
  EXPECT_EQ(Find<QLabel>("LblUserLng").text(), QStringLiteral("E"));
  Type("TxtUserLng", "20");
  Click("cmdApply");
  EXPECT_EQ(InForce().place.UserLng, 340);
  Tick("ChkDisplayWest", true);
  EXPECT_EQ(Text("TxtUserLng"), QStringLiteral("340:00:00.0"));
  Click("cmdOK");
  EXPECT_EQ(InForce().place.UserLng, 340);
}

TEST_F(FormOptionsTest, TickingTheDetectionFillsTheZone) {
  station_.TheSession().settings.place.DetectTZ = false;
  station_.TheSession().settings.place.TZ = -7;
  Open();
  EXPECT_TRUE(Find<QLineEdit>("TxtTZ").isEnabled());
  Tick("ChkDetectTZ", true);
  EXPECT_EQ(Text("TxtTZ"), QStringLiteral("0"));
  EXPECT_FALSE(Find<QLineEdit>("TxtTZ").isEnabled());
}

TEST_F(FormOptionsTest, ASoundCardThatHasComeIsFoundAndItsFormatWaitsForTheOk) {
  EXPECT_FALSE(Find<QPushButton>("cmdSoundFormat").isEnabled()) << "there is none";
  station_.host.sound.Plug("USB,0: Receiver", [](std::int64_t) { return std::pair(0, 0); });
  Open();
  EXPECT_EQ(InForce().sound.SoundCardName, "USB,0: Receiver");
  const auto choose = [&](const char* format) {
    Click("cmdSoundFormat");
    auto& chooser = Find<QDialog>("FormSoundFormat");
    auto* list = chooser.findChild<QListWidget*>(QStringLiteral("LstFormats"));
    list->setCurrentItem(list->findItems(QString::fromLatin1(format), Qt::MatchExactly).value(0));
    tarvolt::Click(chooser, "cmdOK");
    QCoreApplication::sendPostedEvents(&chooser, QEvent::DeferredDelete);
    EXPECT_EQ(Find<QLabel>("LblSoundFormat").text(), QStringLiteral("Format: ") + QString::fromLatin1(format));
  };
  choose("22050 Hz 16 Bit Mono");
  Type("TxtLocalName", "Elsewhere");
  Click("cmdCancel");
  EXPECT_FALSE(dialog_->isVisible());
  EXPECT_EQ(InForce().station.LocalName, "unknown");
  EXPECT_EQ(InForce().sound.sWavFormat, 0);
  Open();
  EXPECT_EQ(Find<QLabel>("LblSoundFormat").text(), QStringLiteral("Format: 44100 Hz 16 Bit Stereo"));
  choose("48000 Hz 16 Bit Stereo");
  Click("cmdOK");
  EXPECT_EQ(InForce().sound.sWavFormat, 2);
  EXPECT_EQ(Stored("sWavFormat"), "2");
}

TEST_F(FormOptionsTest, WhatStandsAgainstAnotherPageIsAWarning) {
  station_.TheSession().settings.channels.Dsrc[0] = kSoundLeft;  // and there is no sound card
  Open();
  Type("TxtLocalName", "Hill");
  Click("cmdOK");
  EXPECT_EQ(InForce().station.LocalName, "Hill");
  EXPECT_TRUE(station_.host.dialogs.HasShown("no sound card is available"));
  Open();
  Type("TxtChannel1Label", "Noise");
  Click("cmdOK");
  EXPECT_EQ(Page(), QStringLiteral("Data Source"));
  EXPECT_NE(InForce().channels.ChannelLabel[1], "Noise");
}

TEST_F(FormOptionsTest, OneTimeBaseExcludesTheOtherAndBothFromElsewhereAreSidereal) {
  station_.Set("LogUsingUT", true).Set("LogLMST", true);
  station_.StartChart();
  EXPECT_TRUE(station_.Logged("the log is sidereal"));
  Open();
  EXPECT_FALSE(Find<QLabel>("LblBothTimeBases").isHidden());
  Find<QCheckBox>("ChkLogLMST").click();
  EXPECT_TRUE(Find<QLabel>("LblBothTimeBases").isHidden());
  Find<QCheckBox>("ChkLogLMST").click();
  EXPECT_FALSE(Find<QCheckBox>("ChkLogUsingUT").isChecked());
  Find<QCheckBox>("ChkLogUsingUT").click();
  EXPECT_FALSE(Find<QCheckBox>("ChkLogLMST").isChecked());
}

TEST(FormFirstUseTest, TakesTheStationAndEndsWithTheProgram) {
  SimHost host(1);
  Session session(host.Record(), "/station");
  Settings settings;
  settings.files.DataDirectory = "/station/Data";
  const auto silence = [](std::int64_t) { return std::pair(0, 0); };
  host.sound.Plug("PCH,0: Built in", silence);
  host.sound.Plug("USB,0: Receiver", silence);
  FormFirstUse dialog(session, settings);
  Find<QLineEdit>(dialog, "TxtUserLng").setText("400:00");
  Find<QLineEdit>(dialog, "TxtAuthor").setText("Grote");
  Click(dialog, "cmdOK");
  EXPECT_TRUE(host.dialogs.HasShown("Longitude Error."));
  Find<QLineEdit>(dialog, "TxtUserLng").setText("83:40");
  Find<QComboBox>(dialog, "CboSoundCardName").setCurrentText("USB,0: Receiver");
  Click(dialog, "cmdOK");
  EXPECT_EQ(dialog.result(), QDialog::Accepted);
  EXPECT_EQ(settings.sound.SoundCardName, "USB,0: Receiver");
  EXPECT_EQ(settings.station.Author, "Grote");
  DesktopDialogs dialogs;
  QTimer::singleShot(0, [&] { dialogs.EndWaiting(); });
  EXPECT_FALSE(RunFirstUse(session, settings)) << "a signal ends it like a cancel";
}

}  // namespace
}  // namespace tarvolt
