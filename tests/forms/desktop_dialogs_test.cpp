// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/dialogs/desktop_dialogs.h"

#include <gtest/gtest.h>

#include <QMessageBox>
#include <QPlainTextEdit>

#include "forms/desk.h"

namespace tarvolt {
namespace {

TEST(DesktopDialogs, AQuestionHasTheAnswerOfItsButtons) {
  DesktopDialogs dialogs;
  WithNextDialog([](QWidget& box) {
    EXPECT_EQ(box.windowTitle(), "Offsets Changed");
    dynamic_cast<QMessageBox&>(box).button(QMessageBox::No)->click();
  });
  EXPECT_EQ(dialogs.Ask({"Offsets Changed", "Keep them?", Buttons::YesNo, Answer::Yes}), Answer::No);
}

TEST(DesktopDialogs, AnEndWithoutAPersonWaitsForNone) {
  DesktopDialogs dialogs;
  WithNextDialog([&dialogs](QWidget&) { dialogs.EndWaiting(); });
  EXPECT_EQ(dialogs.Ask({"Save", "Save it?", Buttons::YesNo, Answer::Yes}), Answer::Yes);
  DesktopDialogs waiting;
  WithNextDialog([&waiting](QWidget&) { waiting.EndWaiting(); });
  EXPECT_EQ(waiting.AskSaveFile({"Save", "/folder", "b.tvd", ".tvd", "data|*.tvd"}), "/folder/b.tvd")
      << "a run whose name was asked for is saved";
  EXPECT_EQ(dialogs.Ask({"Save", "Save it?", Buttons::YesNoCancel, Answer::No}), Answer::No);
  EXPECT_EQ(dialogs.AskSaveFile({"Save", "/folder", "a.tvd", ".tvd", "data|*.tvd"}), "/folder/a.tvd");
  EXPECT_EQ(dialogs.AskOpenFile({"Load", "/folder", "", ".tvd", "data|*.tvd"}), std::nullopt);
  EXPECT_EQ(dialogs.AskText({"Text", "Which?", "this"}), std::nullopt);
}

TEST(DesktopDialogs, MessagesStandBelowEachOtherAndWaitForNobody) {
  DesktopDialogs dialogs;
  dialogs.ShowMessage("First", "one");
  dialogs.ShowMessage("Second", "two");
  const QPlainTextEdit* text = nullptr;
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    if (widget->objectName() == "FormMessage") text = widget->findChild<QPlainTextEdit*>("TxtMessages");
  }
  ASSERT_NE(text, nullptr);
  EXPECT_EQ(text->toPlainText(), "First\none\n\nSecond\ntwo");
}

TEST(DesktopDialogs, FiltersOfTheSystemBecomeThoseOfTheDesktop) {
  EXPECT_EQ(QtFilter("Tarvolt data (*.tvd)|*.tvd|Any (*.*)|*.*"), "Tarvolt data (*.tvd);;Any (*)");
  EXPECT_EQ(QtFilter("*tarvolt data| *.tvd"), "*tarvolt data (*.tvd)");
}

}  // namespace
}  // namespace tarvolt
