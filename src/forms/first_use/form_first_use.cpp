// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/first_use/form_first_use.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QVBoxLayout>

#include "core/sound/sound_card.h"
#include "core/station/first_use.h"
#include "core/station/options_command.h"
#include "forms/options/identity_page.h"
#include "forms/options/station_pages.h"
#include "forms/qt_text.h"
#include "text/number.h"

namespace tarvolt {
FormFirstUse::FormFirstUse(Session& session, Settings& settings) : session_(session), settings_(settings), fields_({}) {
  setObjectName(QStringLiteral("FormFirstUse"));
  setWindowTitle(QStringLiteral("Tarvolt - First Use"));
  auto* page = new OptionPage(fields_, this);
  AddStationFields(*page, fields_, session.host.clock);
  page->Group(QStringLiteral("Data and sound"));
  page->Browse("DataDirectory", QStringLiteral("Data Directory"), "cmdBrowseDataDirectory",
               [this](const QString& text) { return ChooseFolder(this, QStringLiteral("Data Directory"), text); });
  page->SoundCards(SoundCardsToChoose(session, settings));
  AddFirstSource(*page);
  page->Close();
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("cmdOK"));
  buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("cmdCancel"));
  connect(buttons, &QDialogButtonBox::accepted, this, [this] { Confirm(); });
  connect(buttons, &QDialogButtonBox::rejected, this, [this] { reject(); });
  auto* words = new QLabel(QStringLiteral("Please tell who and where this station is. The files that it records carry "
                                          "it. All of this can be changed later under Options."),
                           this);
  words->setWordWrap(true);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(words);
  layout->addWidget(Scrolling(page, this), 1);
  layout->addWidget(buttons);
  fields_.Show(settings);
  if (auto* name = qobject_cast<QLineEdit*>(fields_.WidgetOf("LocalName"))) name->selectAll();
  FitToPages(*this);
}

void FormFirstUse::AddFirstSource(OptionPage& page) {
  QComboBox& list = page.List("Dsrc0", QStringLiteral("Channel 1 records"), {});
  for (const DataSourceId source : FirstSources(session_, settings_)) {
    list.addItem(ToQString(SourceName(source)), ToQString(NumberText(std::int64_t{source})));
  }
}

void FormFirstUse::Confirm() {
  Settings draft = settings_;
  auto problem = ReadOptionTexts(fields_.Changed(), draft);
  if (!problem) problem = ReadyDataDirectory(session_, draft);
  if (!problem) {
    settings_ = draft;
    return accept();
  }
  if (QWidget* field = fields_.WidgetOf(problem->key)) field->setFocus();
  session_.host.dialogs.Ask({problem->title, problem->text, Buttons::Ok, Answer::Ok});
}

bool RunFirstUse(Session& session, Settings& settings) {
  FormFirstUse dialog(session, settings);
  if (dialog.exec() == QDialog::Accepted) return true;
  session.host.dialogs.Ask({"Tarvolt", "Intial Settings Not Completed", Buttons::Ok, Answer::Ok});
  return false;
}

}  // namespace tarvolt
