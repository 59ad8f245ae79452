// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/recovered_charts.h"

#include <algorithm>

#include "files/format/data_file_reader.h"

namespace tarvolt {
namespace {

RecoveredChart Look(FileSystem& files, const std::filesystem::path& file) {
  RecoveredChart chart;
  chart.file = file;
  DataFileReader reader(files);
  if (reader.Open(file) != OpenResult::Ok) return chart;
  chart.channels = reader.Layout().channels;
  chart.start = reader.Header().start;
  chart.base = reader.Notes().lmst ? "ST" : reader.Notes().usingUT ? "UT" : "";
  FileSample first;
  FileSample last;
  if (reader.WholeCount() > 0) {
    if (!reader.ReadSample(0, first) || !reader.ReadSample(reader.WholeCount() - 1, last)) return chart;
    chart.days = last.time - first.time;
    if (!reader.Notes().timeRefZero) chart.start = first.time;
  }
  chart.samples = reader.WholeCount();
  chart.readable = true;
  return chart;
}

}  // namespace

// Their names begin with the date of their rescue.
std::vector<RecoveredChart> ListRecovered(FileSystem& files, const std::filesystem::path& folder) {
  std::error_code error;
  std::vector<std::filesystem::path> names = files.ListFiles(folder, error);
  std::reverse(names.begin(), names.end());
  std::vector<RecoveredChart> charts;
  for (const std::filesystem::path& name : names) {
    if (name.extension() != ".tvd" || charts.size() >= kMostRecovered) continue;
    charts.push_back(Look(files, folder / name));
  }
  return charts;
}

}  // namespace tarvolt
