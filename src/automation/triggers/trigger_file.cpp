// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/triggers/trigger_file.h"

#include <variant>

#include "config/text_file.h"
#include "text/ansi.h"
#include "text/number.h"

namespace tarvolt {
namespace {

struct Row {
  std::string_view key;
  std::variant<std::string TriggerDefinition::*, bool TriggerDefinition::*, double TriggerDefinition::*,
               std::int32_t TriggerDefinition::*, std::int16_t TriggerDefinition::*>
      member;
};

/// In the order of the lines of a file.
constexpr Row kRows[] = {
    {"ACTION", &TriggerDefinition::Action},
    {"THRESHOLD", &TriggerDefinition::Threshold},
    {"MINDURATION", &TriggerDefinition::MinDuration},
    {"TRIGGERBELOWTHRESHOLD", &TriggerDefinition::TriggerBelowThreshold},
    {"MINRESETSAMPLES", &TriggerDefinition::MinResetSamples},
    {"RESTPERIOD", &TriggerDefinition::RestPeriod},
    {"PARAMETER", &TriggerDefinition::Parameter},
    {"ONESHOT", &TriggerDefinition::OneShot},
    {"LJU3COMMAND", &TriggerDefinition::LJU3command},
    {"LJU3CHANNEL", &TriggerDefinition::LJU3channel},
    {"LJU3VALUE", &TriggerDefinition::LJU3value},
    {"LJU12COMMAND", &TriggerDefinition::LJU12command},
    {"LJU12CHANNEL", &TriggerDefinition::LJU12channel},
    {"LJU12VALUE", &TriggerDefinition::LJU12value},
    {"LPTNUM", &TriggerDefinition::LPTnum},
    {"LPTPIN", &TriggerDefinition::LPTpin},
    {"LPTVALUE", &TriggerDefinition::LPTvalue},
    {"ANNOTATE", &TriggerDefinition::Annotate},
    {"SHOWINOBLOG", &TriggerDefinition::ShowInObLog},
    {"SHOWINSESSIONLOG", &TriggerDefinition::ShowInSessionLog},
    {"SHOWINSTATUSBAR", &TriggerDefinition::ShowInStatusBar},
    {"NOTATION", &TriggerDefinition::Notation},
};

constexpr std::string_view kLineEnd = "\r\n";

std::string OneLine(std::string_view text) {
  return ReplaceAll(ReplaceAll(text, "\r", " "), "\n", " ");
}

void Read(std::string& value, std::string_view text) {
  value = OneLine(text);
}

void Read(bool& value, std::string_view text) {
  value = EqualNoCase(Trim(text), "True");
}

void Read(double& value, std::string_view text) {
  value = Val(text);
}

void Read(std::int32_t& value, std::string_view text) {
  value = ValLong(text);
}

void Read(std::int16_t& value, std::string_view text) {
  value = RoundToInt16(Val(text));
}

std::string Write(const std::string& value) {
  return OneLine(value);
}

std::string Write(bool value) {
  return value ? "True" : "False";
}

std::string Write(double value) {
  return NumberText(value);
}

std::string Write(std::int32_t value) {
  return NumberText(std::int64_t{value});
}

void ReadKey(std::string_view line, TriggerDefinition& trigger) {
  const std::size_t equals = line.find('=');
  if (equals == std::string_view::npos || equals == 0) return;
  const std::string key = Upper(Trim(line.substr(0, equals)));
  for (const Row& row : kRows) {
    if (row.key == key) std::visit([&](auto member) { Read(trigger.*member, line.substr(equals + 1)); }, row.member);
  }
}

// A brace behind a "=" belongs to a text, such as the arguments of a program.
bool IsNumberLine(std::string_view line) {
  if (Trim(line).starts_with('{')) return true;
  return line.find('{') != std::string_view::npos && line.find('=') == std::string_view::npos;
}

}  // namespace

std::optional<TriggerDefinitions> ParseTriggers(std::string_view text) {
  TriggerDefinitions triggers;
  int slot = -1;
  bool any = false;
  while (!text.empty()) {
    const std::string_view line = TakeLine(text);
    if (IsNumberLine(line)) {
      slot = SlotOfNumber(ValLong(ReplaceAll(ReplaceAll(line, "{", ""), "}", "")));
      any = any || slot >= 0;
    } else if (slot >= 0) {
      ReadKey(line, triggers[slot]);
    }
  }
  if (!any) return std::nullopt;
  return triggers;
}

std::string FormatTriggers(const TriggerDefinitions& triggers) {
  std::string text;
  for (int slot = 0; slot < kTriggerSlots; ++slot) {
    text.append("{").append(NumberText(std::int64_t{NumberOfSlot(slot)})).append("}").append(kLineEnd);
    for (const Row& row : kRows) {
      text.append(row.key).append("=");
      std::visit([&](auto member) { text += Write(triggers[slot].*member); }, row.member);
      text.append(kLineEnd);
    }
  }
  return text;
}

Result<TriggerDefinitions> ReadTriggerFile(FileSystem& files, const std::filesystem::path& path) {
  std::string problem;
  const std::optional<std::string> text = ReadTextFile(files, path, problem);
  if (!text) return Failure{problem};
  if (auto triggers = ParseTriggers(*text)) return *std::move(triggers);
  return Failure{"it holds no trigger"};
}

}  // namespace tarvolt
