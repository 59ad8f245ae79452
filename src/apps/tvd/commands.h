// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "files/format/data_file_reader.h"

namespace tarvolt {

/// Prints header, notes and items; true when all of it went out.
bool PrintInfo(const DataFileReader& reader, const std::string& name, bool json);

/// Samples to print, both included; nothing means from the first, to the last.
struct DumpRange {
  std::optional<std::int32_t> from;
  std::optional<std::int32_t> to;
};

/// Prints a heading and one line a sample: index, stamp, date, values; true when all of it went out. The sample that
/// readers add to a file of doubles without stamps is not printed.
bool PrintSamples(DataFileReader& reader, const std::string& name, const DumpRange& range, bool csv);

/// A picture of a data file.
struct PlotOptions {
  std::string file;
  std::string output;    ///< ends in .png, .svg or .pdf; empty for the file's own name with .png, in the current folder
  std::string from;      ///< a time or a date with a time; empty for the first sample
  std::string to;        ///< the same for the last sample
  std::string channels;  ///< "1,3,5-7"; empty for all
  int width = 1200;      ///< pixels
  int height = 600;
};

enum class PlotResult { Drawn, Failed, WrongUsage };

/// Draws it without a display. What is wrong is reported on standard error.
PlotResult PlotFile(const PlotOptions& options, int argc, char** argv);

/// Equations to apply to a data file.
struct ApplyRequest {
  std::string file;
  std::vector<std::string> equations;  ///< each N=TEXT, checked by EquationArgumentFault
  int newChannels = 0;                 ///< added behind those of the file
  std::string output;
};

enum class CommandResult { Done, Failed, WrongUsage };

/// What is wrong with an N=TEXT; empty when it is fine.
std::string EquationArgumentFault(const std::string& argument);

/// Applies the equations and writes the result; FILE stays as it is. What is wrong is reported on standard error.
CommandResult ApplyToFile(const ApplyRequest& request, int argc, char** argv);

/// An equation to evaluate, as the shell gave it.
struct EvalRequest {
  std::string expression;
  std::vector<std::string> variables;  ///< each NAME=VALUE, checked by VariableFault
  bool degrees = false;
};

/// What is wrong with a NAME=VALUE; empty when it is fine.
std::string VariableFault(const std::string& variable);

/// Prints the value with every digit; true when it has one and it went out. Reports what is wrong with the equation.
bool PrintValue(const EvalRequest& request);

}  // namespace tarvolt
