// Any bytes as a data file, loaded into a window as a person would and looked at in every way. The first bytes choose
// the options and the commands that follow.

#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "core/chart/load_commands.h"
#include "display/column_reduction.h"
#include "files/header_info.h"
#include "memory_files.h"
#include "sim/sim_host.h"

namespace {

using namespace tarvolt;

constexpr std::size_t kChoices = 16;

void Require(bool holds) {
  if (!holds) std::abort();
}

/// Takes the choices one after the other, and from the first again.
class Choices {
 public:
  explicit Choices(const std::uint8_t* bytes) : bytes_(bytes) {}
  int Next(int below) { return bytes_[place_++ % kChoices] % below; }

 private:
  const std::uint8_t* bytes_;
  std::size_t place_ = 0;
};

/// A machine that is made once, with a disk of its own: only session and window are new for each file.
struct Machine {
  SimHost host{1};
  MemoryFiles files;
  Host record{host.clock, host.loop, host.network, files, host.processes, host.dialogs, host.sound, host.mixer};
};

LoadRequest RequestOf(Choices& choices) {
  LoadRequest request;
  request.extraChannels = choices.Next(4);
  request.keepSelection = choices.Next(4) == 0;
  if (choices.Next(2) == 0) {
    request.forced.ForceChannels = choices.Next(12);
    request.forced.ForceInteger = choices.Next(3);
    request.forced.ForceNoStamps = choices.Next(3);
  }
  const int ticks = choices.Next(256);
  request.askChannels = [ticks](const ChannelQuestion&) {
    ChannelAnswer answer;
    for (int channel = 0; channel < kChannels; ++channel) answer.ticked[channel] = (ticks >> channel & 1) != 0;
    return std::optional(answer);
  };
  return request;
}

void SetOptions(Choices& choices, Session& session, ChartWindow& window) {
  session.settings.program.ShowMsgBox = false;
  session.settings.chart.AutoTitle = true;
  session.settings.chart.AutoTitleFormat = "%name %observer %date %time %base";
  session.settings.channels.DefaultChannelOffset[1] = 0.5;
  window.loadOptions.LoadLocalOffsets = choices.Next(2) == 0;
  window.loadOptions.LoadFileOffsets = choices.Next(2) == 0;
  window.loadOptions.LoadSelectedChannels = choices.Next(3) == 0;
  window.loadOptions.ChannelSelected.fill(choices.Next(2) == 0);
}

void RunCommand(int command, ChartCommands& chart, const ChartWindow& window) {
  switch (command) {
    case 0:
      return chart.IncX();
    case 1:
      return chart.DecX();
    case 2:
      return chart.IncY();
    case 3:
      return chart.DecY();
    case 4:
      return chart.ScrollLeft();
    case 5:
      return chart.ScrollRight();
    case 6:
      return chart.ScrollUp();
    case 7:
      return chart.ScrollDown();
    case 8:
      return chart.cmdFullView();
    case 9:
      return chart.RestoreFullView();
    case 10:
      chart.cmdCursor();
      chart.MoveCursor(window.chart.XAxisMin, window.chart.YAxisMax);
      return chart.mnuSetTimeMarker();
    case 11:
      return chart.cmdAutoScrollEnable();
    case 12:
      return chart.cmdAutoScale();
    case 13:
      return chart.mnuVisCH(1);
    case 14:
      chart.SetChartView({});
      return chart.SaveChartViewParams();
    default:
      return chart.ZoomTo({window.chart.XAxisMin, (window.chart.XAxisMin + window.chart.XAxisMax) / 2,
                           window.chart.YAxisMin, window.chart.YAxisMax});
  }
}

void CheckWindow(const ChartWindow& window) {
  const StripChart& chart = window.chart;
  Require(!window.save.Loading);
  Require(window.run.ChannelCount == chart.ChannelCount() && window.run.Dcount == chart.Count());
  Require(window.notations.count >= 0 && window.notations.count < Notations::kSlots);
  Require(std::isfinite(chart.YAxisMin) && chart.YAxisMin <= chart.YAxisMax);
  for (const int pen : chart.ChannelPen) Require(pen >= 0 && pen < StripChart::kMaxChannels);
}

void Draw(const StripChart& chart) {
  constexpr int kWidth = 64;
  const ColumnEdges edges = FindColumnEdges(chart, chart.XAxisMin, chart.XAxisMax, kWidth);
  for (int channel = 0; channel < chart.ChannelCount(); ++channel) {
    int before = -1;
    for (const PixelColumn& column : ReduceToColumns(chart, channel, edges)) {
      Require(column.x >= 0 && column.x < kWidth && column.x != before);
      Require(column.x > before || !chart.Samples().TimesRise());
      before = column.x;
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < kChoices) return 0;
  static Machine machine;
  Choices choices(data);
  machine.host.loop.RunFor(std::chrono::milliseconds(1));  // no instant has room for all the yields to come
  const char* const bytes = reinterpret_cast<const char*>(data);
  machine.files.contents = {{"/any.tvd", std::string(bytes + kChoices, size - kChoices)}};
  Session session(machine.record, "/station");
  ChartWindow window;
  ChartCommands chart(session, window);
  SetOptions(choices, session, window);
  const bool part = choices.Next(4) == 0;
  if (part) {
    LoadRange range{choices.Next(256) - 8, choices.Next(256) - 8};
    LoadData(session, window, "/any.tvd", range, RequestOf(choices));
    Require(window.chart.Count() == 0 || window.chart.Count() <= range.lastIndex - range.firstIndex + 1);
  } else {
    LoadAndShow(session, window, chart, "/any.tvd", RequestOf(choices));
  }
  CheckWindow(window);
  Draw(window.chart);
  for (int i = choices.Next(8); i > 0; --i) {
    RunCommand(choices.Next(16), chart, window);
    CheckWindow(window);
    Draw(window.chart);
  }
  Require(!GetModifiedNotes(session, window, window.notes).empty());
  return 0;
}
