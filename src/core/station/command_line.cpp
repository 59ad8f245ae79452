// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/station/command_line.h"

#include "text/ansi.h"

namespace tarvolt {

namespace {

// Where the piece that starts at `from` ends: at the next slash that is not inside a quoted argument.
std::size_t EndOfPiece(std::string_view text, std::size_t from) {
  const std::size_t blank = text.find(' ', from);
  std::size_t end = text.find('/', from);
  if (blank == std::string_view::npos || end < blank) return end;
  const std::size_t argument = text.find_first_not_of(' ', blank);
  if (argument != std::string_view::npos && text[argument] == '"') {
    const std::size_t closing = text.find('"', argument + 1);
    if (closing != std::string_view::npos) end = text.find('/', closing);
  }
  return end;
}

bool IsQuoted(std::string_view text) {
  return text.size() >= 2 && text.front() == '"' && text.back() == '"';
}

std::string WithoutQuotes(std::string_view text) {
  if (!text.empty() && text.front() == '"') text.remove_prefix(1);
  if (!text.empty() && text.back() == '"') text.remove_suffix(1);
  return std::string(text);
}

std::string Argument(std::string_view word, std::string_view text) {
  if (word == "L" || IsQuoted(text)) return WithoutQuotes(text);
  return ReplaceAll(ReplaceAll(text, "_", " "), "|", "/");
}

}  // namespace

bool ParseCmd(std::string& rest, SlashCommand& command) {
  const std::size_t slash = rest.find('/');
  if (slash == std::string::npos) return false;
  const std::size_t end = EndOfPiece(rest, slash + 1);
  const std::string piece = Trim(rest.substr(slash + 1, end == std::string::npos ? end : end - slash - 1));
  const std::size_t blank = piece.find(' ');
  command.word = Upper(piece.substr(0, blank));
  command.argument = blank == std::string::npos ? "" : Argument(command.word, Trim(piece.substr(blank + 1)));
  rest = end == std::string::npos ? "" : rest.substr(end);
  return true;
}

bool StartsAlone(std::string_view text) {
  std::string rest(text);
  SlashCommand command;
  while (ParseCmd(rest, command)) {
    if (command.word == "SC" || command.word == "R" || command.word == "NM") return true;
  }
  return false;
}

bool IsDataFileName(std::string_view text) {
  if (text.size() < 4 || Upper(text.substr(text.size() - 4)) != ".TVD") return false;
  return Upper(text.substr(0, 3)) != "/L ";
}

std::string JoinArguments(const std::vector<std::string>& arguments) {
  std::string text;
  std::string previous;
  for (const std::string& argument : arguments) {
    if (!text.empty()) text += ' ';
    const bool isFile = previous == "/L" || previous == "/PF";
    // Beside commands a data file is one of them: the whole text would else be taken for its name.
    const bool isLoad = !isFile && arguments.size() > 1 && IsDataFileName(argument);
    if (isLoad) text += "/L ";
    text += (isFile || isLoad) && !IsQuoted(argument) ? '"' + argument + '"' : argument;
    previous = Upper(argument);
  }
  return text;
}

}  // namespace tarvolt
