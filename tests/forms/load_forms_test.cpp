// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/load/load_forms.h"

#include <gtest/gtest.h>

#include <QMenuBar>
#include <QStatusBar>
#include <QtTest>

#include "files/raw_file.h"
#include "forms/desk.h"
#include "forms/load/form_chart_loading_options.h"
#include "forms/load/form_selective_load.h"
#include "forms/review/form_review.h"

namespace tarvolt {
namespace {

constexpr const char* kFile = "/station/Data/two.tvd";

struct LoadWindows : testing::Test {
  LoadWindows() {
    station.Boot();
    RawFile raw;
    raw.Front(40000, 40002, 2, Block("", {"CHL0Power", "CHL1Noise", "CHO010", "CHO120"}));
    for (int i = 0; i < 4; ++i) raw.Add(40000.0 + i).Add(1.0 * i).Add(-1.0 * i);
    station.host.disk.Put(kFile, raw.Bytes());
    window = std::make_unique<FormReview>(station.TheSession(), 1, FormChartView::Apply());
    window->show();
  }

  /// Presses a menu item as a person would, when it can be pressed.
  bool Trigger(const QString& name) {
    QAction& action = Item(name);
    if (!action.isEnabled()) return false;
    action.trigger();
    QApplication::processEvents();
    window->Refresh();
    return true;
  }
  QAction& Item(const QString& name) {
    window->Refresh();
    return Find<QAction>(*window, name);
  }
  const ChartWindow& State() { return window->Review().Window(); }

