// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/dialogs/desktop_dialogs.h"

#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <filesystem>

#include "forms/dialogs/message_window.h"
#include "forms/qt_text.h"

namespace tarvolt {
namespace {

QMessageBox::StandardButton ButtonOf(Answer answer) {
  switch (answer) {
    case Answer::Ok:
      return QMessageBox::Ok;
    case Answer::Cancel:
      return QMessageBox::Cancel;
    case Answer::Yes:
      return QMessageBox::Yes;
    case Answer::No:
      return QMessageBox::No;
  }
  return QMessageBox::Ok;
}

QMessageBox::StandardButtons ButtonsOf(Buttons buttons) {
  switch (buttons) {
    case Buttons::Ok:
      return QMessageBox::Ok;
    case Buttons::OkCancel:
      return QMessageBox::Ok | QMessageBox::Cancel;
    case Buttons::YesNo:
      return QMessageBox::Yes | QMessageBox::No;
    case Buttons::YesNoCancel:
      return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
  }
  return QMessageBox::Ok;
}

}  // namespace

QString QtFilter(const std::string& filter) {
  const QStringList parts = ToQString(filter).split(QLatin1Char('|'));
  QStringList rows;
  for (int i = 0; i + 1 < parts.size(); i += 2) {
    QString words = parts[i];
    const auto bracket = words.indexOf(QLatin1Char('('));
    if (bracket >= 0) words.truncate(bracket);
    QString pattern = parts[i + 1].trimmed();
    if (pattern == QLatin1String("*.*")) pattern = QStringLiteral("*");
    rows << words.trimmed() + QStringLiteral(" (") + pattern + QLatin1Char(')');
  }
  return rows.join(QStringLiteral(";;"));
}

DesktopDialogs::~DesktopDialogs() {
  delete messages_;
}

void DesktopDialogs::EndWaiting() {
  ending_ = true;
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    auto* dialog = qobject_cast<QDialog*>(widget);
    if (dialog != nullptr && dialog->isModal() && dialog->isVisible()) dialog->done(QDialog::Rejected);
  }
}

void DesktopDialogs::ShowMessage(const std::string& title, const std::string& text) {
  if (!messages_) messages_ = new MessageWindow(nullptr);
  static_cast<MessageWindow*>(messages_.data())->Add(ToQString(title), ToQString(text));
}

Answer DesktopDialogs::Ask(const Question& question) {
  if (ending_) return question.defaultAnswer;
  QMessageBox box(parent_);
  box.setWindowTitle(ToQString(question.title));
  box.setText(ToQString(question.text));
  box.setTextFormat(Qt::PlainText);
  box.setIcon(question.buttons == Buttons::Ok ? QMessageBox::Information : QMessageBox::Question);
  box.setStandardButtons(ButtonsOf(question.buttons));
  box.setDefaultButton(ButtonOf(question.defaultAnswer));
  const int pressed = box.exec();
  for (const Answer answer : {Answer::Ok, Answer::Yes, Answer::No, Answer::Cancel}) {
    if (pressed == ButtonOf(answer)) return answer;
  }
  return question.defaultAnswer;
}

// The ending is put behind a name before the question whether to write over an existing file, so that none is lost. A
// program that is to end saves under the name that it proposed.
std::optional<std::string> DesktopDialogs::AskSaveFile(const SaveFileRequest& request) {
  const std::string proposed = (std::filesystem::path(request.folder) / request.fileName).string();
  if (ending_) return proposed;
  QFileDialog dialog(parent_, ToQString(request.title), PathToQString(request.folder), QtFilter(request.filter));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setFileMode(QFileDialog::AnyFile);
  dialog.setDefaultSuffix(ToQString(request.extension).remove(QLatin1Char('.')));
  dialog.selectFile(PathToQString(request.fileName));
  const bool accepted = dialog.exec() == QDialog::Accepted;
  if (ending_) return proposed;
  if (!accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  return PathFromQString(dialog.selectedFiles().front());
}

std::optional<std::string> DesktopDialogs::AskOpenFile(const OpenFileRequest& request) {
  if (ending_) return std::nullopt;
  const QString name = QFileDialog::getOpenFileName(parent_, ToQString(request.title), PathToQString(request.folder),
                                                    QtFilter(request.filter));
  if (name.isEmpty()) return std::nullopt;
  return PathFromQString(name);
}

std::optional<std::string> DesktopDialogs::AskText(const TextRequest& request) {
  if (ending_) return std::nullopt;
  bool accepted = false;
  const QString text = QInputDialog::getText(parent_, ToQString(request.title), ToQString(request.prompt),
                                             QLineEdit::Normal, ToQString(request.text), &accepted);
  if (!accepted) return std::nullopt;
  return FromQString(text);
}

}  // namespace tarvolt
