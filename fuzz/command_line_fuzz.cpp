// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdint>
#include <cstdlib>
#include <string>

#include "core/station/command_line.h"

// Any text is cut into commands that come to an end; a quoted data file survives the joining and cutting of arguments.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  tarvolt::IsDataFileName(text);
  std::string rest = text;
  tarvolt::SlashCommand command;
  for (std::size_t commands = 0; tarvolt::ParseCmd(rest, command); ++commands) {
    if (commands > size || rest.size() >= text.size()) std::abort();
  }
  if (text.empty() || text.find('"') != std::string::npos) return 0;
  std::string joined = tarvolt::JoinArguments({"/S", "/L", text});
  if (!tarvolt::ParseCmd(joined, command) || command.word != "S") std::abort();
  if (!tarvolt::ParseCmd(joined, command) || command.word != "L" || command.argument != text) std::abort();
  return 0;
}
