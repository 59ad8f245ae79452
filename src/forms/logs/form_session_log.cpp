// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/logs/form_session_log.h"

#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QPushButton>
#include <QVBoxLayout>

#include "forms/qt_text.h"
#include "timebase/time_base.h"

namespace tarvolt {
namespace {

constexpr int kMostLines = 50000;

}  // namespace

FormSessionLog::FormSessionLog(Session& session, QWidget* parent) : QWidget(parent, Qt::Window), session_(session) {
  setObjectName(QStringLiteral("FormSessionLog"));
  text_ = new QPlainTextEdit(this);
  text_->setObjectName(QStringLiteral("TxtLog"));
  text_->setReadOnly(true);
  text_->setMaximumBlockCount(kMostLines);
  text_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  text_->setPlainText(ToQString(session.log.Text()));
  auto* buttons = new QDialogButtonBox(this);
  QPushButton* clear = buttons->addButton(QStringLiteral("Clear"), QDialogButtonBox::ResetRole);
  QPushButton* save = buttons->addButton(QStringLiteral("Save"), QDialogButtonBox::AcceptRole);
  clear->setObjectName(QStringLiteral("cmdClear"));
  save->setObjectName(QStringLiteral("cmdSave"));
  connect(clear, &QPushButton::clicked, text_, &QPlainTextEdit::clear);
  connect(save, &QPushButton::clicked, this, [this] { Save(); });
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(text_);
  layout->addWidget(buttons);
  resize(640, 400);
  RefreshTitle();
  session.log.AddListener([this](const std::string& line) {
    QString text = ToQString(line);
    while (text.endsWith(QLatin1Char('\n')) || text.endsWith(QLatin1Char('\r'))) text.chop(1);
    text_->appendPlainText(text);
    text_->moveCursor(QTextCursor::End);
    RefreshTitle();
  });
}

void FormSessionLog::showEvent(QShowEvent* event) {
  RefreshTitle();
  text_->moveCursor(QTextCursor::End);
  QWidget::showEvent(event);
}

void FormSessionLog::RefreshTitle() {
  const bool saving = session_.settings.files.AutoSaveSessionLog && session_.log.HasFileName();
  setWindowTitle(saving ? QStringLiteral("Session Log  (autosave)") : QStringLiteral("Session Log  (not saving)"));
}

void FormSessionLog::Save() {
  const std::string text = FromQString(text_->toPlainText().replace(QLatin1Char('\n'), QStringLiteral("\r\n")));
  if (text.empty()) {
    session_.host.dialogs.ShowMessage("Session Log", "There is nothing to save");
    return;
  }
  const std::string name = FormatDate(NowPrecise(session_.host.clock), "yymmddhhnnss") + "Session.txt";
  const auto file = session_.host.dialogs.AskSaveFile(
      {"Save Server Log File (Cancel to Abort Save)", session_.DataFolder().string(), name, ".txt", "text file|*.txt"});
  if (!file) return;
  std::error_code error;
  const std::unique_ptr<File> opened = session_.host.files.Open(*file, OpenMode::Create, error);
  if (opened) opened->Write(text, error);
  session_.Add2SLog(error ? "Session Log could not be saved: " + error.message() : "Session Log Saved.....");
}

}  // namespace tarvolt
