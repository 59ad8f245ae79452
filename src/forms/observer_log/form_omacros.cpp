// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/observer_log/form_omacros.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

#include "forms/qt_text.h"

namespace tarvolt {

FormOMacros::FormOMacros(SettingsStore& store, int macro, std::function<void()> changed, QWidget* parent)
    : QDialog(parent), store_(store), changed_(std::move(changed)) {
  setObjectName(QStringLiteral("FormOMacros"));
  setWindowTitle(QStringLiteral("Observer Log Macros"));
  setAttribute(Qt::WA_DeleteOnClose);
  auto* grid = new QGridLayout;
  grid->setColumnStretch(1, 1);
  grid->addWidget(new QLabel(QStringLiteral("Caption"), this), 0, 0);
  grid->addWidget(new QLabel(QStringLiteral("Text"), this), 0, 1);
  const OMacroSet macros = GetOMacros(store);
  for (int i = 0; i < kOMacros; ++i) {
    captions_[i] = new QLineEdit(ToQString(macros[i].caption), this);
    captions_[i]->setObjectName(QStringLiteral("txtCaption%1").arg(i));
    captions_[i]->setMaxLength(static_cast<int>(OMacro::kLongestCaption));
    texts_[i] = new QLineEdit(ToQString(macros[i].text), this);
    texts_[i]->setObjectName(QStringLiteral("txtMacro%1").arg(i));
    texts_[i]->setMaxLength(static_cast<int>(OMacro::kLongestText));
    grid->addWidget(captions_[i], i + 1, 0);
    grid->addWidget(texts_[i], i + 1, 1);
  }
  auto* hint = new QLabel(QStringLiteral("At the end of a text \"~\" puts the time stamp in front of the entry, and "
                                         "\"*\" shows it in the chart's window as well."),
                          this);
  hint->setWordWrap(true);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(grid);
  layout->addWidget(hint);
  layout->addWidget(buttons);
  resize(520, sizeHint().height());
  texts_[macro]->setFocus();
}

void FormOMacros::accept() {
  OMacroSet macros;
  for (int i = 0; i < kOMacros; ++i) {
    macros[i].caption = CleanOMacroText(FromQString(captions_[i]->text()), OMacro::kLongestCaption);
    macros[i].text = CleanOMacroText(FromQString(texts_[i]->text()), OMacro::kLongestText);
  }
  SaveOMacros(store_, macros);
  changed_();
  QDialog::accept();
}

}  // namespace tarvolt
