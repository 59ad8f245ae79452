// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/station/command_runner.h"

#include "core/form_main.h"
#include "core/station/command_line.h"

namespace tarvolt {
namespace {

// False for a word that ends the processing.
bool RunCommand(FormMain& form, Session& session, const SlashCommand& command) {
  const std::string& word = command.word;
  if (word == "C") {
    form.EnterMode(SessionMode::Client);
  } else if (word == "S") {
    form.EnterMode(SessionMode::Server);
  } else if (word == "SC") {
    form.StartChart("");
  } else if (word == "ILS") {
    session.Override("ILS", command.argument);
  } else if (word == "NM") {
    session.Override("ShowMsgBox", "False");
  } else if (word == "L") {
    form.Loads().LoadDataFile(command.argument);
  } else if (word == "PF") {
    form.Profiles().Load(command.argument);
  } else {
    const bool isForLater = word == "K1" || word == "K2" || word == "CN" || word == "U" || word == "N" || word == "R";
    const std::string refusal = isForLater ? "Command Line Parameter " + word +
                                                 " needs schedules or connections, which this version does not have."
                                           : "Unrecognized Command Line Parameter " + word;
    session.LogAndTell("Tarvolt", refusal);
    return false;
  }
  return true;
}

}  // namespace

bool RunCommandLine(FormMain& form, Session& session, std::string_view text) {
  if (IsDataFileName(text)) {
    form.Loads().LoadDataFile(std::string(text));
    return true;
  }
  std::string rest(text);
  SlashCommand command;
  while (ParseCmd(rest, command)) {
    if (!RunCommand(form, session, command)) return false;
  }
  return true;
}

}  // namespace tarvolt
