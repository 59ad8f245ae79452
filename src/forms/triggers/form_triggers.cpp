// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/triggers/form_triggers.h"

#include <QDialogButtonBox>
#include <QGroupBox>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

#include "forms/options/option_page.h"
#include "forms/qt_text.h"

namespace tarvolt {
namespace {

constexpr const char* kTriggerFilter = "Trigger File|*.ini|Any (*.*)|*.*";

}  // namespace

FormTriggers::FormTriggers(Session& session, FormMain& form, QWidget* parent)
    : QDialog(parent), session_(session), triggers_(form.Triggers()) {
  setObjectName(QStringLiteral("FormTriggers"));
  setWindowTitle(QStringLiteral("Configure Triggers"));
  setAttribute(Qt::WA_DeleteOnClose);
  auto* layout = new QVBoxLayout(this);
  tabs_ = new QTabWidget(this);
  tabs_->setObjectName(QStringLiteral("TabTriggers"));
  layout->addWidget(tabs_, 1);
  AddPages();
  AddChannels();
  problem_ = new QLabel(this);
  problem_->setObjectName(QStringLiteral("LblProblem"));
  problem_->setTextFormat(Qt::PlainText);
  problem_->setWordWrap(true);
  problem_->setStyleSheet(QStringLiteral("color: #b00000"));
  problem_->hide();
  layout->addWidget(problem_);
  AddButtons();
  TriggerDefinitions now;
  for (int slot = 0; slot < kTriggerSlots; ++slot) now[slot] = triggers_.oTriggers()[slot];
  ShowTriggers(now);
  ShowChannels();
  FitToPages(*this);
}

void FormTriggers::AddPages() {
  for (int slot = 0; slot < kTriggerSlots; ++slot) {
    const QString number = QString::number(NumberOfSlot(slot));
    pages_[slot] = new TriggerPage(this);
    pages_[slot]->setObjectName(QStringLiteral("Trigger") + number);
    tabs_->addTab(Scrolling(pages_[slot], this), number);
  }
}

void FormTriggers::AddChannels() {
  auto* box = new QGroupBox(QStringLiteral("Channels whose triggers are tested"), this);
  auto* inside = new QVBoxLayout(box);
  inside->addWidget(MakeChannelRow(QStringLiteral("ChkChTriggerEnabled"), enabled_, this));
  layout()->addWidget(box);
}

void FormTriggers::AddButtons() {
  auto* buttons = new QDialogButtonBox(this);
  const auto add = [this, buttons](const char* name, const QString& caption, QDialogButtonBox::ButtonRole role,
                                   void (FormTriggers::*act)()) {
    auto* button = buttons->addButton(caption, role);
    button->setObjectName(QString::fromLatin1(name));
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, [this, act] { (this->*act)(); });
  };
  add("cmdLoadTriggers", QStringLiteral("&Load..."), QDialogButtonBox::ResetRole, &FormTriggers::cmdLoadTriggers);
  add("cmdSaveTriggers", QStringLiteral("&Save..."), QDialogButtonBox::ResetRole, &FormTriggers::cmdSaveTriggers);
  add("CmdDone", QStringLiteral("&Done"), QDialogButtonBox::ActionRole, &FormTriggers::CmdDone);
  findChild<QPushButton*>(QStringLiteral("CmdDone"))->setDefault(true);  // the Enter key, which must not cancel
  auto* cancel = buttons->addButton(QDialogButtonBox::Cancel);
  cancel->setObjectName(QStringLiteral("cmdCancel"));
  cancel->setAutoDefault(false);
  connect(buttons, &QDialogButtonBox::rejected, this, [this] { reject(); });
  layout()->addWidget(buttons);
}

void FormTriggers::ShowTriggers(const TriggerDefinitions& triggers) {
  for (int slot = 0; slot < kTriggerSlots; ++slot) pages_[slot]->Show(triggers[slot]);
}

void FormTriggers::ShowChannels() {
  const TriggerChannels channels = TriggerChannelsOf(session_.settings);
  for (int channel = 0; channel < kChannels; ++channel) {
    enabled_[channel]->setChecked(channels.ChTriggerEnabled[channel]);
    for (int slot = 0; slot < kTriggerSlots; ++slot) {
      pages_[slot]->ShowWatched(channel, Watches(channels, slot, channel));
    }
  }
}

TriggerChannels FormTriggers::ReadChannels() const {
  TriggerChannels channels;
  for (int channel = 0; channel < kChannels; ++channel) {
    channels.ChTriggerEnabled[channel] = enabled_[channel]->isChecked();
    for (int slot = 0; slot < kTriggerSlots; ++slot) {
      SetWatches(channels, slot, channel, pages_[slot]->Watched(channel));
    }
  }
  return channels;
}

bool FormTriggers::ReadPages(TriggerDefinitions& triggers) {
  for (int slot = 0; slot < kTriggerSlots; ++slot) {
    QLineEdit* wrong = nullptr;
    triggers[slot] = pages_[slot]->Read(wrong);
    if (wrong == nullptr) continue;
    tabs_->setCurrentIndex(slot);
    wrong->setFocus();
    wrong->selectAll();
    ShowProblem(QStringLiteral("Trigger %1: \"%2\" is not a number.").arg(NumberOfSlot(slot)).arg(wrong->text()));
    return false;
  }
  problem_->hide();
  return true;
}

// A file dialog yields: the program may end meanwhile.
void FormTriggers::cmdLoadTriggers() {
  const QPointer<FormTriggers> alive(this);
  const auto file =
      session_.host.dialogs.AskOpenFile({"Load Triggers", session_.home.string(), "", ".ini", kTriggerFilter});
  if (!alive || !file) return;
  const auto triggers = triggers_.ReadTriggers(*file);
  if (!triggers) return ShowProblem(ToQString("Could not load the triggers of " + *file + ": " + triggers.Words()));
  problem_->hide();
  ShowTriggers(*triggers);
}

void FormTriggers::cmdSaveTriggers() {
  TriggerDefinitions triggers;
  if (!ReadPages(triggers)) return;
  const QPointer<FormTriggers> alive(this);
  const auto file = session_.host.dialogs.AskSaveFile(
      {"Save Triggers", session_.home.string(), "Triggers.ini", ".ini", kTriggerFilter});
  if (!alive || !file) return;
  const Outcome saved = triggers_.SaveoTriggers(triggers, *file);
  if (!saved) ShowProblem(ToQString("Could not save the triggers to " + *file + ": " + saved.Words()));
}

void FormTriggers::CmdDone() {
  TriggerDefinitions triggers;
  if (!ReadPages(triggers)) return;
  const Outcome taken = triggers_.TakeOver(triggers, ReadChannels());
  if (taken) return accept();
  ShowProblem(ToQString("The triggers could not be stored: " + taken.Words()));
}

void FormTriggers::ShowProblem(const QString& text) {
  problem_->setText(text);
  problem_->show();
}

}  // namespace tarvolt
