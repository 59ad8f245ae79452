// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/dialogs/message_window.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QVBoxLayout>

namespace tarvolt {
namespace {

constexpr int kMostLines = 2000;

}  // namespace

MessageWindow::MessageWindow(QWidget* parent) : QWidget(parent, Qt::Window) {
  setObjectName(QStringLiteral("FormMessage"));
  setWindowTitle(QStringLiteral("Tarvolt Messages"));
  setAttribute(Qt::WA_ShowWithoutActivating);
  text_ = new QPlainTextEdit(this);
  text_->setObjectName(QStringLiteral("TxtMessages"));
  text_->setReadOnly(true);
  text_->setMaximumBlockCount(kMostLines);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
  connect(buttons, &QDialogButtonBox::accepted, this, [this] {
    text_->clear();
    close();
  });
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(text_);
  layout->addWidget(buttons);
  resize(460, 220);
}

void MessageWindow::Add(const QString& title, const QString& text) {
  if (!text_->document()->isEmpty()) text_->appendPlainText({});
  text_->appendPlainText(title);
  text_->appendPlainText(text);
  text_->moveCursor(QTextCursor::End);
  setWindowState(windowState() & ~Qt::WindowMinimized);
  show();
  raise();  // in front of the main window, and without its focus
}

}  // namespace tarvolt
