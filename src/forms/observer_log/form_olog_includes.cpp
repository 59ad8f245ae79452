// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/observer_log/form_olog_includes.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QVBoxLayout>

#include "forms/observer_log/keep_setting.h"

namespace tarvolt {
namespace {

struct Include {
  const char* key;
  const char* caption;
};

constexpr Include kIncludes[] = {{"LocalIdentity", "Local Identity Info"},
                                 {"LLocalStart", "Server Stand Alone Chart Start/ Stop Times"},
                                 {"LClientTimes", "Client Chart Stop/Start Times"},
                                 {"LClientIdentity", "Client Identity Info"},
                                 {"LWaveRecord", "Wave File Recordings"},
                                 {"LImages", "Image Files Saved"},
                                 {"LChatMacros", "Chat Macros Used"},
                                 {"LMsgs", "Message Manager Messages"},
                                 {"LAllChat", "All Chat"}};

}  // namespace

FormOLogIncludes::FormOLogIncludes(Session& session, QWidget* parent) : QDialog(parent), session_(session) {
  setObjectName(QStringLiteral("FormOLogIncludes"));
  setWindowTitle(QStringLiteral("Automatic Entries"));
  setAttribute(Qt::WA_DeleteOnClose);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(new QLabel(QStringLiteral("Check To Automatically Include in Observer Log"), this));
  for (const Include& include : kIncludes) {
    auto* box = new QCheckBox(QString::fromLatin1(include.caption), this);
    box->setObjectName(QString::fromLatin1(include.key));
    box->setChecked(SettingText(session.settings, include.key) == "True");
    layout->addWidget(box);
  }
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  layout->addWidget(buttons);
  layout->setSizeConstraint(QLayout::SetFixedSize);
}

void FormOLogIncludes::accept() {
  session_.store.BeginBatch();
  for (const Include& include : kIncludes) {
    const bool on = findChild<QCheckBox*>(QString::fromLatin1(include.key))->isChecked();
    KeepSetting(session_, Section::LogEntries, include.key, on ? "True" : "False");
  }
  session_.store.EndBatch();
  QDialog::accept();
}

}  // namespace tarvolt
