// SPDX-License-Identifier: GPL-3.0-or-later
// Tarvolt's data files from a shell: what a file says about itself, and its samples as text. And its equations.

#include <CLI/CLI.hpp>
#include <charconv>
#include <string>

#include "commands.h"
#include "host/posix_file_system.h"
#include "output.h"

namespace tarvolt {

namespace {

constexpr int kSuccess = 0;
constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

struct Options {
  std::string file;
  PlotOptions plot;
  std::string size;
  bool json = false;
  bool csv = false;
  DumpRange range;
  EvalRequest eval;
  ApplyRequest apply;
};

CLI::App* AddInfo(CLI::App& app, Options& options) {
  CLI::App* info = app.add_subcommand("info", "Header, notes and items of a data file");
  info->add_option("FILE", options.file, "Data file")->required();
  info->add_flag("--json", options.json, "As JSON");
  return info;
}

CLI::App* AddDump(CLI::App& app, Options& options) {
  CLI::App* dump = app.add_subcommand("dump", "Samples of a data file, one a line, every digit of them");
  dump->add_option("FILE", options.file, "Data file")->required();
  dump->add_option("--from", options.range.from, "Index of the first sample to print")->check(CLI::NonNegativeNumber);
  dump->add_option("--to", options.range.to, "Index of the last sample to print")->check(CLI::NonNegativeNumber);
  dump->add_flag("--csv", options.csv, "Separated by commas instead of tabs");
  return dump;
}

CLI::App* AddPlot(CLI::App& app, Options& options) {
  CLI::App* plot = app.add_subcommand("plot", "A picture of a data file; needs no display");
  plot->add_option("FILE", options.plot.file, "Data file")->required();
  plot->add_option("-o,--output", options.plot.output,
                   "Picture, by its ending .png, .svg or .pdf; else FILE's name with .png");
  plot->add_option("--from", options.plot.from,
                   "Left edge: \"YYYY-MM-DD hh:nn:ss.zzz\", or hh:nn:ss.zzz of the first day");
  plot->add_option("--to", options.plot.to, "Right edge, likewise");
  plot->add_option("--channels", options.plot.channels, "Channels to draw, such as 1,3 or 2-4");
  plot->add_option("--size", options.size, "Width and height in pixels, such as 1200x600");
  return plot;
}

// "1200x600"; false for anything else.
bool ReadSize(const std::string& text, PlotOptions& plot) {
  const char* const end = text.data() + text.size();
  const auto width = std::from_chars(text.data(), end, plot.width);
  if (width.ec != std::errc() || width.ptr == end || *width.ptr != 'x') return false;
  const auto height = std::from_chars(width.ptr + 1, end, plot.height);
  return height.ec == std::errc() && height.ptr == end && plot.width > 0 && plot.height > 0;
}

int RunPlot(Options& options, int argc, char** argv) {
  if (!options.size.empty() && !ReadSize(options.size, options.plot)) {
    Complain("--size needs WIDTHxHEIGHT in pixels, such as 1200x600");
    return kWrongUsage;
  }
  switch (PlotFile(options.plot, argc, argv)) {
    case PlotResult::Drawn:
      return kSuccess;
    case PlotResult::Failed:
      return kFailed;
    case PlotResult::WrongUsage:
      return kWrongUsage;
  }
  return kFailed;
}

CLI::App* AddEval(CLI::App& app, Options& options) {
  CLI::App* eval = app.add_subcommand("eval", "Value of an equation, as channels have them");
  eval->add_option("EXPR", options.eval.expression, "Equation; behind -- when it begins with a minus")->required();
  eval->add_option("--var", options.eval.variables, "A variable, as often as there are variables")
      ->type_name("NAME=VALUE")
      ->allow_extra_args(false)
      ->check(VariableFault);
  eval->add_flag("--degrees", options.eval.degrees, "Angles in degrees instead of radians");
  eval->footer("The numbers of an equation have a point: tvd eval 'sin(x)*2 + y mod 3' --var x=0.5 --var y=7");
  return eval;
}

CLI::App* AddApply(CLI::App& app, Options& options) {
  CLI::App* apply = app.add_subcommand("apply", "Channel equations over a data file, into a new file");
  apply->add_option("FILE", options.apply.file, "Data file")->required();
  apply->add_option("--equation", options.apply.equations, "Equation of channel N, as often as there are equations")
      ->type_name("N=TEXT")
      ->required()
      ->allow_extra_args(false)
      ->check(EquationArgumentFault);
  apply->add_option("--new-channels", options.apply.newChannels, "Channels to add for equation data")
      ->check(CLI::Range(0, 7));
  apply->add_option("-o,--output", options.apply.output, "The new file")->required();
  apply->footer("tvd apply night.tvd --equation '1=X*2+1' --equation '3=Z1-Z2' --new-channels 1 -o out.tvd");
  return apply;
}

int RunApply(const Options& options, int argc, char** argv) {
  switch (ApplyToFile(options.apply, argc, argv)) {
    case CommandResult::Done:
      return kSuccess;
    case CommandResult::Failed:
      return kFailed;
    case CommandResult::WrongUsage:
      return kWrongUsage;
  }
  return kFailed;
}

// Reports in one line what is wrong with the file; false then.
bool OpenDataFile(DataFileReader& reader, const std::string& name) {
  switch (reader.Open(name)) {
    case OpenResult::Ok:
      return true;
    case OpenResult::Missing:
      Complain(name + ": cannot be opened: " + reader.Error().message());
      return false;
    case OpenResult::TooShort:
      Complain(name + ": is shorter than the header of a data file");
      return false;
    case OpenResult::Corrupted:
      Complain(
          name +
          ": is corrupted or not a data file: its header does not have 1 to 9 channels, or notes beyond all bounds");
      return false;
    case OpenResult::Unreadable:
      Complain(name + ": cannot be read: " + reader.Error().message());
      return false;
  }
  return false;
}

bool Run(const Options& options, bool dump) {
  PosixFileSystem files;
  DataFileReader reader(files);
  if (!OpenDataFile(reader, options.file)) return false;
  return dump ? PrintSamples(reader, options.file, options.range, options.csv)
              : PrintInfo(reader, options.file, options.json);
}

int Main(int argc, char** argv) {
  CLI::App app("Tarvolt's data files and equations from a shell", "tvd");
  app.set_version_flag("--version", std::string("tvd ") + TARVOLT_VERSION);
  app.require_subcommand(1);
  Options options;
  AddInfo(app, options);
  const CLI::App* dump = AddDump(app, options);
  const CLI::App* plot = AddPlot(app, options);
  const CLI::App* eval = AddEval(app, options);
  const CLI::App* apply = AddApply(app, options);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? kSuccess : kWrongUsage;
  }
  if (plot->parsed()) return RunPlot(options, argc, argv);
  if (apply->parsed()) return RunApply(options, argc, argv);
  if (options.range.to && *options.range.to < options.range.from.value_or(0)) {
    Complain("--to lies before --from");
    return kWrongUsage;
  }
  if (eval->parsed()) return PrintValue(options.eval) ? kSuccess : kFailed;
  return Run(options, dump->parsed()) ? kSuccess : kFailed;
}

}  // namespace
}  // namespace tarvolt

int main(int argc, char** argv) {
  return tarvolt::Main(argc, argv);
}
