// SPDX-License-Identifier: GPL-3.0-or-later
// The drawing of a chart beside the plotting library's own graph with the same points, and what a window costs a run.

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <QApplication>
#include <ctime>
#include <memory>
#include <thread>

#include "display/chart_steps.h"
#include "forms/form_main/desktop_person.h"
#include "forms/form_main/main_window.h"
#include "forms/plot/strip_chart_plot.h"
#include "sample_values.h"
#include "side_by_side.h"
#include "station/station.h"

namespace tarvolt::bench {
namespace {

constexpr int kWidth = 1200;
constexpr int kHeight = 600;

std::unique_ptr<ChartWindow> FilledWindow(std::int32_t samples) {
  auto window = std::make_unique<ChartWindow>();
  window->chart.SetChannelCount(kBenchChannels);
  window->chart.SetCapacity(samples);
  window->run.ChannelCount = kBenchChannels;
  for (std::int32_t i = 0; i < samples; ++i) StoreSample(window->chart, i);
  FitX(window->chart);
  FitY(window->chart, kBenchChannels);
  return window;
}

// The same points in the library's own graphs.
std::unique_ptr<QCustomPlot> FilledGraphs(const ChartWindow& window) {
  auto plot = std::make_unique<QCustomPlot>();
  plot->setNoAntialiasingOnDrag(true);
  for (int channel = 0; channel < kBenchChannels; ++channel) {
    QCPGraph* graph = plot->addGraph();
    graph->setAntialiased(false);
    graph->setPen(QPen(Qt::blue, 1));
    QVector<QCPGraphData> points(window.chart.Count());
    for (std::int32_t i = 0; i < window.chart.Count(); ++i)
      points[i] = QCPGraphData(window.chart.GetTime(i), window.chart.GetValue(channel, i));
    graph->data()->set(points, true);
  }
  plot->xAxis->setRange(window.chart.XAxisMin, window.chart.XAxisMax);
  plot->yAxis->setRange(window.chart.YAxisMin, window.chart.YAxisMax);
  return plot;
}

double SecondsToDraw(QCustomPlot& plot) {
  plot.setViewport(QRect(0, 0, kWidth, kHeight));
  return SecondsOf([&] { plot.replot(QCustomPlot::rpImmediateRefresh); });
}

void FullViewBesideGraphs(benchmark::State& state) {
  const auto window = FilledWindow(1'000'000);
  StripChartPlot ours(*window);
  ours.TakeOver();
  const auto graphs = FilledGraphs(*window);
  RunSideBySide(
      state, 1, [&] { return SecondsToDraw(ours); }, [&] { return SecondsToDraw(*graphs); });
}
BENCHMARK(FullViewBesideGraphs)->UseManualTime()->Iterations(Rounds(21))->Unit(benchmark::kMillisecond);

void FullViewOfTenMillionsBesideOne(benchmark::State& state) {
  const auto many = FilledWindow(10'000'000);
  const auto one = FilledWindow(1'000'000);
  StripChartPlot manyPlot(*many);
  StripChartPlot onePlot(*one);
  manyPlot.TakeOver();
  onePlot.TakeOver();
  RunSideBySide(
      state, 1, [&] { return SecondsToDraw(manyPlot); }, [&] { return SecondsToDraw(onePlot); });
}
BENCHMARK(FullViewOfTenMillionsBesideOne)->UseManualTime()->Iterations(Rounds(21))->Unit(benchmark::kMillisecond);

double BytesInUse() {
  const struct mallinfo2 info = mallinfo2();
  return static_cast<double>(info.uordblks) + static_cast<double>(info.hblkhd);
}

// A chart of ten million samples and its drawing, beside its values and times in plain columns.
void MemoryOfAWindow(benchmark::State& state) {
  constexpr std::int32_t kSamples = 10'000'000;
  double windowBytes = 0;
  for ([[maybe_unused]] auto iteration : state) {
    const double before = BytesInUse();
    const auto window = FilledWindow(kSamples);
    StripChartPlot plot(*window);
    plot.TakeOver();
    SecondsToDraw(plot);
    windowBytes = BytesInUse() - before;
  }
  const double plainBytes = (kBenchChannels + 1.0) * sizeof(double) * kSamples;
  state.counters["work_bytes"] = windowBytes / kSamples;
  state.counters["bare_bytes"] = plainBytes / kSamples;
  state.counters["ratio"] = windowBytes / plainBytes;
}
BENCHMARK(MemoryOfAWindow)->Iterations(1)->Unit(benchmark::kMillisecond);

double ProcessorSeconds() {
  return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

/// A run of eight channels at 100 samples a second on the simulated machine, with so many samples in its store.
class LiveRun {
 public:
  explicit LiveRun(int samples) {
    using namespace std::chrono_literals;
    for (int channel = 0; channel < kBenchChannels; ++channel)
      station.Set("Dsrc" + std::string(1, static_cast<char>('0' + channel)), 20 + channel);
    station.uds.Channels(kBenchChannels).Measures([](std::int64_t set) {
      const Values values = ValuesOf(set);
      return std::vector<double>(values.begin(), values.end());
    });
    station.uds.PushesEvery(10ms);
    station.Set("MaxArrayCount", 2 * samples).Set("MaxDuration", 100).Set("DiskBackUp", false).StartChart();
    station.RunForSets(samples);
    station.Form().Chart().view.cmdFullView();
  }

  /// Processor time of three seconds of recording, which take as long on the wall, with the window looking at it thirty
  /// times a second when there is one.
  double ThreeSeconds(MainWindow* window) {
    constexpr auto kFrame = std::chrono::milliseconds(33);
    const double before = ProcessorSeconds();
    auto next = std::chrono::steady_clock::now();
    for (int frame = 0; frame < 91; ++frame) {
      station.RunFor(kFrame);
      if (window != nullptr) {
        window->Refresh();
        QApplication::processEvents();
      }
      next += kFrame;
      std::this_thread::sleep_until(next);
    }
    return ProcessorSeconds() - before;
  }

  Station station;
};

// "work_s" and "bare_s" are processor time a second of recording, with and without the window.
void RecordingWithAWindow(benchmark::State& state) {
  constexpr int kSamples = 1'000'000;
  LiveRun run(kSamples);
  DesktopPerson person;
  MainWindow window(run.station.TheSession(), run.station.Form(), person);
  window.resize(kWidth, kHeight);
  window.show();
  QApplication::processEvents();
  RunSideBySide(
      state, 3, [&] { return run.ThreeSeconds(&window); }, [&] { return run.ThreeSeconds(nullptr); });
  const std::int64_t lost = run.station.uds.SetsSent() - run.station.Form().Window().chart.Count();
  state.counters["lost"] = static_cast<double>(lost);
}
BENCHMARK(RecordingWithAWindow)->UseManualTime()->Iterations(Rounds(5))->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarvolt::bench

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
