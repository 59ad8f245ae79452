// SPDX-License-Identifier: GPL-3.0-or-later
// The disk backup of one sample, beside opening a file, appending the same bytes and closing it.

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cstring>

#include "files/backup.h"
#include "real_station.h"
#include "side_by_side.h"

namespace tarvolt::bench {
namespace {

constexpr int kSamplesARound = 2000;

class BareBackup {
 public:
  explicit BareBackup(const std::filesystem::path& folder) : name_((folder / "bare.tvd").string()) {}

  // Opened, appended to and closed, as a file must be that a crash may not tear.
  bool Append(TimeStamp stamp, const Values& values) {
    std::array<char, 8 * (kBenchChannels + 1)> bytes;
    std::memcpy(bytes.data(), &stamp, 8);
    std::memcpy(bytes.data() + 8, values.data(), 8 * kBenchChannels);
    const int fd = ::open(name_.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
    const bool written = ::write(fd, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
    return ::close(fd) == 0 && written;
  }

 private:
  std::string name_;
};

void BackupOfASample(benchmark::State& state) {
  RealStation station;
  LocalBackup backup(station.session, station.window);
  station.window.run.log.DiskBackUp = true;
  backup.InitLocalBU();
  BareBackup bare(station.folder.Path());
  StripChart bareChart;
  bareChart.SetChannelCount(kBenchChannels);
  int stored = 0;
  int bareStored = 0;
  bool bareFailed = false;
  RunSideBySide(
      state, kSamplesARound,
      [&] {
        return SecondsOf([&] {
          for (int i = 0; i < kSamplesARound; ++i) {
            StoreSample(station.window.chart, stored++);
            backup.LocalBackUp();
          }
        });
      },
      [&] {
        return SecondsOf([&] {
          for (int i = 0; i < kSamplesARound; ++i, ++bareStored) {
            StoreSample(bareChart, bareStored);
            if (!bare.Append(StampOf(bareStored), ValuesOf(bareStored))) bareFailed = true;
          }
        });
      });
  if (bareFailed || !backup.IsComplete()) state.SkipWithError("the disk refused");
}
BENCHMARK(BackupOfASample)->Iterations(Rounds(41))->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarvolt::bench

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
