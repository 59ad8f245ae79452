// SPDX-License-Identifier: GPL-3.0-or-later
#include <QCoreApplication>
#include <filesystem>

#include "commands.h"
#include "core/chart/apply_equations.h"
#include "core/chart/load_data.h"
#include "core/station/version.h"
#include "files/save_plan.h"
#include "host/disk_path.h"
#include "host/headless_dialogs.h"
#include "host/make_host.h"
#include "output.h"
#include "text/ansi.h"
#include "text/number.h"
#include "timebase/time_base.h"

namespace tarvolt {
namespace {

struct ChannelEquation {
  int channel = 0;  ///< counted from 1; 0 for what is none
  std::string text;
};

// "N=TEXT" with an N of 1 to 8.
ChannelEquation EquationOf(const std::string& argument) {
  if (argument.size() < 3 || argument[1] != '=' || argument[0] < '1' || argument[0] > '0' + kChannels) return {};
  return {argument[0] - '0', AnsiFromUtf8(argument.substr(2))};
}

EquationSet SetOf(const ApplyRequest& request) {
  EquationSet set;
  for (const std::string& argument : request.equations) {
    const ChannelEquation equation = EquationOf(argument);
    set.EquString[static_cast<std::size_t>(equation.channel - 1)] = equation.text;
    set.ApplyToCH[static_cast<std::size_t>(equation.channel - 1)] = 1;
  }
  return set;
}

bool FitsChart(const EquationSet& set, int channels) {
  for (int channel = channels; channel < kChannels; ++channel) {
    if (!set.Applies(channel)) continue;
    Complain("channel " + NumberText(std::int64_t{channel + 1}) + " has an equation, but the file has " +
             NumberText(std::int64_t{channels}) + " channels with those added");
    return false;
  }
  return true;
}

// What is missing of the file is no reason to stop, but is said.
bool LoadAll(FileSystem& files, const std::string& name, ChartWindow& window) {
  ChartLoad load(files, {});
  if (const Outcome opened = load.Open(name); !opened) {
    Complain(Utf8FromAnsi(opened.Words()));
    return false;
  }
  load.ChooseChannels();
  if (!load.Chart().HasData()) {
    Complain(Utf8FromAnsi(name) + " does not appear to have any data");
    return false;
  }
  BeginLoadedChart(load.Chart(), window);
  if (!load.ReadSamples(window.chart)) {
    Complain(Utf8FromAnsi(name) + " could not be loaded as a whole.");
    return false;
  }
  const std::string missing = WhatIsMissing(load.Chart(), window.chart);
  if (!missing.empty()) Complain(Utf8FromAnsi(name) + ": " + missing);
  FinishLoadedChart(load.Chart(), window);
  return true;
}

}  // namespace

std::string EquationArgumentFault(const std::string& argument) {
  if (EquationOf(argument).channel != 0) return {};
  return argument + " is not N=TEXT with a channel from 1 to 8 and its equation";
}

CommandResult ApplyToFile(const ApplyRequest& request, int argc, char** argv) {
  std::error_code ignored;
  if (std::filesystem::equivalent(request.file, request.output, ignored)) {
    Complain("the output is the file itself: what was measured is not written over");
    return CommandResult::WrongUsage;
  }
  QCoreApplication application(argc, argv);
  const auto owner = MakeHost(
      application, std::make_unique<HeadlessDialogs>([](const std::string& line) { Complain(Utf8FromAnsi(line)); }));
  FileSystem& files = owner->host.files;
  ChartWindow window;
  if (!LoadAll(files, NameFromDisk(request.file).value_or(request.file), window)) return CommandResult::Failed;
  if (request.newChannels > FreeChannels(window.chart)) {
    Complain("You cannot add that many channels.");
    return CommandResult::WrongUsage;
  }
  const EquationSet set = SetOf(request);
  const int channels = window.chart.ChannelCount() + request.newChannels;
  if (!FitsChart(set, channels)) return CommandResult::WrongUsage;
  ChannelEquations equations(1, [](const std::string& words) { Complain(Utf8FromAnsi(words)); });
  if (const Outcome sound = equations.Check(set, channels); !sound) {
    Complain(Utf8FromAnsi(sound.Words()));
    return CommandResult::Failed;
  }
  if (!AddEquationChannels(window, request.newChannels)) {
    Complain("There is no memory for the channels.");
    return CommandResult::Failed;
  }
  ApplyEquations(window, equations, set, FormatDate(NowPrecise(owner->host.clock), "YYMMDDHHnnSS"));
  const std::string output = NameFromDisk(request.output).value_or(request.output);
  const DataFilePlan plan = PlanOfChart(window, {window.chart.ChannelCount(), true, false}, kProgramVersion);
  const std::error_code error = WriteDataFile(files, plan, window.chart.Samples(), output);
  if (error) Complain("Could not save " + request.output + ": " + error.message());
  return error ? CommandResult::Failed : CommandResult::Done;
}

}  // namespace tarvolt
