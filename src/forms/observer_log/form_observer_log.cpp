// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/observer_log/form_observer_log.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QStatusBar>
#include <QVBoxLayout>
#include <utility>

#include "forms/observer_log/form_omacros.h"
#include "forms/qt_text.h"
#include "logs/log_words.h"
#include "logs/observer_log.h"
#include "text/number.h"

namespace tarvolt {
namespace {

constexpr int kAutoSaveMilliseconds = 60000;

// The line ends of the box, and no controls that a file or another station might bring.
QString BoxText(std::string_view text) {
  QString shown = ToQString(text);
  shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  shown.replace(QLatin1Char('\r'), QLatin1Char('\n'));
  for (QChar& c : shown) {
    if (c < QLatin1Char(' ') && c != QLatin1Char('\n') && c != QLatin1Char('\t')) c = QLatin1Char(' ');
  }
  return shown;
}

}  // namespace

FormObserverLog::FormObserverLog(Session& session, FormMain& form, OLogHooks hooks)
    : session_(session), form_(form), hooks_(std::move(hooks)) {
  const std::string number = form.Window().Name.substr(std::string_view("form").size());
  setObjectName(QStringLiteral("olog") + ToQString(number));
  setAttribute(Qt::WA_DeleteOnClose);
  text_ = new LogTextBox(this);
  text_->OnDoubleClick([this](const QString& line, int column) { OpenWordAt(line, column); });
  auto* middle = new QWidget(this);
  auto* layout = new QVBoxLayout(middle);
  layout->addWidget(text_, 1);
  layout->addWidget(MakeMacroButtons());
  setCentralWidget(middle);
  statusBar()->setObjectName(QStringLiteral("StatusBar"));
  MakeMenus();
  resize(680, 480);

  file_ = std::filesystem::path(NameOLogFile(session_.host.clock, session_.settings)).replace_extension(Ending());
  text_->insertPlainText(BoxText("Log opened: " + GetTimeStamp(session_.host.clock, session_.settings)));
  text_->document()->setModified(false);
  ShowName();
  connect(text_->document(), &QTextDocument::modificationChanged, this, &QWidget::setWindowModified);
  text_->setFocus();

  autoSave_ = session_.host.loop.MakeTimer([this] { AutoSave(); });
  autoSave_->SetInterval(kAutoSaveMilliseconds);
  autoSave_->SetEnabled(true);
  form_.OLog().OnEntry([this](const std::string& text, bool stamped) { AddEntry(text, stamped); });
}

// Closed, it has let go of the entries: they may be those of another window already.
FormObserverLog::~FormObserverLog() {
  if (!closing_) form_.OLog().OnEntry({});
}

void FormObserverLog::AddEntry(const std::string& text, bool stamped) {
  if (static_cast<std::size_t>(text_->document()->characterCount()) + text.size() > kMostCharacters) {
    const char* const full = "The observer log is full: it takes no more entries.";
    statusBar()->showMessage(QString::fromLatin1(full));
    if (!std::exchange(full_, true)) session_.Add2SLog(full);
    return;
  }
  const std::string stamp = stamped ? GetTimeStamp(session_.host.clock, session_.settings) : "";
  text_->PasteText(BoxText(OnNewLine(FromQString(text_->Tail()), stamp + text)));
  text_->moveCursor(QTextCursor::End);
  text_->ensureCursorVisible();
}

void FormObserverLog::DoTimeStamp() {
  text_->textCursor().insertText(BoxText(GetTimeStamp(session_.host.clock, session_.settings)));
  text_->ensureCursorVisible();
}

bool FormObserverLog::HasUnsaved() const {
  return text_->document()->isModified() && !text_->document()->isEmpty();
}

void FormObserverLog::KillMe() {
  closing_ = true;
  form_.OLog().OnEntry({});
  close();
}

// The question comes outside of the event, so that the window is not closed from within it.
void FormObserverLog::closeEvent(QCloseEvent* event) {
  if (closing_) return event->accept();
  event->ignore();
  QMetaObject::invokeMethod(
      this,
      [this] {
        if (MayClose()) KillMe();
      },
      Qt::QueuedConnection);
}

QWidget* FormObserverLog::MakeMacroButtons() {
  constexpr int kInARow = kOMacros / 2;
  auto* frame = new QWidget(this);
  auto* grid = new QGridLayout(frame);
  grid->setContentsMargins(0, 0, 0, 0);
  for (int i = 0; i < kOMacros; ++i) {
    auto* button = new QPushButton(frame);
    button->setObjectName(QStringLiteral("cmdMacro%1").arg(i));
    button->setFocusPolicy(Qt::NoFocus);
    button->setContextMenuPolicy(Qt::CustomContextMenu);
    button->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    connect(button, &QPushButton::clicked, this, [this, i] { ClickMacro(i); });
    connect(button, &QWidget::customContextMenuRequested, this, [this, i] { ConfigureMacros(i); });
    grid->addWidget(button, i / kInARow, i % kInARow);
    buttons_[i] = button;
  }
  ShowMacros();
  return frame;
}

void FormObserverLog::ShowMacros() {
  macros_ = GetOMacros(session_.store);
  for (int i = 0; i < kOMacros; ++i) {
    const QString caption = ToQString(macros_[i].caption);
    buttons_[i]->setText(QString(caption).replace(QLatin1Char('&'), QStringLiteral("&&")));
    buttons_[i]->setToolTip(caption.toHtmlEscaped() + QStringLiteral(" -  Right Click to Configure."));
  }
}

void FormObserverLog::ClickMacro(int macro) {
  const auto action = ReadOMacro(macros_[macro].text);
  if (!action) return;
  AddEntry(action->text, action->stamped);
  if (!action->marked) return;
  ++markedMacros_;
  form_.Chart().look.ShowStatus("Log mark " + NumberText(std::int64_t{markedMacros_}) + ": " + action->text);
}

void FormObserverLog::ConfigureMacros(int macro) {
  (new FormOMacros(
       session_.store, macro, [this] { ShowMacros(); }, this))
      ->open();
}

void FormObserverLog::SnapShot() {
  hooks_.grabPicture();
  text_->paste();
  text_->textCursor().insertText(QStringLiteral("\n"));
  text_->ensureCursorVisible();
}

void FormObserverLog::OpenWordAt(const QString& line, int column) {
  const std::string word = WordAt(FromQString(line), static_cast<std::size_t>(column));
  const WordKind kind = KindOfWord(word);
  if (kind == WordKind::None) return;
  const bool isThere = kind == WordKind::WebAddress || session_.host.files.FileExists(word);
  if (isThere && hooks_.openWord(kind, word)) return;
  statusBar()->showMessage(ToQString((isThere ? "Could not open " : "There is no file ") + word));
}

void FormObserverLog::ShowName() {
  setWindowTitle(QStringLiteral("Observer Log  ") + ToQString(Name()) + QStringLiteral("[*]"));
}

}  // namespace tarvolt
