// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/station/command_line.h"

#include <gtest/gtest.h>

namespace tarvolt {
namespace {

std::vector<std::pair<std::string, std::string>> Commands(std::string text) {
  std::vector<std::pair<std::string, std::string>> commands;
  SlashCommand command;
  while (ParseCmd(text, command)) commands.emplace_back(command.word, command.argument);
  return commands;
}

using Expected = std::vector<std::pair<std::string, std::string>>;

TEST(CommandLine, CutsCommandsAndReadsTheirStandIns) {
  EXPECT_EQ(Commands("/k1 11|22|26_12:00:00 /K2 11|22|26_13:00:00"),
            (Expected{{"K1", "11/22/26 12:00:00"}, {"K2", "11/22/26 13:00:00"}}));
  EXPECT_EQ(Commands("/S/SC"), (Expected{{"S", ""}, {"SC", ""}}));
  EXPECT_EQ(Commands("nothing here"), Expected{});
  EXPECT_EQ(Commands("/"), (Expected{{"", ""}}));
}

TEST(CommandLine, AQuotedFileKeepsItsSlashesBlanksAndMarks) {
  EXPECT_EQ(Commands("/L \"/data/a b_c|d.tvd\" /SC"), (Expected{{"L", "/data/a b_c|d.tvd"}, {"SC", ""}}));
  EXPECT_EQ(Commands("/PF \"/sets/My_set.tvp\""), (Expected{{"PF", "/sets/My_set.tvp"}}));
  EXPECT_EQ(Commands("/PF |sets|My_set.tvp"), (Expected{{"PF", "/sets/My set.tvp"}}));
  EXPECT_EQ(Commands("/L a_b.tvd"), (Expected{{"L", "a_b.tvd"}}));
}

TEST(CommandLine, ABareNameOfADataFileIsAFileToOpen) {
  EXPECT_TRUE(IsDataFileName("/data/My run.TvD"));
  EXPECT_FALSE(IsDataFileName("/data/run.txt"));
  EXPECT_FALSE(IsDataFileName("tvd"));
  EXPECT_FALSE(IsDataFileName("/l run.tvd"));
}

TEST(CommandLine, ArgumentsOfAShellBecomeOneText) {
  EXPECT_EQ(JoinArguments({"/l", "/data/a b.tvd", "/SC"}), "/l \"/data/a b.tvd\" /SC");
  EXPECT_EQ(JoinArguments({"/data/a.tvd"}), "/data/a.tvd");
  EXPECT_EQ(JoinArguments({}), "");
}

}  // namespace
}  // namespace tarvolt
