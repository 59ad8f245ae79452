// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarvolt {

/// One slash command: its word in upper case, and its argument.
struct SlashCommand {
  std::string word;
  std::string argument;
};

/// Takes the next command from `rest` and cuts it off; false when there is none. In an argument "_" stands for a blank
/// and "|" for a slash. An argument in double quotes is taken as it is, slashes and all; that of L keeps its characters
/// in any case and loses its quotes.
bool ParseCmd(std::string& rest, SlashCommand& command);

/// True when the slash commands of `text` start a chart (SC), run a schedule (R) or keep messages off (NM): then nobody
/// needs to be there.
bool StartsAlone(std::string_view text);

/// True for a command line text that is itself the name of a data file.
bool IsDataFileName(std::string_view text);

/// The one text of a program's arguments: those that follow L or PF get quotes, so that their slashes and blanks stay
/// theirs.
std::string JoinArguments(const std::vector<std::string>& arguments);

}  // namespace tarvolt
