// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/observer_log/log_text_box.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QMouseEvent>
#include <QTextBlock>
#include <algorithm>

#include "forms/observer_log/rich_document.h"

namespace tarvolt {
namespace {

bool IsPicture(const QMimeData& source) {
  return source.hasImage() && !source.hasText() && !source.hasHtml();
}

}  // namespace

LogTextBox::LogTextBox(QWidget* parent) : QTextEdit(parent) {
  setObjectName(QStringLiteral("rtfLog"));
  setTabChangesFocus(false);
}

QString LogTextBox::Tail() const {
  const QTextBlock last = document()->lastBlock();
  QString tail = last.text().right(2);
  if (tail.size() < 2 && last.previous().isValid()) {
    tail.prepend(QStringLiteral("\r\n"));
  }
  return tail.right(2);
}

// Pasting replaces what is selected and takes on its looks: an entry that comes by itself must cost nothing that was
// written, and is plain.
void LogTextBox::PasteText(const QString& text) {
  QTextCursor caret = textCursor();
  caret.setPosition(caret.position());
  setTextCursor(caret);
  setCurrentCharFormat(QTextCharFormat());
  QClipboard& clipboard = *QGuiApplication::clipboard();
  clipboard.clear();
  clipboard.setText(text);
  if (clipboard.text() == text) {
    paste();
  } else {
    insertPlainText(text);  // another program holds the clipboard
  }
}

bool LogTextBox::canInsertFromMimeData(const QMimeData* source) const {
  return source->hasImage() || QTextEdit::canInsertFromMimeData(source);
}

void LogTextBox::insertFromMimeData(const QMimeData* source) {
  if (!IsPicture(*source)) return QTextEdit::insertFromMimeData(source);
  const QImage image = source->imageData().value<QImage>();
  if (image.isNull()) return;
  constexpr int kMargin = 16;
  constexpr int kNarrowest = 200;
  QTextCursor cursor = textCursor();
  InsertPicture(image, std::max(viewport()->width() - kMargin, kNarrowest), cursor);
}

void LogTextBox::mouseDoubleClickEvent(QMouseEvent* event) {
  QTextEdit::mouseDoubleClickEvent(event);
  const QTextCursor at = cursorForPosition(event->position().toPoint());
  if (doubleClick_ && event->button() == Qt::LeftButton) doubleClick_(at.block().text(), at.positionInBlock());
}

}  // namespace tarvolt
