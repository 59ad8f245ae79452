// SPDX-License-Identifier: GPL-3.0-or-later
#include "apps/common/options.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <map>

#include "core/station/command_line.h"
#include "host/disk_path.h"
#include "text/ansi.h"
#include "text/path_text.h"

namespace tarvolt {

namespace {

constexpr int kWrongUsage = 2;

const std::map<std::string, SessionMode> kModes = {
    {"standalone", SessionMode::StandAlone}, {"server", SessionMode::Server}, {"client", SessionMode::Client}};

// A name that has no form inside stays as it is, and still leads to its file.
std::string FromShell(const std::string& text) {
  return NameFromDisk(text).value_or(text);
}

// "KEY=VALUE" as an override, or the words of what is wrong with it.
std::string AddOverride(const std::string& text, SettingOverrides& overrides) {
  const std::size_t equals = text.find('=');
  if (equals == std::string::npos || equals == 0) return "--set needs KEY=VALUE, but got \"" + text + "\"";
  const std::string key = text.substr(0, equals);
  if (!IsSettingKey(key)) {
    return "there is no setting \"" + key + "\"; the nearest is \"" + NearestSettingKey(key) + "\"";
  }
  const std::string value = text.substr(equals + 1);
  if (!IsPathSetting(key) && !HasAnsiForm(value)) {
    return "\"" + text + "\" has a character outside Windows-1252, which cannot be kept";
  }
  overrides.emplace_back(key, IsPathSetting(key) ? PathTextFromUtf8(value) : AnsiFromUtf8(value));
  return "";
}

// What comes first must be a slash command or a data file; words behind it may be arguments.
bool IsCommand(const std::string& text) {
  return text.starts_with('/') || IsDataFileName(text);
}

void Refuse(StationOptions& options, const std::string& program, const std::string& why) {
  std::cerr << program << ": " << why << "\nSee " << program << " --help.\n";
  options.finished = true;
  options.exitStatus = kWrongUsage;
}

}  // namespace

StationOptions ParseStationOptions(const std::string& program, const std::string& about, int argc, char** argv) {
  StationOptions options;
  std::vector<std::string> settings;
  std::vector<std::string> slash;
  std::string mode = "standalone";
  CLI::App app{about};
  app.set_version_flag("--version", program + " " TARVOLT_VERSION);
  app.add_option("--home", options.home, "Folder of the station; else TARVOLT_HOME, else the user's data folder");
  app.add_option("--profile", options.profile, "Profile to load before anything else (.tvp)");
  app.add_option("--load", options.load, "Data file to open (.tvd)");
  app.add_option("--set", settings, "KEY=VALUE: a setting for this run alone; may be given often")
      ->take_all()
      ->expected(1)
      ->allow_extra_args(false);
  app.add_option("--mode", mode, "standalone, server or client")->check(CLI::IsMember(kModes, CLI::ignore_case));
  const std::string end = program == "tarvoltd" ? ", and end when it has ended" : "";
  app.add_flag("--start", options.start, "Start a chart at once" + end);
  app.add_option("--seconds", options.seconds, "End after so many seconds of recording")
      ->check(CLI::Range(0.001, 2147483.0));
  app.add_flag("--list-sound", options.listSound,
               "Print the sound inputs, with their formats behind the numbers of sWavFormat, and exit");
  app.add_flag("--quiet", options.quiet, "Print nothing but errors");
  app.add_option("commands", slash,
                 "Slash commands: /S /C /SC /NM /ILS text /L file /PF file, or the name of a data file (.tvd) to open");
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    options.finished = true;
    options.exitStatus = app.exit(error) == 0 ? 0 : kWrongUsage;
    return options;
  }
  for (const std::string& text : settings) {
    const std::string problem = AddOverride(text, options.overrides);
    if (problem.empty()) continue;
    Refuse(options, program, problem);
    return options;
  }
  if (!slash.empty() && !IsCommand(slash.front())) {
    Refuse(options, program, "\"" + slash.front() + "\" is neither a slash command nor a data file");
    return options;
  }
  std::transform(mode.begin(), mode.end(), mode.begin(), [](unsigned char c) { return std::tolower(c); });
  options.mode = kModes.at(mode);
  for (std::string& word : slash) word = FromShell(word);
  options.slashCommands = JoinArguments(slash);
  options.profile = FromShell(options.profile);
  options.load = FromShell(options.load);
  return options;
}

}  // namespace tarvolt
