// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/headless_dialogs.h"

#include <gtest/gtest.h>

namespace tarvolt {
namespace {

TEST(HeadlessDialogs, WriteOneLineAndAnswerByDefault) {
  std::vector<std::string> lines;
  HeadlessDialogs dialogs([&](const std::string& line) { lines.push_back(line); });
  dialogs.ShowMessage("Recovery Alert", "Not shut down.\r\nUse File/Load\nto check. ");
  dialogs.ShowMessage("", "No title");
  EXPECT_EQ(dialogs.Ask({"Save", "Save the chart?", Buttons::YesNoCancel, Answer::No}), Answer::No);
  EXPECT_EQ(dialogs.AskSaveFile({"Save As", "/data/charts", "UT261122", ".tvd", "*.tvd"}), "/data/charts/UT261122.tvd");
  EXPECT_EQ(dialogs.AskSaveFile({"", "/data/", "notes.txt", ".tvd", ""}), "/data/notes.txt");
  EXPECT_EQ(lines, (std::vector<std::string>{"Recovery Alert: Not shut down. Use File/Load to check.", "No title",
                                             "Save: Save the chart? [No]", "Save As: /data/charts/UT261122.tvd",
                                             "/data/notes.txt"}));
}

}  // namespace
}  // namespace tarvolt
