#include <QApplication>
#include <filesystem>

#include "commands.h"
#include "core/chart_view_entry.h"
#include "core/load_commands.h"
#include "forms/plot/chart_picture.h"
#include "host/disk_path.h"
#include "host/headless_dialogs.h"
#include "host/make_host.h"
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
  const std::int32_t first = FindXaxisMinIndex(chart);
  const std::int32_t last = FindXaxisMaxIndex(chart);
  for (int channel = 0; channel < chart.ChannelCount(); ++channel) {
    if (!chart.ChannelVisible[channel] || last < first) continue;
    const MinMax range = chart.Range(channel, first, last);
    if (!range.IsEmpty()) seen.Widen(range);
  }
  if (!seen.IsEmpty()) SetRange(chart, {chart.XAxisMin, chart.XAxisMax, seen.lowest, seen.highest});
}

std::string ApplyTimes(const PlotOptions& options, const ChartWindow& window, ChartCommands& commands) {
  if (options.from.empty() && options.to.empty()) return "";
  ChartViewEntry entry = DescribeView(window, 0);
  entry.from = options.from.empty() ? FormatDate(window.chart.GetTime(0), "YYYY-MM-DD hh:nn:ss") : options.from;
  entry.to = options.to.empty() ? ChartViewEntry::kEndOfData : options.to;
  return ApplyChartView(entry, window, commands);
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
  const auto owner = MakeHost(
      application, std::make_unique<HeadlessDialogs>([](const std::string& line) { Complain(Utf8FromAnsi(line)); }));
  Session session(owner->host, "");
  ChartWindow window;
  ChartCommands commands(session, window);
  if (!LoadAndShow(session, window, commands, NameFromDisk(options.file).value_or(options.file))) {
    return PlotResult::Failed;
  }
  if (!ChooseChannels(options.channels, window.chart)) {
    Complain("--channels needs numbers from 1 to " + NumberText(std::int64_t{window.chart.ChannelCount()}) +
             " such as 1,3 or 2-4");
    return PlotResult::WrongUsage;
  }
  const std::string problem = ApplyTimes(options, window, commands);
  if (!problem.empty()) {
    Complain(problem);
    return PlotResult::WrongUsage;
  }
  FitWhatIsSeen(window.chart);
  return Draw(options, window) ? PlotResult::Drawn : PlotResult::Failed;
}

}  // namespace tarvolt