  Station station;
  std::unique_ptr<FormReview> window;
};

TEST_F(LoadWindows, ThePanelAppliesToItsOwnerAndSavesForAllLoads) {
  Settings& settings = station.TheSession().settings;
  LoadOptions options;
  options.LoadFileOffsets = true;
  FormChartLoadingOptions form(station.TheSession(), options, nullptr);
  form.show();
  for (const char* box : {"chkLoadWithLocalOffsets", "chkLoadSelectedChannels", "chkShowOptions"}) Click(form, box);
  form.ApplyToOwner(options);
  EXPECT_TRUE(options.LoadLocalOffsets && options.LoadFileOffsets && options.LoadSelectedChannels);
  EXPECT_FALSE(settings.files.FLO_LocalOffsets) << "not stored yet";
  Click(form, "cmdSave");
  EXPECT_TRUE(form.isVisible());
  EXPECT_TRUE(settings.files.FLO_LocalOffsets && settings.files.FLO_FileOffsets && !settings.files.ShowLoadOptions);
  EXPECT_EQ(station.TheSession().store.GetSetting(Section::Settings, "FLO_LocalOffsets"), "True");
  EXPECT_EQ(station.TheSession().store.GetSetting(Section::Settings, "ShowLoadOptions"), "False");
  Click(form, "cmdOK");
  EXPECT_EQ(form.result(), QDialog::Accepted);
}

TEST_F(LoadWindows, SelectedChannelsComeFromTheForm) {
  station.Set("ShowLoadOptions", false).Set("Channel1Offset", "0.5");
  station.host.dialogs.ChooseFileNext(kFile);
  WithNextDialog([](QWidget& form) {
    EXPECT_EQ(Find<QLabel>(form, "lblCH2").text(), "Noise");
    EXPECT_TRUE(Find<QCheckBox>(form, "ChkCH2").isEnabled());
    EXPECT_FALSE(Find<QCheckBox>(form, "ChkCH3").isEnabled()) << "the file has two channels";
    Click(form, "ChkCH1");
    Click(form, "ChkOffsets");
    Click(form, "cmdOK");
  });
  ASSERT_TRUE(Trigger("mnuLoadSelectedChannels"));
  ASSERT_EQ(State().chart.Count(), 4);
  EXPECT_EQ(State().chart.ChannelCount(), 1);
  EXPECT_EQ(State().chart.GetValue(0, 3), -2.5);
  EXPECT_EQ(State().view.Title, "two  File : Review 1");
}

TEST_F(LoadWindows, ACancelledPanelLoadsNothing) {
  WithNextDialog([](QWidget& form) { Click(form, "cmdCancel"); });
  ASSERT_TRUE(Trigger("MnuLoadDataFile"));
  EXPECT_EQ(station.host.dialogs.Questions(), 0) << "no file is asked for";
  EXPECT_EQ(State().chart.Count(), 0);
}

TEST_F(LoadWindows, AReviewWindowOffersWhatItCanDo) {
  for (const bool loaded : {false, true}) {
    EXPECT_EQ(loaded && window->Review().LoadDataFile(kFile), loaded);
    for (const char* name : {"mnuSaveView", "mnuDataFileInfo", "mnuFullView", "mnuRememberXY"})
      EXPECT_EQ(Item(name).isEnabled(), loaded) << name;
    EXPECT_TRUE(Item("MnuLoadDataFile").isEnabled());
    EXPECT_FALSE(Item("mnuRecallXY").isEnabled());
    EXPECT_FALSE(Item("mnuShowChartNotations").isEnabled()) << "the file has none";
  }
  EXPECT_EQ(Item("mnuAutoScale").shortcut(), QKeySequence(Qt::Key_F12));
  Trigger("mnuVisCH2");
  EXPECT_FALSE(State().chart.ChannelVisible[1]);
  const double bottom = State().chart.YAxisMin;
  Trigger("mnuFullView");
  QTest::keyClick(window.get(), Qt::Key_Up);
  EXPECT_GT(State().chart.YAxisMin, bottom);
  Trigger("mnuLastView");
  EXPECT_EQ(State().chart.YAxisMin, bottom);
  for (const bool shown : {false, true}) {
    QTest::keyClick(window.get(), Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(window->statusBar()->isVisible(), shown);
  }
}

TEST_F(LoadWindows, RecentFilesAreLoadedFromTheMenu) {
  ASSERT_TRUE(window->Review().LoadDataFile(kFile));
  window = std::make_unique<FormReview>(station.TheSession(), 2, FormChartView::Apply());
  window->Refresh();
  QMenu* recent = nullptr;
  for (QMenu* menu : window->menuBar()->findChildren<QMenu*>()) {
    if (menu->title() == "Recently Loa&ded") recent = menu;
  }
  ASSERT_NE(recent, nullptr);
  recent->aboutToShow();
  ASSERT_EQ(recent->actions().size(), 1);
  EXPECT_EQ(recent->actions()[0]->objectName(), "mnuRecentLoaded1");
  recent->actions()[0]->trigger();
  QApplication::processEvents();
  EXPECT_EQ(State().chart.Count(), 4);
}

TEST_F(LoadWindows, TheInformationFollowsTheChartItTellsOf) {
  const auto shown = [this] {
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    auto* form = window->findChild<QWidget*>("FormFileInfo");
    return form != nullptr && form->isVisible();
  };
  ASSERT_TRUE(window->Review().LoadDataFile(kFile));
  ASSERT_TRUE(Trigger("mnuDataFileInfo"));
  EXPECT_TRUE(shown());
  ASSERT_TRUE(window->Review().LoadDataFile(kFile));
  window->Refresh();
  EXPECT_FALSE(shown()) << "another load takes it away";

  Trigger("mnuDataFileInfo");
  Find<QWidget>(*window, "FormFileInfo").close();
  EXPECT_FALSE(shown());
  window->Refresh();
  EXPECT_FALSE(State().view.InfoShown);
  EXPECT_FALSE(shown()) << "a person closed it";

  Trigger("mnuDataFileInfo");
  station.host.dialogs.ChooseFileNext(kFile);
  WithNextDialog([](QWidget& form) { Click(form, "cmdOK"); });
  ASSERT_TRUE(Trigger("mnuLoadWithFileOffsets"));
  EXPECT_EQ(State().chart.GetValue(1, 3), 17);
  EXPECT_TRUE(shown()) << "after a load with offsets it comes back";
}

}  // namespace
}  // namespace tarvolt
