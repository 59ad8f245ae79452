// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/sound/form_sound_format.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "forms/qt_text.h"

namespace tarvolt {

FormSoundFormat::FormSoundFormat(const Session& session, const std::string& card, int row, Chosen chosen,
                                 QWidget* parent)
    : QDialog(parent), chosen_(std::move(chosen)) {
  setObjectName(QStringLiteral("FormSoundFormat"));
  setWindowTitle(QStringLiteral("Sound Format"));
  setAttribute(Qt::WA_DeleteOnClose);
  auto* layout = new QVBoxLayout(this);
  auto* name = new QLabel(ToQString(card), this);
  name->setTextFormat(Qt::PlainText);
  name->setWordWrap(true);
  layout->addWidget(name);
  list_ = new QListWidget(this);
  list_->setObjectName(QStringLiteral("LstFormats"));
  layout->addWidget(list_, 1);
  words_ = new QLabel(this);
  words_->setObjectName(QStringLiteral("LblFormats"));
  words_->setWordWrap(true);
  layout->addWidget(words_);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  QPushButton* ok = buttons->button(QDialogButtonBox::Ok);
  ok->setObjectName(QStringLiteral("cmdOK"));
  buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("cmdCancel"));
  layout->addWidget(buttons);
  connect(buttons, &QDialogButtonBox::accepted, this, [this] { Choose(); });
  connect(buttons, &QDialogButtonBox::rejected, this, [this] { reject(); });
  connect(list_, &QListWidget::itemDoubleClicked, this, [this] { Choose(); });
  FillList(session, card, row);
  ok->setEnabled(Selected() != nullptr);
  connect(list_, &QListWidget::itemSelectionChanged, this, [this, ok] { ok->setEnabled(Selected() != nullptr); });
  resize(380, 420);
}

void FormSoundFormat::FillList(const Session& session, const std::string& card, int row) {
  const std::vector<SoundFormatLine> lines = SoundFormatsOf(session, card);
  for (const SoundFormatLine& line : lines) AddLine(line, row);
  const bool isUsable =
      std::any_of(lines.begin(), lines.end(), [](const SoundFormatLine& line) { return line.usable; });
  words_->setText(lines.empty() ? QStringLiteral("The sound input cannot be asked for its formats now: it is not "
                                                 "there, or a chart or another program is using it.")
                  : isUsable    ? QStringLiteral("The format counts from the next start of a chart.")
                                : QStringLiteral("A chart needs a format of 16 Bit, and this input has none."));
}

void FormSoundFormat::AddLine(const SoundFormatLine& line, int row) {
  QString text = ToQString(line.text);
  if (!line.usable) text += QStringLiteral("  (a chart needs 16 Bit)");
  auto* item = new QListWidgetItem(text, list_);
  item->setData(Qt::UserRole, line.row);
  if (!line.usable) item->setFlags(Qt::NoItemFlags);
  const bool isOnly = line.row < 0;  // an input's own format, whatever is set
  if (line.usable && (isOnly || line.row == row)) list_->setCurrentItem(item);
}

// A list that gets the focus makes its first line the current one by itself, and selects nothing.
QListWidgetItem* FormSoundFormat::Selected() const {
  return list_->selectedItems().value(0);
}

void FormSoundFormat::Choose() {
  const QListWidgetItem* item = Selected();
  if (item == nullptr) return;
  const int row = item->data(Qt::UserRole).toInt();
  accept();
  if (chosen_) chosen_(row);
}

}  // namespace tarvolt
