// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/observer_log/form_observer_log.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QClipboard>
#include <QDialog>
#include <QLineEdit>
#include <QPointer>
#include <QTextBlock>

#include "forms/desk.h"
#include "forms/observer_log/form_omacros.h"

namespace tarvolt {
namespace {

using namespace std::chrono_literals;

constexpr const char* kOpened = "Log opened: <12:00:00  UT>\n";

// Waiting deletions are carried out as well.
void Settle() {
  QApplication::processEvents();
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

class FormObserverLogTest : public ::testing::Test {
 protected:
  FormObserverLogTest() {
    station.Boot();
    station.host.disk.MakeFolders("/logs", error);
    station.Set("DefaultLogDirectory", "/logs");
    Open();
  }

  ~FormObserverLogTest() override { delete log; }

  void Open() {
    OLogHooks hooks;
    hooks.grabPicture = [] { QApplication::clipboard()->setPixmap(QPixmap::fromImage(Dots())); };
    hooks.openWord = [this](WordKind, const std::string& word) {
      opened.push_back(word);
      return true;
    };
    log = new FormObserverLog(station.TheSession(), station.Form(), hooks);
    log->show();
    box = log->findChild<LogTextBox*>(QStringLiteral("rtfLog"));
  }

  static QImage Dots() {
    QImage image(40, 30, QImage::Format_RGB32);
    image.fill(Qt::white);
    image.setPixel(7, 9, 0xFF112233);
    return image;
  }

  std::string Text() const { return box->toPlainText().toStdString(); }
  void Type(const char* text) { box->textCursor().insertText(QString::fromLatin1(text)); }

  void MoveCaret(int position) {
    QTextCursor cursor = box->textCursor();
    cursor.setPosition(position);
    box->setTextCursor(cursor);
  }

  void Menu(const char* name) {
    Find<QAction>(*log, name).trigger();
    Settle();
  }

  void LoadFile(const char* file) {
    Dialogs().ChooseFileNext(file);
    Menu("mnuLoad");
  }

  /// Closes the window with this answer to its question.
  void Close(Answer answer) {
    Dialogs().AnswerNext(answer);
    log->close();
    Settle();
  }

  void Put(const char* file, const char* bytes) { station.host.disk.Put(file, bytes); }

  void SetMacro(int macro, const char* text) {
    QMetaObject::invokeMethod(&Find<QWidget>(*log, QStringLiteral("cmdMacro%1").arg(macro)),
                              "customContextMenuRequested", Q_ARG(QPoint, QPoint()));
    auto* dialog = log->findChild<FormOMacros*>();
    ASSERT_NE(dialog, nullptr);
    Find<QLineEdit>(*dialog, QStringLiteral("txtMacro%1").arg(macro)).setText(QString::fromLatin1(text));
    dialog->accept();
    Settle();
  }

  void ClickMacro(int macro) { Click(*log, QStringLiteral("cmdMacro%1").arg(macro)); }

  std::string Saved(const std::string& file) { return station.host.disk.Contents(file).value_or("(no file)"); }
  SimDialogs& Dialogs() { return station.host.dialogs; }

  std::error_code error;
  Station station;
  std::vector<std::string> opened;
  QPointer<FormObserverLog> log;
  LogTextBox* box = nullptr;
};

TEST_F(FormObserverLogTest, AnEntryLandsAtTheCaretAndMovesItToTheEnd) {
  EXPECT_EQ(Text(), kOpened);
  EXPECT_FALSE(log->HasUnsaved());
  Type("abcd");
  MoveCaret(box->document()->characterCount() - 3);
  station.Form().OLog().AddEntry("X\r\nY");
  EXPECT_EQ(Text(), std::string(kOpened) + "ab\nX\nYcd");
  EXPECT_EQ(QApplication::clipboard()->text().toStdString(), "\nX\nY") << "it goes in by the clipboard";
  EXPECT_TRUE(box->textCursor().atEnd());
  EXPECT_TRUE(log->HasUnsaved());
}

TEST_F(FormObserverLogTest, AnEntryDoesNotReplaceWhatIsSelected) {
  Menu("mnuBold");
  box->insertPlainText(QStringLiteral("typed\n"));
  box->selectAll();
  station.Form().OLog().AddEntry("entry", true);
  EXPECT_LT(box->document()->find(QStringLiteral("entry")).charFormat().fontWeight(), QFont::Bold);
  EXPECT_EQ(Text(), std::string(kOpened) + "typed\n<12:00:00  UT>\nentry");
}

TEST_F(FormObserverLogTest, MacrosEnterTheirTextWithTheirMarks) {
  SetMacro(3, "Clouds~");
  ClickMacro(3);
  EXPECT_EQ(Text(), std::string(kOpened) + "<12:00:00  UT>\nClouds");
  SetMacro(4, "Burst*");
  ClickMacro(4);
  EXPECT_TRUE(Text().ends_with("Clouds\nBurst"));
  EXPECT_EQ(station.View().Status.Text(), "Log mark 1: Burst");

  Dialogs().ChooseFileNext("/logs/set.tvo");
  Menu("mnuSaveMacros");
  SetMacro(3, "changed");
  Dialogs().ChooseFileNext("/logs/set.tvo");
  Menu("mnuLoadMacros");
  ClickMacro(3);
  EXPECT_TRUE(Text().ends_with("UT>\nClouds"));
  EXPECT_EQ(station.TheSession().store.GetSetting(Section::Settings, "OMacroPath"), "/logs");
}

TEST_F(FormObserverLogTest, ABadDateFormatIsRefusedAndAGoodOneKept) {
  Dialogs().EnterNext("YYYY-MM-DD");
  Menu("mnuDateFormat");
  EXPECT_TRUE(Dialogs().HasShown("Not a legal format. Use MM/DD/YYYY, DD/MM/YYYY, or VERBOSE."));
  EXPECT_EQ(station.TheSession().settings.observerLog.oDateFormat, "");
  Dialogs().EnterNext("MM/DD/YYYY");
  Menu("mnuDateFormat");
  EXPECT_EQ(station.TheSession().store.GetSetting(Section::Settings, "oDateFormat"), "MM/DD/YYYY");
  Find<QAction>(*log, "mnuUseUT").setChecked(false);
  Menu("mnuTimeStamp");
  EXPECT_EQ(Text(), std::string(kOpened) + "<12:00:00 01/02/2010>\n");
}

TEST_F(FormObserverLogTest, TextIsSavedInTheCodePageAndLoadsAgain) {
  box->setPlainText(QString::fromUtf8("10 \xC2\xB5V\nline 2"));
  Menu("mnuSave");
  EXPECT_EQ(Dialogs().Boxes().back().title, "Save Observer Log");
  EXPECT_EQ(Saved("/logs/1001021200Log.txt"), "10 \xB5V\r\nline 2");
  EXPECT_FALSE(log->HasUnsaved());
  box->selectAll();
  Type("other");
  Dialogs().AnswerNext(Answer::No);
  LoadFile("/logs/1001021200Log.txt");
  EXPECT_TRUE(Dialogs().HasShown("Do you want to save 1001021200Log.txt ?"));
  EXPECT_EQ(box->toPlainText(), QString::fromUtf8("10 \xC2\xB5V\nline 2"));
  EXPECT_FALSE(log->HasUnsaved());
}

TEST_F(FormObserverLogTest, RichTextKeepsLooksAndPictures) {
  Type("plain ");
  Menu("mnuBold");
  box->insertPlainText(QStringLiteral("bold"));
  Menu("mnuSnapShot");
  const QString before = box->toPlainText();
  ASSERT_TRUE(before.contains(QChar::ObjectReplacementCharacter));
  Dialogs().ChooseFileNext("/logs/night.rtf");
  Menu("mnuSaveAs");
  EXPECT_EQ(station.TheSession().store.GetSetting(Section::Settings, "OLastExt"), "rtf");
  box->selectAll();
  Type("gone");
  Dialogs().AnswerNext(Answer::No);
  LoadFile("/logs/night.rtf");
  EXPECT_EQ(box->toPlainText(), before);
  QTextCursor cursor = box->document()->find(QStringLiteral("bold"));
  EXPECT_GE(cursor.charFormat().fontWeight(), QFont::Bold);
  cursor.setPosition(cursor.position() + 1);
  const QTextImageFormat format = cursor.charFormat().toImageFormat();
  const auto image = box->document()->resource(QTextDocument::ImageResource, QUrl(format.name())).value<QImage>();
  EXPECT_EQ(image.convertToFormat(QImage::Format_RGB32), Dots());

  Dialogs().ChooseFileNext("/logs/night.txt");
  Menu("mnuSaveAs");
  EXPECT_EQ(Saved("/logs/night.txt"), "Log opened: <12:00:00  UT>\r\nplain bold\r\n");
  EXPECT_TRUE(Find<QStatusBar>(*log, "StatusBar").currentMessage().contains("without its pict"));
}

TEST_F(FormObserverLogTest, AFileThatIsNoLogLeavesTheTextAsItWas) {
  Put("/logs/bad.rtf", "no rich text");
  LoadFile("/logs/bad.rtf");
  LoadFile("/logs/missing.txt");
  EXPECT_TRUE(Dialogs().HasShown("Could not load /logs/bad.rtf: it is no rich text file"));
  EXPECT_TRUE(Dialogs().HasShown("Could not load /logs/missing.txt: "));
  EXPECT_EQ(Text(), kOpened);
}

TEST_F(FormObserverLogTest, ClosingAChangedLogAsksAndObeysTheAnswer) {
  Type("notes");
  Close(Answer::Cancel);
  ASSERT_TRUE(log && log->isVisible());
  EXPECT_EQ(Dialogs().Boxes().back().text, "1001021200Log.txt\nDo you want to save the observer log?");

  station.host.disk.SetReadOnly("/logs", true);
  Close(Answer::Yes);
  ASSERT_TRUE(log) << "what could not be saved stays on the screen";
  EXPECT_TRUE(Dialogs().HasShown("The observer log could not be saved to /logs/1001021200Log.txt"));

  station.host.disk.SetReadOnly("/logs", false);
  Close(Answer::Yes);
  EXPECT_FALSE(log);
  EXPECT_FALSE(station.Form().OLog().IsOpen());
  Open();
  Type("unwanted");
  Close(Answer::No);
  EXPECT_FALSE(log);
  EXPECT_EQ(Saved("/logs/1001021200Log.txt"), "Log opened: <12:00:00  UT>\r\nnotes");
}

TEST_F(FormObserverLogTest, NobodyIsAskedWithoutMessageBoxesAndNoTextIsLost) {
  station.Set("ShowMsgBox", false);
  Put("/logs/1001021200Log.txt", "earlier");
  const int questions = Dialogs().Questions();
  Type("notes");
  log->close();
  Settle();
  EXPECT_FALSE(log);
  EXPECT_EQ(Dialogs().Questions(), questions);
  EXPECT_EQ(Saved("/logs/1001021200Log.txt"), "earlier");
  EXPECT_EQ(Saved("/logs/1001021200Log_2.txt"), "Log opened: <12:00:00  UT>\r\nnotes");
}

TEST_F(FormObserverLogTest, AutomaticSavingWritesWhatChangedAndTellsAFailureOnce) {
  station.RunFor(2min);
  EXPECT_FALSE(station.host.disk.FileExists("/logs/1001021200Log.txt"));
  Find<QAction>(*log, "mnuAutoSave").setChecked(true);
  Type("one");
  station.host.disk.SetReadOnly("/logs", true);
  station.RunFor(5min);
  EXPECT_TRUE(log->HasUnsaved());
  int told = 0;
  for (const auto& shown : Dialogs().Boxes()) told += shown.text.starts_with("The observer log could not") ? 1 : 0;
  EXPECT_EQ(told, 1);
  station.host.disk.SetReadOnly("/logs", false);
  station.RunFor(61s);
  EXPECT_EQ(Saved("/logs/1001021200Log.txt"), "Log opened: <12:00:00  UT>\r\none");
  EXPECT_FALSE(log->HasUnsaved());
}

TEST_F(FormObserverLogTest, FilesAreReferredToAppendedAndOpened) {
  Put("/logs/my list.txt", "a\r\nb\x01\r\n");
  Dialogs().ChooseFileNext("/logs/my list.txt");
  Menu("mnuAddFileReference");
  Dialogs().ChooseFileNext("/logs/my list.txt");
  Menu("mnuAppendFile");
  EXPECT_EQ(Text(), std::string(kOpened) + "File Reference: /logs/my list.txt\na\nb \n");

  const auto doubleClick = [this](const char* words) {
    const QTextCursor found = box->document()->find(QString::fromLatin1(words));
    const QPoint at = box->cursorRect(found).center();
    QMouseEvent event(QEvent::MouseButtonDblClick, at, box->viewport()->mapToGlobal(QPointF(at)), Qt::LeftButton,
                      Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(box->viewport(), &event);
  };
  Type("http://sun.org/now /no.jpg");
  doubleClick("list");
  doubleClick("sun");
  doubleClick(".jpg");
  const std::vector<std::string> expected = {"/logs/my list.txt", "http://sun.org/now"};
  EXPECT_EQ(opened, expected) << "a file that is not there is not opened";
}

TEST_F(FormObserverLogTest, TheQuestionAboutTheFolderIsStoredAndShown) {
  for (const Answer answer : {Answer::Yes, Answer::No}) {
    Dialogs().AnswerNext(answer);
    Menu("mnuStoreLogWithObservation");
    EXPECT_EQ(Find<QAction>(*log, "mnuStoreLogWithObservation").isChecked(), answer == Answer::Yes);
    EXPECT_EQ(station.TheSession().store.GetSetting(Section::Settings, "StoreLogWithObservation"),
              answer == Answer::Yes ? "True" : "False");
  }
}

TEST_F(FormObserverLogTest, AutomaticEntriesAreChosenByTheirBoxes) {
  Menu("mnuAutoEntry");
  auto& dialog = Find<QDialog>(*log, "FormOLogIncludes");
  Find<QCheckBox>(dialog, "LLocalStart").setChecked(true);
  dialog.accept();
  EXPECT_EQ(station.TheSession().store.GetSetting(Section::LogEntries, "LLocalStart"), "True");
  station.StartChart();
  EXPECT_EQ(Text(), std::string(kOpened) + "<12:00:00  UT>\nLocal Chart Started:  2010/01/02 12:00:00");
}

TEST(MainWindowObserverLog, OpensOnceAndIsSettledBeforeTheProgramEnds) {
  DesktopPerson person{false};
  Station station;
  station.Set("LoadLogOnStartUp", true).For(person).Boot();
  auto window = std::make_unique<MainWindow>(station.TheSession(), station.Form(), person);
  const auto logs = [] {
    std::vector<QWidget*> found;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      if (widget->objectName() == QStringLiteral("olog1")) found.push_back(widget);
    }
    return found;
  };
  ASSERT_EQ(logs().size(), 1u);
  Find<QAction>(*window, "mnuObserverLog").trigger();
  Settle();
  ASSERT_EQ(logs().size(), 1u);

  station.Form().OLog().AddEntry("noted");
  station.host.dialogs.AnswerNext(Answer::Cancel);
  window->close();
  Settle();
  EXPECT_FALSE(station.Run().EndRequested);
  const int questions = station.host.dialogs.Questions();

  // Ended by a signal: nobody is asked, and the text is in its file.
  station.Form().RequestEnd();
  window.reset();
  EXPECT_TRUE(logs().empty());
  EXPECT_EQ(station.host.dialogs.Questions(), questions);
  EXPECT_EQ(station.host.disk.Contents("/station/Data/1001021200Log.txt"), "Log opened: <12:00:00  UT>\r\nnoted");
}

}  // namespace
}  // namespace tarvolt
