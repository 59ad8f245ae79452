// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as a data file, loaded into a window as a person would and looked at in every way. The first bytes choose
// the options and the commands that follow.

#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>

#include "core/chart/load_commands.h"
#include "display/column_reduction.h"
#include "files/header_info.h"
#include "require.h"
#include "sim/sim_host.h"

namespace {

using namespace tarvolt;

constexpr std::size_t kChoices = 16;

/// Takes the choices one after the other, and from the first again.
class Choices {
 public:
  explicit Choices(const std::uint8_t* bytes) : bytes_(bytes) {}
  int Next(int below) { return bytes_[place_++ % kChoices] % below; }

 private:
  const std::uint8_t* bytes_;
  std::size_t place_ = 0;
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

constexpr void (ViewCommands::*kViewCommands[])() = {&ViewCommands::IncX,
                                                     &ViewCommands::DecX,
                                                     &ViewCommands::IncY,
                                                     &ViewCommands::DecY,
                                                     &ViewCommands::ScrollLeft,
                                                     &ViewCommands::ScrollRight,
                                                     &ViewCommands::ScrollUp,
                                                     &ViewCommands::ScrollDown,
                                                     &ViewCommands::cmdFullView,
                                                     &ViewCommands::cmdAutoScale,
                                                     &ViewCommands::RestoreFullView,
                                                     &ViewCommands::cmdAutoScrollEnable};
constexpr int kSimpleCommands = static_cast<int>(std::size(kViewCommands));

void RunCommand(int command, ChartCommands& chart, const ChartWindow& window) {
  if (command < kSimpleCommands) return (chart.view.*kViewCommands[command])();
  if (command == kSimpleCommands) {
    chart.cursor.cmdCursor();
    chart.cursor.MoveCursor(window.chart.XAxisMin, window.chart.YAxisMax);
    return chart.cursor.mnuSetTimeMarker();
  }
  if (command == kSimpleCommands + 1) return chart.look.mnuVisCH(1);
  if (command == kSimpleCommands + 2) {
    chart.view.SetChartView({});
    return chart.view.SaveChartViewParams();
  }
  chart.view.ZoomTo({window.chart.XAxisMin, (window.chart.XAxisMin + window.chart.XAxisMax) / 2, window.chart.YAxisMin,
                     window.chart.YAxisMax});
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
  static SimHost host(1);  // made once: only session and window are new for each file
  Choices choices(data);
  host.loop.RunFor(std::chrono::milliseconds(1));  // no instant has room for all the yields to come
  const char* const bytes = reinterpret_cast<const char*>(data);
  host.disk.Put("/any.tvd", std::string_view(bytes + kChoices, size - kChoices));
  Session session(host.Record(), "/station");
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
    RunCommand(choices.Next(kSimpleCommands + 4), chart, window);
    CheckWindow(window);
    Draw(window.chart);
  }
  Require(!GetModifiedNotes(session, window, window.notes).empty());
  return 0;
}
