// SPDX-License-Identifier: GPL-3.0-or-later
#include <QMenuBar>
#include <QMessageBox>

#include "core/chart/command_states.h"
#include "core/station/priority.h"
#include "forms/chart/chart_menus.h"
#include "forms/chart/picture_commands.h"
#include "forms/form_main/main_window.h"
#include "forms/load/load_menus.h"
#include "forms/options/form_options.h"
#include "forms/qt_text.h"
#include "forms/recovered/form_recovered_charts.h"
#include "forms/triggers/form_triggers.h"

namespace tarvolt {
namespace {

// Some desktops have no key of their own for it.
QKeySequence QuitKey() {
  const QKeySequence own(QKeySequence::Quit);
  return own.isEmpty() ? QKeySequence(QStringLiteral("Ctrl+Q")) : own;
}

}  // namespace

QAction* MainWindow::Add(QMenu& menu, const char* name, const QString& caption, const QKeySequence& key,
                         Command command, Test enabled, Test checked) {
  return items_.Add(menu, name, caption, key, std::move(command), std::move(enabled), std::move(checked));
}

void MainWindow::MakeMenus() {
  MakeFileMenu();
  MakeModeMenu();
  AddViewMenu(*menuBar()->addMenu(QStringLiteral("&View")), items_, window_, form_.Chart());
  MakeChannelsMenu();
  MakeOptionsMenu();
  MakeToolsMenu();
  MakeLogsMenu();
  MakeHelpMenu();
}

void MainWindow::MakeFileMenu() {
  QMenu& menu = *menuBar()->addMenu(QStringLiteral("&File"));
  startMenu_ = Add(
      menu, "mnuStartChart", QStringLiteral("Start New Chart"), QKeySequence(Qt::Key_F8), [this] { form_.cmdStart(); },
      [this] { return StatesOf(window_).cmdStart; });
  menu.addSeparator();
  AddLoadMenus(menu, items_, session_, form_.Loads());
  Add(menu, "mnuRecoveredCharts", QStringLiteral("&Recovered Charts..."), {},
      [this] { (new FormRecoveredCharts(form_.Recovered(), this))->open(); });
  Add(menu, "mnuReview", QStringLiteral("New Re&view Window"), QKeySequence::New, [this] { NewReview(); });
  menu.addSeparator();
  Add(
      menu, "mnuSave", QStringLiteral("&Save"), QKeySequence::Save, [this] { form_.mnuSave(); },
      [this] { return StatesOf(window_).mnuSave; });
  Add(
      menu, "mnuSaveView", QStringLiteral("Save &View..."), {}, [this] { form_.cmdSaveView(); },
      [this] { return StatesOf(window_).SaveView; });
  AddPictureCommands(menu, *plot_, [this](const std::string& file) { form_.Images().NoteSaved(file); });
  Add(
      menu, "mnuDataFileInfo", QStringLiteral("Data File &Information"), {},
      [this] { form_.Chart().look.mnuDataFileInfo(); }, [this] { return StatesOf(window_).InfoCommands; });
  menu.addSeparator();
  Add(menu, "mnuLoadProfile", QStringLiteral("Load Pro&file..."), {}, [this] { form_.Profiles().mnuLoadProfile(); });
  Add(menu, "mnuSaveProfile", QStringLiteral("Save Profil&e..."), {}, [this] { form_.Profiles().mnuSaveProfile(); });
  QMenu* profiles = menu.addMenu(QStringLiteral("Recent Profiles"));
  connect(profiles, &QMenu::aboutToShow, this, [this, profiles] { FillProfiles(*profiles); });
  menu.addSeparator();
  Add(menu, "mnuExit", QStringLiteral("E&xit Program...Close All"), QuitKey(), [this] { close(); });
}

void MainWindow::FillProfiles(QMenu& menu) {
  menu.clear();
  for (int place = 0; place < static_cast<int>(session_.recent.profiles.size()); ++place) {
    const std::string& name = session_.recent.profiles[place];
    if (name.empty()) continue;
    menu.addAction(ToQString(name), this,
                   [this, place] { items_.RunLater([this, place] { form_.Profiles().mnuProfile(place); }); })
        ->setObjectName(QStringLiteral("mnuProfile%1").arg(place + 1));
  }
  if (menu.isEmpty()) menu.addAction(QStringLiteral("(none)"))->setEnabled(false);
}

void MainWindow::MakeModeMenu() {
  QMenu& menu = *menuBar()->addMenu(QStringLiteral("&Mode"));
  struct Row {
    const char* name;
    const char* caption;
    SessionMode mode;
  };
  for (const Row& row :
       {Row{"mnuStandAlone", "&Stand Alone", SessionMode::StandAlone}, Row{"mnuServer", "Ser&ver", SessionMode::Server},
        Row{"mnuClient", "&Client", SessionMode::Client}}) {
    Add(
        menu, row.name, QString::fromLatin1(row.caption), {}, [this, row] { form_.EnterMode(row.mode); },
        [this] { return StatesOf(window_).ModeMenus; }, [this, row] { return window_.Mode == row.mode; });
  }
}

void MainWindow::MakeChannelsMenu() {
  QMenu& menu = *menuBar()->addMenu(QStringLiteral("&Channels"));
  ChartCommands& chart = form_.Chart();
  AddVisibilityMenu(*menu.addMenu(QStringLiteral("&Visibility")), items_, window_, chart);
  QMenu& values = *menu.addMenu(QStringLiteral("Show &Value of"));
  QMenu& averages = *menu.addMenu(QStringLiteral("&Average of"));
  for (int channel = 0; channel < kChannels; ++channel) {
    const QString caption = QStringLiteral("CH&%1").arg(channel + 1);
    const auto runs = [this, channel] { return channel < window_.run.ChannelCount && window_.run.ChartRunning(); };
    const QByteArray number = QByteArray::number(channel + 1);
    Add(
        values, ("mnuCH" + number).constData(), caption, {}, [&chart, channel] { chart.look.mnuCH(channel); }, runs,
        [this, channel] { return window_.run.ShownChannel == channel + 1; });
    Add(
        averages, ("mnuAvgCH" + number).constData(), caption + QStringLiteral("\tAlt+%1").arg(channel + 1), {},
        [this, channel] { form_.Average().StartChannelAvg(channel + 1); }, runs);
  }
  menu.addSeparator();
  Add(menu, "mnuTriggers", QStringLiteral("&Triggers..."), {},
      [this] { (new FormTriggers(session_, form_, this))->open(); });
}

void MainWindow::MakeOptionsMenu() {
  QMenu& menu = *menuBar()->addMenu(QStringLiteral("&Options"));
  Add(menu, "mnuOptions", QStringLiteral("&Options..."), QKeySequence(QStringLiteral("Ctrl+,")),
      [this] { (new FormOptions(session_, form_, this))->open(); });
  Add(
      menu, "mnuChannelEquations", QStringLiteral("Channel &Equations..."), {},
      [this] { form_.Equations().mnuChannelEquations(); }, [this] { return window_.AtRest(); });
  Add(menu, "mnuTickGrid", QStringLiteral("&Ticks and Grid..."), {}, [this] { ShowTickGrid(); });
  Add(menu, "mnuColors", QStringLiteral("&Colors..."), {}, [this] { ShowColors(); });
  Add(menu, "mnuFonts", QStringLiteral("&Fonts..."), {}, [this] { ShowFonts(); });
  menu.addSeparator();
  MakePriorityMenu(menu);
}

void MainWindow::MakePriorityMenu(QMenu& options) {
  QMenu& priority = *options.addMenu(QStringLiteral("&Priority"));
  struct Row {
    const char* name;
    const char* caption;
    PriorityClass priorityClass;
  };
  for (const Row& row : {Row{"mnuPriorityNormal", "&Normal", PriorityClass::Normal},
                         Row{"mnuPriorityAboveNormal", "&Above Normal", PriorityClass::AboveNormal},
                         Row{"mnuPriorityHigh", "&High", PriorityClass::High},
                         Row{"mnuPriorityRealTime", "&Real Time", PriorityClass::RealTime}}) {
    Add(priority, row.name, QString::fromLatin1(row.caption), {},
        [this, row] { mnuPriority(session_, row.priorityClass); });
  }
}

void MainWindow::MakeToolsMenu() {
  QMenu& menu = *menuBar()->addMenu(QStringLiteral("&Tools"));
  menu.menuAction()->setObjectName(QStringLiteral("MnuTools"));
  Add(
      menu, "mnuApplyFunction", QStringLiteral("Apply &Function to Loaded Data..."), {},
      [this] { form_.Equations().mnuApplyFunction(); }, [this] { return form_.Equations().CanApplyFunction(); });
  Add(
      menu, "mnuSaveFTPImage", QStringLiteral("Save &Images Regularly"), {},
      [this] { form_.Images().mnuSaveFTPImage(); }, {}, [this] { return form_.Images().IsOn(); });
  Add(menu, "mnuTriggerMonitor", QStringLiteral("Trigger &Monitor"), {}, [this] {
    monitor_->show();
    monitor_->raise();
  });
  menu.addSeparator();
  sound_.AddMenus(menu, items_);
}

void MainWindow::MakeLogsMenu() {
  QMenu& menu = *menuBar()->addMenu(QStringLiteral("&Logs"));
  Add(menu, "mnuSessionLog", QStringLiteral("&Session Log"), QKeySequence(QStringLiteral("Ctrl+L")), [this] {
    log_->show();
    log_->raise();
  });
  Add(menu, "mnuObserverLog", QStringLiteral("&Observer Log"), QKeySequence(QStringLiteral("Ctrl+B")),
      [this] { form_.OLog().Open(); });
}

void MainWindow::MakeHelpMenu() {
  QMenu& menu = *menuBar()->addMenu(QStringLiteral("&Help"));
  Add(menu, "mnuKeys", QStringLiteral("&Keys"), QKeySequence::HelpContents, [this] { ShowHelp(); });
  Add(menu, "mnuAbout", QStringLiteral("&About Tarvolt"), {}, [this] {
    QMessageBox::about(this, QStringLiteral("About Tarvolt"),
                       QStringLiteral("Tarvolt " TARVOLT_VERSION "\nA strip-chart recorder and data logger for radio "
                                      "astronomy.\nFree software under the GNU General Public License, version 3 or "
                                      "later."));
  });
}

void MainWindow::ShowHelp() {
  QMessageBox::information(this, QStringLiteral("Keys"),
                           QStringLiteral("F8\tstart or stop the chart\n"
                                          "F9\tfull view\n"
                                          "F11\tauto-scroll on or off\n"
                                          "F12\tauto-scale on or off\n"
                                          "Arrows\tscroll\n"
                                          "Alt+1 to Alt+8\taverage of a channel\n"
                                          "Escape\tends a wait; clears the value display\n"
                                          "Shift+F3\tstatus line on or off\n"
                                          "Shift+F4\taddress of this machine\n"
                                          "Shift+F5\tlast message of the data source\n\n"
                                          "Wheel\tzooms about the pointer (with Shift the y axis)\n"
                                          "Drag\tpans\n"
                                          "Right button or Shift\tdraws a rectangle to zoom to\n"
                                          "Double click\tfull view"));
}

}  // namespace tarvolt
