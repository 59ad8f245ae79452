// SPDX-License-Identifier: GPL-3.0-or-later
#include <QMenuBar>

#include "files/log_folder.h"
#include "forms/observer_log/form_observer_log.h"
#include "forms/observer_log/form_olog_includes.h"
#include "forms/observer_log/keep_setting.h"
#include "forms/qt_text.h"
#include "logs/observer_log.h"

namespace tarvolt {
namespace {

constexpr const char* kDateFormatTitle = "Observer Log Date Format";

const char* BooleanText(bool on) {
  return on ? "True" : "False";
}

}  // namespace

// The commands run outside of the click that asked for them, so that one which waits does not hold the menu.
QAction* FormObserverLog::Add(QMenu& menu, const char* name, const QString& caption, const QKeySequence& key,
                              Command command) {
  QAction* action = menu.addAction(caption);
  action->setObjectName(QString::fromLatin1(name));
  action->setShortcut(key);
  connect(action, &QAction::triggered, this,
          [this, command = std::move(command)] { QMetaObject::invokeMethod(this, command, Qt::QueuedConnection); });
  return action;
}

void FormObserverLog::AddSetting(QMenu& menu, const char* name, const QString& caption, const char* key, bool on) {
  QAction* action = menu.addAction(caption);
  action->setObjectName(QString::fromLatin1(name));
  action->setCheckable(true);
  action->setChecked(on);
  connect(action, &QAction::toggled, this,
          [this, key](bool nowOn) { KeepSetting(session_, Section::Settings, key, BooleanText(nowOn)); });
}

void FormObserverLog::MakeMenus() {
  MakeFileMenu();
  MakeFormatMenu();
  MakeEntriesMenu();
  MakeMacroMenu();
}

void FormObserverLog::MakeFileMenu() {
  const Settings& settings = session_.settings;
  QMenu& menu = *menuBar()->addMenu(QStringLiteral("&File"));
  Add(menu, "mnuLoad", QStringLiteral("&Load Log..."), QKeySequence::Open, [this] { Load(); });
  Add(menu, "mnuSave", QStringLiteral("&Save Log"), QKeySequence::Save, [this] { Save(); });
  Add(menu, "mnuSaveAs", QStringLiteral("Save Log &As..."), QKeySequence(QStringLiteral("Ctrl+Shift+S")),
      [this] { SaveAs(); });
  menu.addSeparator();
  AddSetting(menu, "mnuAutoSave", QStringLiteral("A&utomatic Save"), "OAutoSave", settings.observerLog.OAutoSave);
  AddSetting(menu, "mnuLoadOnStartUp", QStringLiteral("Open Log on Start &Up"), "LoadLogOnStartUp",
             settings.observerLog.LoadLogOnStartUp);
  Add(menu, "mnuDefaultLogDirectory", QStringLiteral("&Default Log Directory..."), {},
      [this] { AskDefaultLogDirectory(); });
  storeWithObservation_ = Add(menu, "mnuStoreLogWithObservation", QStringLiteral("Save with &Observation..."), {},
                              [this] { AskStoreLogWithObservation(); });
  storeWithObservation_->setCheckable(true);
  storeWithObservation_->setChecked(settings.observerLog.StoreLogWithObservation);
  menu.addSeparator();
  Add(menu, "mnuClose", QStringLiteral("&Close"), QKeySequence(QStringLiteral("Ctrl+W")), [this] { close(); });
}

void FormObserverLog::MakeFormatMenu() {
  QMenu& menu = *menuBar()->addMenu(QStringLiteral("F&ormat"));
  Add(menu, "mnuBold", QStringLiteral("&Bold"), QKeySequence::Bold,
      [this] { text_->setFontWeight(text_->fontWeight() >= QFont::Bold ? QFont::Normal : QFont::Bold); });
  Add(menu, "mnuItalic", QStringLiteral("&Italic"), QKeySequence::Italic,
      [this] { text_->setFontItalic(!text_->fontItalic()); });
  Add(menu, "mnuUnderline", QStringLiteral("&Underline"), QKeySequence::Underline,
      [this] { text_->setFontUnderline(!text_->fontUnderline()); });
}

void FormObserverLog::MakeEntriesMenu() {
  QMenu& menu = *menuBar()->addMenu(QStringLiteral("&Entries"));
  Add(menu, "mnuTimeStamp", QStringLiteral("&Time Stamp"), QKeySequence(QStringLiteral("Ctrl+T")),
      [this] { DoTimeStamp(); });
  Add(menu, "mnuAddFileReference", QStringLiteral("Add File &Reference..."), QKeySequence(QStringLiteral("Ctrl+R")),
      [this] { AddFileReference(); });
  Add(menu, "mnuAppendFile", QStringLiteral("A&ppend File..."), {}, [this] { AppendFile(); });
  Add(menu, "mnuSnapShot", QStringLiteral("&Snapshot of the Chart"), QKeySequence(QStringLiteral("Ctrl+G")),
      [this] { SnapShot(); });
  menu.addSeparator();
  Add(menu, "mnuAutoEntry", QStringLiteral("&Automatic Entries..."), {},
      [this] { (new FormOLogIncludes(session_, this))->open(); });
  AddSetting(menu, "mnuUseUT", QStringLiteral("Use &UT"), "OLogUT", session_.settings.observerLog.OLogUT);
  Add(menu, "mnuDateFormat", QStringLiteral("&Date Format..."), {}, [this] { AskDateFormat(); });
}

void FormObserverLog::MakeMacroMenu() {
  QMenu& menu = *menuBar()->addMenu(QStringLiteral("&Macros"));
  Add(menu, "mnuConfigureMacros", QStringLiteral("&Configure Macros..."), {}, [this] { ConfigureMacros(0); });
  Add(menu, "mnuLoadMacros", QStringLiteral("&Load Macros..."), {}, [this] { LoadMacros(); });
  Add(menu, "mnuSaveMacros", QStringLiteral("&Save Macros..."), {}, [this] { SaveMacros(); });
}

void FormObserverLog::AskDateFormat() {
  const auto entered =
      session_.host.dialogs.AskText({kDateFormatTitle, "Enter your Date Format: MM/DD/YYYY , DD/MM/YYYY or VERBOSE",
                                     session_.settings.observerLog.oDateFormat});
  if (!entered) return;
  const auto format = OLogDateFormat(*entered);
  if (format) return KeepSetting(session_, Section::Settings, "oDateFormat", *format);
  session_.host.dialogs.ShowMessage(kDateFormatTitle, "Not a legal format. Use MM/DD/YYYY, DD/MM/YYYY, or VERBOSE.");
}

void FormObserverLog::AskDefaultLogDirectory() {
  const std::string& folder = session_.settings.observerLog.DefaultLogDirectory;
  const auto chosen = hooks_.chooseFolder(folder.empty() ? session_.DataFolder().string() : folder);
  if (chosen) KeepSetting(session_, Section::Settings, "DefaultLogDirectory", *chosen);
}

void FormObserverLog::AskStoreLogWithObservation() {
  const bool isOn = session_.settings.observerLog.StoreLogWithObservation;
  const Question question{"Observation Log Save Method",
                          "Attempt to save log to same directory as observation?\n\n"
                          "If you select YES then: \n"
                          "If an observation is in progress when the log is started,\n"
                          "the log save will default to the observation's directory. If there is\n"
                          "no observation in progress, the log save will default to the \n"
                          "Default Observer Log Directory.\n\n"
                          "If you select NO then:\n"
                          "Observation logs will be stored in the Default Observer Log Directory.",
                          Buttons::YesNo, isOn ? Answer::Yes : Answer::No};
  const bool on = session_.host.dialogs.Ask(question) == Answer::Yes;
  KeepSetting(session_, Section::Settings, "StoreLogWithObservation", BooleanText(on));
  storeWithObservation_->setChecked(on);
}

}  // namespace tarvolt
