// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/options/form_options.h"

#include <QDialogButtonBox>
#include <QVBoxLayout>
#include <algorithm>

#include "forms/options/identity_page.h"
#include "forms/options/run_pages.h"
#include "forms/options/sound_page.h"
#include "forms/options/station_pages.h"
#include "forms/qt_text.h"
#include "text/number.h"

namespace tarvolt {

FormOptions::FormOptions(Session& session, FormMain& form, QWidget* parent)
    : QDialog(parent), session_(session), form_(form), fields_([this] { Refresh(); }) {
  setObjectName(QStringLiteral("FormOptions"));
  setWindowTitle(QStringLiteral("Options"));
  setAttribute(Qt::WA_DeleteOnClose);
  auto* layout = new QVBoxLayout(this);
  tabs_ = new QTabWidget(this);
  tabs_->setObjectName(QStringLiteral("TabOptions"));
  layout->addWidget(tabs_, 1);
  problem_ = new QLabel(this);
  problem_->setObjectName(QStringLiteral("LblProblem"));
  problem_->setTextFormat(Qt::PlainText);
  problem_->setWordWrap(true);
  problem_->setStyleSheet(QStringLiteral("color: #b00000"));
  problem_->hide();
  layout->addWidget(problem_);
  AddPages();
  AddButtons();
  ShowSettings();
  const int page = ValLong(session_.store.GetSetting(Section::Settings, "OptionsTabII"));
  tabs_->setCurrentIndex(page >= 0 && page < tabs_->count() ? page : 0);
  FitToPages(*this);
}

void FormOptions::AddPages() {
  AddPage(MakeIdentityPage(fields_, session_.host.clock, notes_, this), QStringLiteral("Identity"));
  sources_ = new SourcePage(fields_, this);
  AddPage(sources_, QStringLiteral("Data Source"));
  timing_ = MakeTimingPage(fields_, this);
  AddPage(timing_, QStringLiteral("Timing"));
  AddPage(MakeChartPage(fields_, this), QStringLiteral("Chart"));
  AddPage(MakeFilesPage(fields_, this), QStringLiteral("Files"));
  AddPage(MakeBackupPage(fields_, this), QStringLiteral("Backup"));
  form_.Sound().LookForCard();
  AddPage(MakeSoundPage(fields_, session_, this), QStringLiteral("Sound"));
  AddPage(MakeUdsPage(fields_, this), QStringLiteral("UDS"));
  AddPage(MakeNetworkPage(fields_, this), QStringLiteral("Network"));
  AddPage(MakeMessagesPage(fields_, this), QStringLiteral("Messages"));
}

void FormOptions::AddPage(QWidget* page, const QString& title) {
  tabs_->addTab(Scrolling(page, this), title);
}

void FormOptions::AddButtons() {
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Apply, this);
  buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("cmdOK"));
  buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("cmdCancel"));
  buttons->button(QDialogButtonBox::Apply)->setObjectName(QStringLiteral("cmdApply"));
  connect(buttons, &QDialogButtonBox::accepted, this, [this] {
    if (Confirm()) accept();
  });
  connect(buttons, &QDialogButtonBox::rejected, this, [this] { reject(); });
  connect(buttons->button(QDialogButtonBox::Apply), &QPushButton::clicked, this, [this] {
    if (Confirm()) ShowSettings();
  });
  layout()->addWidget(buttons);
}

void FormOptions::ShowSettings() {
  fields_.Show(session_.settings);
  shownNotes_ = ToQString(session_.notes);
  notes_->setPlainText(shownNotes_);
  shownNotes_ = notes_->toPlainText();
  Refresh();
}

void FormOptions::Refresh() {
  const Settings draft = fields_.Draft();
  sources_->SetDsrcToolTip(draft);
  ConvertCount(*timing_, draft);
}

bool FormOptions::Confirm() {
  const QString notes = notes_->toPlainText();
  const auto newNotes = notes == shownNotes_ ? std::nullopt : std::optional(FromQString(notes));
  const auto problem = form_.Options().Confirm(fields_.Changed(), newNotes, KeysOfChangedPages());
  problem_->setVisible(problem.has_value());
  if (problem) ShowProblem(*problem);
  return !problem;
}

std::vector<std::string> FormOptions::KeysOfChangedPages() const {
  const OptionTexts changed = fields_.Changed();
  std::vector<std::string> keys;
  for (int page = 0; page < tabs_->count(); ++page) {
    const std::vector<std::string> here = fields_.KeysOn(*tabs_->widget(page));
    const bool isChanged = std::any_of(changed.begin(), changed.end(), [&](const auto& text) {
      return std::find(here.begin(), here.end(), text.first) != here.end();
    });
    if (isChanged) keys.insert(keys.end(), here.begin(), here.end());
  }
  return keys;
}

void FormOptions::ShowProblem(const OptionsProblem& problem) {
  problem_->setText(ToQString(problem.text));
  QWidget* field = problem.key == "NotesFileName" ? notes_ : fields_.WidgetOf(problem.key);
  for (int page = 0; page < tabs_->count() && field != nullptr; ++page) {
    if (!tabs_->widget(page)->isAncestorOf(field)) continue;
    tabs_->setCurrentIndex(page);
    static_cast<QScrollArea*>(tabs_->widget(page))->ensureWidgetVisible(field);
  }
  if (field != nullptr) field->setFocus();
  if (auto* line = qobject_cast<QLineEdit*>(field)) line->selectAll();
  if (session_.settings.program.ShowMsgBox)
    session_.host.dialogs.Ask({problem.title, problem.text, Buttons::Ok, Answer::Ok});
}

void FormOptions::done(int result) {
  session_.store.SaveSetting(Section::Settings, "OptionsTabII", NumberText(std::int64_t{tabs_->currentIndex()}));
  QDialog::done(result);
}

}  // namespace tarvolt
