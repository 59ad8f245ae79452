// SPDX-License-Identifier: GPL-3.0-or-later
#include <QApplication>
#include <filesystem>

#include "commands.h"
#include "core/chart/chart_view_entry.h"
#include "core/chart/load_data.h"
#include "core/chart/look_commands.h"
#include "display/column_reduction.h"
#include "forms/plot/chart_picture.h"
#include "host/disk_path.h"
#include "host/posix_file_system.h"
#include "output.h"
#include "text/ansi.h"
#include "text/number.h"

namespace tarvolt {
namespace {

// A number of a channel, 1 to `channels`; 0 for anything else.
int ChannelNumber(std::string_view text, int channels) {
  const auto number = ParseNumber(text);
  return number && *number >= 1 && *number <= channels && *number == static_cast<int>(*number)
             ? static_cast<int>(*number)
             : 0;
}

// "1,3,5-7" as the channels to be seen. False for what is no such list.
bool ChooseChannels(std::string_view list, StripChart& chart) {
  if (list.empty()) return true;
  chart.ChannelVisible.fill(false);
  while (!list.empty()) {
    const std::string_view item = list.substr(0, list.find(','));
    list.remove_prefix(std::min(list.size(), item.size() + 1));
    const std::size_t dash = item.find('-');
    const int first = ChannelNumber(item.substr(0, dash), chart.ChannelCount());
    const int last = dash == item.npos ? first : ChannelNumber(item.substr(dash + 1), chart.ChannelCount());
    if (first == 0 || last < first) return false;
    for (int channel = first; channel <= last; ++channel) chart.ChannelVisible[channel - 1] = true;
  }
  return true;
}

// The y range to what is seen.
void FitWhatIsSeen(StripChart& chart) {
  MinMax seen;
  const ColumnEdges all = FindColumnEdges(chart, chart.XAxisMin, chart.XAxisMax, 1);
  for (int channel = 0; channel < chart.ChannelCount(); ++channel) {
    if (!chart.ChannelVisible[channel]) continue;
    for (const PixelColumn& column : ReduceToColumns(chart, channel, all)) seen.Widen({column.lowest, column.highest});
  }
  if (!seen.IsEmpty()) SetRange(chart, {chart.XAxisMin, chart.XAxisMax, seen.lowest, seen.highest});
}

// The x range that was asked for; what is wrong with it in words.
std::string ApplyTimes(const PlotOptions& options, ChartWindow& window) {
  if (options.from.empty() && options.to.empty()) return "";
  StripChart& chart = window.chart;
  ChartViewEntry entry = DescribeView(window, 0);
  if (!options.from.empty()) entry.from = options.from;
  entry.to = options.to.empty() ? ChartViewEntry::kEndOfData : options.to;
  ChartViewRequest request;
  const std::string problem = ValuesOK(entry, chart, request);
  if (!problem.empty()) return problem;
  const ChartRange range = RangeOfView(request, chart);
  if (!(range.xMin < range.xMax)) return "The chart view must end after it starts.";
  SetRange(chart, range);
  return "";
}

// False, and said, when it cannot be loaded as a whole.
bool Load(const std::string& name, ChartWindow& window) {
  PosixFileSystem files;
  ChartLoad load(files, {});
  const std::filesystem::path file = NameFromDisk(name).value_or(name);
  if (const Outcome opened = load.Open(file); !opened) {
    Complain(Trim(Utf8FromAnsi(ReplaceAll(opened.Words(), "\n", " "))));
    return false;
  }
  load.ChooseChannels();  // all of them, as nobody is asked
  BeginLoadedChart(load.Chart(), window);
  const bool whole = load.ReadSamples(window.chart);
  FinishLoadedChart(load.Chart(), window);
  if (!load.Chart().HasData()) {
    Complain(name + ": does not appear to have any data");
  } else if (!whole) {
    Complain(name + ": could not be loaded as a whole");
  }
  FitX(window.chart);
  ShowChartLegend(window);
  return whole && load.Chart().HasData();
}

bool Draw(const PlotOptions& options, const ChartWindow& window) {
  StripChartPlot plot(window);
  const std::string name =
      options.output.empty() ? std::filesystem::path(options.file).stem().string() + ".png" : options.output;
  std::string problem;
  if (SaveChartPicture(plot, QString::fromLocal8Bit(name.c_str()), options.width, options.height, problem)) return true;
  Complain(name + ": " + problem);
  return false;
}

}  // namespace

PlotResult PlotFile(const PlotOptions& options, int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});  // what concerns screens
  QApplication application(argc, argv);
  ChartWindow window;
  if (!Load(options.file, window)) return PlotResult::Failed;
  if (!ChooseChannels(options.channels, window.chart)) {
    Complain("--channels needs numbers from 1 to " + NumberText(std::int64_t{window.chart.ChannelCount()}) +
             " such as 1,3 or 2-4");
    return PlotResult::WrongUsage;
  }
  const std::string problem = ApplyTimes(options, window);
  if (!problem.empty()) {
    Complain(problem);
    return PlotResult::WrongUsage;
  }
  FitWhatIsSeen(window.chart);
  return Draw(options, window) ? PlotResult::Drawn : PlotResult::Failed;
}

}  // namespace tarvolt
