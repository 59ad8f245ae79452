// SPDX-License-Identifier: GPL-3.0-or-later
// Saving and loading a full chart, beside a bare write and a bare read of the same bytes.

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "core/chart/load_data.h"
#include "display/column_reduction.h"
#include "files/saving.h"
#include "real_station.h"
#include "side_by_side.h"

namespace tarvolt::bench {
namespace {

constexpr std::int32_t kSamples = 1'000'000;

struct Bytes {
  explicit Bytes(std::size_t count) : data(std::make_unique_for_overwrite<char[]>(count)), size(count) {}

  std::unique_ptr<char[]> data;
  std::size_t size;
};

bool ReadWhole(const std::string& name, Bytes& bytes) {
  const int fd = ::open(name.c_str(), O_RDONLY | O_CLOEXEC);
  std::size_t done = 0;
  for (ssize_t got = 1; got > 0 && done < bytes.size; done += static_cast<std::size_t>(std::max<ssize_t>(got, 0)))
    got = ::read(fd, bytes.data.get() + done, bytes.size - done);
  ::close(fd);
  return done == bytes.size;
}

bool SyncFolder(const std::string& folder) {
  const int fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  const bool synced = ::fsync(fd) == 0;
  ::close(fd);
  return synced;
}

// As safe as the recorder's own: written beside the name, synced with its folder, renamed, and the folder synced again.
bool WriteWhole(const std::string& folder, const Bytes& bytes) {
  const std::string part = folder + "/bare.part";
  const int fd = ::open(part.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  std::size_t done = 0;
  for (ssize_t put = 1; put > 0 && done < bytes.size; done += static_cast<std::size_t>(std::max<ssize_t>(put, 0)))
    put = ::write(fd, bytes.data.get() + done, bytes.size - done);
  const bool synced = ::fsync(fd) == 0 && SyncFolder(folder);
  ::close(fd);
  return done == bytes.size && synced && std::rename(part.c_str(), (folder + "/bare.tvd").c_str()) == 0 &&
         SyncFolder(folder);
}

/// A station with a full chart and the file of it.
struct FullStation : RealStation {
  FullStation() : name(folder.Path() / "full.tvd") {
    session.settings.files.DiskBackUp = false;
    window.chart.SetCapacity(kSamples);
    for (std::int32_t i = 0; i < kSamples; ++i) StoreSample(window.chart, i);
    saved = SaveDataFile(session, window, name, false) == SaveOutcome::Saved;
  }

  std::size_t FileSize() const { return std::filesystem::file_size(name); }

  std::filesystem::path name;
  bool saved = false;
};

void Save(benchmark::State& state) {
  FullStation station;
  Bytes bytes(station.FileSize());
  bool good = station.saved && ReadWhole(station.name.string(), bytes);
  const std::string folder = station.folder.Path().string();
  RunSideBySide(
      state, 1,
      [&] {
        return SecondsOf([&] {
          good = SaveDataFile(station.session, station.window, station.name, false) == SaveOutcome::Saved && good;
        });
      },
      [&] { return SecondsOf([&] { good = WriteWhole(folder, bytes) && good; }); });
  if (!good) state.SkipWithError("the disk refused");
}
BENCHMARK(Save)->Iterations(Rounds(21))->UseManualTime()->Unit(benchmark::kMillisecond);

// The file is in the memory of the system for both; each reads into memory that is new to it.
void Load(benchmark::State& state) {
  FullStation station;
  const std::size_t size = station.FileSize();
  bool good = station.saved;
  RunSideBySide(
      state, 1,
      [&] {
        station.window.chart.ClearData();
        return SecondsOf([&] {
          good = LoadData(station.session, station.window, station.name) == LoadOutcome::Loaded &&
                 station.window.chart.Count() == kSamples && good;
        });
      },
      [&] {
        return SecondsOf([&] {
          Bytes bytes(size);
          good = ReadWhole(station.name.string(), bytes) && good;
        });
      });
  if (!good) state.SkipWithError("the file was not loaded as a whole");
}
BENCHMARK(Load)->Iterations(Rounds(21))->UseManualTime()->Unit(benchmark::kMillisecond);

/// What a drawing of the window takes from the chart, when it has asked for one: as often as a screen shows, and never
/// more.
class Drawing {
 public:
  explicit Drawing(RealStation& station)
      : chart_(station.window.chart), timer_(station.session.host.loop.MakeTimer([this] { DrawWhenAsked(); })) {
    constexpr int kScreenMilliseconds = 33;
    timer_->SetInterval(kScreenMilliseconds);
    timer_->SetEnabled(true);
  }

  int drawn = 0;

 private:
  void DrawWhenAsked() {
    constexpr int kWidth = 1200;
    if (chart_.RepaintRequests == requests_) return;
    requests_ = chart_.RepaintRequests;
    ++drawn;
    const ColumnEdges edges = FindColumnEdges(chart_, chart_.XAxisMin, chart_.XAxisMax, kWidth);
    for (int channel = 0; channel < chart_.ChannelCount(); ++channel)
      benchmark::DoNotOptimize(ReduceToColumns(chart_, channel, edges));
  }

  const StripChart& chart_;
  std::uint64_t requests_ = 0;
  std::unique_ptr<Timer> timer_;
};

/// The pyramids over the columns of a chart, built by themselves.
void BuildPyramids(const std::vector<BlockColumn>& columns) {
  for (const BlockColumn& column : columns) {
    MinMaxPyramid pyramid;
    for (std::int32_t i = 0; i < column.Count(); ++i) {
      pyramid.Cover(i);
      pyramid.Add(i, column[i]);
    }
    benchmark::DoNotOptimize(pyramid.Whole());
  }
}

std::vector<BlockColumn> ColumnsOf(const StripChart& chart) {
  std::vector<BlockColumn> columns(chart.ChannelCount());
  for (int channel = 0; channel < chart.ChannelCount(); ++channel) {
    for (std::int32_t i = 0; i < chart.Count(); ++i) columns[channel].Append(chart.GetValue(channel, i));
  }
  return columns;
}

// The load as a person sees it, the chart being drawn as it goes, beside a bare read and the building of the pyramids.
void LoadAndDraw(benchmark::State& state) {
  FullStation station;
  const std::size_t size = station.FileSize();
  const std::vector<BlockColumn> columns = ColumnsOf(station.window.chart);
  Drawing drawing(station);
  bool good = station.saved;
  std::vector<double> pyramidSeconds;
  RunSideBySide(
      state, 1,
      [&] {
        station.window.chart.ClearData();
        return SecondsOf([&] {
          good = LoadData(station.session, station.window, station.name) == LoadOutcome::Loaded &&
                 station.window.chart.Count() == kSamples && good;
        });
      },
      [&] {
        const double read = SecondsOf([&] {
          Bytes bytes(size);
          good = ReadWhole(station.name.string(), bytes) && good;
        });
        pyramidSeconds.push_back(SecondsOf([&] { BuildPyramids(columns); }));
        return read + pyramidSeconds.back();
      });
  state.counters["pyramids_s"] = Median(pyramidSeconds);
  state.counters["drawings_a_load"] = drawing.drawn / static_cast<double>(pyramidSeconds.size());
  if (!good) state.SkipWithError("the file was not loaded as a whole");
}
BENCHMARK(LoadAndDraw)->Iterations(Rounds(21))->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarvolt::bench

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
