// SPDX-License-Identifier: GPL-3.0-or-later
// What one finished sample of eight channels costs: its way through the pipeline, the reading of its messages, and the
// whole road on the simulated machine.

#include <benchmark/benchmark.h>

#include <charconv>
#include <cstdint>
#include <string>
#include <vector>

#include "core/form_main.h"
#include "core/run/chart_run.h"
#include "core/run/sample_pipeline.h"
#include "sample_values.h"
#include "side_by_side.h"
#include "sim/sim_host.h"
#include "sim/uds_peer.h"
#include "sources/uds_dispatch.h"
#include "text/number.h"
#include "weightless_disk.h"

namespace tarvolt::bench {
namespace {

constexpr std::uint64_t kSeed = 1;
constexpr WallTime kSwitchedOn{2010, 1, 2, 12, 0, 0, 0};
constexpr int kSamplesARound = 100'000;
constexpr int kRoadSamples = 20'000;
constexpr std::chrono::milliseconds kPeriod{10};
constexpr const char* kHome = "/home/station";

void Configure(Session& session, bool diskBackUp) {
  std::error_code error;
  session.host.files.MakeFolders(std::string(kHome) + "/Data", error);
  for (int channel = 0; channel < kBenchChannels; ++channel) {
    session.overrides.emplace_back("Dsrc" + NumberText(std::int64_t{channel}), NumberText(std::int64_t{20 + channel}));
  }
  session.overrides.emplace_back("UDSpush", "True");
  session.overrides.emplace_back("UDSip", "127.0.0.1");
  session.overrides.emplace_back("UDSport", NumberText(std::int64_t{UdsPeer::kDefaultPort}));
  session.overrides.emplace_back("MaxDuration", "24000");
  session.overrides.emplace_back("DiskBackUp", diskBackUp ? "True" : "False");
  session.overrides.emplace_back("AutoSaveStandAlone", "False");
  session.overrides.emplace_back("ShowMsgBox", "False");
  LoadRegistrySettings(session.store, session.overrides, kHome, session.settings);
}

/// Hands the verbs of a run on to a ChartRun that is made after it.
class Verbs final : public RunControl {
 public:
  void StartChart(const std::string& profile) override { run->StartChart(profile); }
  void StopChart() override { run->StopChart(); }
  void MaxedOut(MaxedOutMode mode) override {
    ++turnovers;
    run->MaxedOut(mode);
  }
  void ProcessCmd(std::string_view) override {}

  ChartRun* run = nullptr;
  int turnovers = 0;
};

std::vector<double> PeerValues(std::int64_t set) {
  const Values values = ValuesOf(set);
  return {values.begin(), values.end()};
}

/// A run in progress on the simulated machine, with the pipeline in reach. What is appended to the backup goes to a
/// disk that costs nothing.
class PipelineRig {
 public:
  explicit PipelineRig(bool diskBackUp) {
    Configure(session_, diskBackUp);
    verbs_.run = &chartRun_;
    recorder_.LoTime1 = machine_.loop.MakeTimer([] {});
    recorder_.TimerKeepAlive = machine_.loop.MakeTimer([] {});
    source_.Channels(kBenchChannels).PushesEvery(std::chrono::hours(1));
    chartRun_.StartChart("");
    recorder_.uds.Close();  // the samples come from here
  }

  bool Armed() const { return recorder_.window.run.ChartRunning(); }
  bool HoldsAll() const { return verbs_.turnovers == 0 && recorder_.window.chart.Count() == taken_; }
  bool BackupHoldsAll() const { return recorder_.backup.IsComplete() && disk_.Appended() > 0; }

  /// Empties the store as a new log does.
  void StartLog() {
    recorder_.window.chart.ClearData();
    recorder_.backup.StoreWasCleared();
    recorder_.window.run.Dcount = 0;
    recorder_.window.run.LastStamp = 0;
    taken_ = 0;
  }

  void TakeSamples(int count) {
    for (int i = 0; i < count; ++i, ++taken_) {
      recorder_.window.run.ChannelSum = ValuesOf(taken_);
      pipeline_.GetAllData(StampOf(taken_));
    }
  }

 private:
  SimHost machine_{kSeed, kSwitchedOn};
  WeightlessDisk disk_{machine_.disk, "localdatabackup.tvd"};
  UdsPeer source_{machine_.loop, machine_.network};
  Session session_{{machine_.clock, machine_.loop, machine_.network, disk_, machine_.processes, machine_.dialogs,
                    machine_.sound, machine_.mixer},
                   kHome};
  Verbs verbs_;
  Person nobody_;
  Recorder recorder_{session_, verbs_, nobody_, [](std::optional<TimeStamp>) {}};
  ChartRun chartRun_{recorder_};
  SamplePipeline pipeline_{recorder_};
  std::int32_t taken_ = 0;
};

/// Plain columns that were given their room beforehand.
struct PlainColumns {
  void Store(std::int32_t index) {
    times[index] = StampOf(index);
    const Values sample = ValuesOf(index);
    for (int channel = 0; channel < kBenchChannels; ++channel) values[channel][index] = sample[channel];
  }

  std::vector<double> times = std::vector<double>(kSamplesARound);
  std::vector<std::vector<double>> values{kBenchChannels, std::vector<double>(kSamplesARound)};
};

void Pipeline(benchmark::State& state, bool diskBackUp) {
  PipelineRig rig(diskBackUp);
  PlainColumns plain;
  bool good = rig.Armed();
  RunSideBySide(
      state, kSamplesARound,
      [&] {
        rig.StartLog();
        const double seconds = SecondsOf([&] { rig.TakeSamples(kSamplesARound); });
        good = rig.HoldsAll() && (!diskBackUp || rig.BackupHoldsAll()) && good;
        return seconds;
      },
      [&] {
        const double seconds = SecondsOf([&] {
          for (std::int32_t i = 0; i < kSamplesARound; ++i) plain.Store(i);
        });
        benchmark::DoNotOptimize(plain.values.data());
        return seconds;
      });
  if (!good) state.SkipWithError("samples were lost");
}
BENCHMARK_CAPTURE(Pipeline, WithoutBackup, false)
    ->Iterations(Rounds(31))
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Pipeline, WithBackup, true)->Iterations(Rounds(31))->UseManualTime()->Unit(benchmark::kMillisecond);

std::vector<std::string> MessagesOfASet() {
  std::vector<std::string> messages;
  const Values values = ValuesOf(12345);
  for (int channel = 0; channel < kBenchChannels; ++channel)
    messages.push_back("#" + NumberText(std::int64_t{channel}) + NumberText(values[channel]));
  messages.emplace_back("^^3001");
  return messages;
}

// Eight values and the end of the set, beside nothing but the reading of the eight numbers.
void MessagesOfASample(benchmark::State& state) {
  SimHost machine(kSeed, kSwitchedOn);
  Session session(machine.Record(), kHome);
  Configure(session, false);
  ChartWindow window;
  window.run.plan = PlanOfRun(session.settings);
  window.run.phase = RunPhase::Running;
  Verbs verbs;
  std::int64_t sets = 0;
  SoundInput sound(session, window);
  UdsDispatch dispatch(
      session, window, verbs, sound, [&](std::optional<TimeStamp>) { ++sets; }, [](std::string_view) {});
  dispatch.BeginLink();
  const std::vector<std::string> messages = MessagesOfASet();
  Values bareSums{};
  RunSideBySide(
      state, kSamplesARound,
      [&] {
        return SecondsOf([&] {
          for (int i = 0; i < kSamplesARound; ++i) {
            for (const std::string& message : messages) dispatch.Act(message);
          }
        });
      },
      [&] {
        return SecondsOf([&] {
          for (int i = 0; i < kSamplesARound; ++i) {
            for (int channel = 0; channel < kBenchChannels; ++channel) {
              const std::string& message = messages[channel];
              double value = 0;
              std::from_chars(message.data() + 2, message.data() + message.size(), value);
              bareSums[channel] += value;
            }
          }
        });
      });
  benchmark::DoNotOptimize(bareSums);
  if (sets == 0 || dispatch.TakeSet()[0] == 0) state.SkipWithError("the messages were not acted on");
}
BENCHMARK(MessagesOfASample)->Iterations(Rounds(31))->UseManualTime()->Unit(benchmark::kMillisecond);

/// A simulated machine with a source that pushes a set each period to whoever connects.
struct SourceRig {
  SourceRig() { source.Channels(kBenchChannels).Measures(PeerValues).PushesEvery(kPeriod); }

  SimHost machine{kSeed, kSwitchedOn};
  UdsPeer source{machine.loop, machine.network};
};

/// The whole recorder on it.
class RecorderRig : SourceRig {
 public:
  explicit RecorderRig(bool diskBackUp) {
    Configure(session_, diskBackUp);
    form_.Form_Load("");
    form_.StartChart("");
  }
  ~RecorderRig() { form_.Form_Unload(); }

  void TakeSamples(int count) {
    const std::int32_t wanted = Stored() + count;
    machine.loop.RunUntil([&] { return Stored() >= wanted; }, kPeriod * 2 * count);
  }
  std::int32_t Stored() const { return form_.Window().chart.Count(); }

 private:
  Session session_{machine.Record(), kHome};
  Person nobody_;
  FormMain form_{session_, nobody_};
};

/// A socket that reads and forgets: what is left is the simulation.
class ReaderRig : SourceRig {
 public:
  ReaderRig() {
    socket_->onConnected = [this] { socket_->Write("PUSH\xFFSTAT\xFF"); };
    socket_->onDataArrival = [this] { bytes_ += socket_->ReadAvailable().size(); };
    socket_->Connect("127.0.0.1", UdsPeer::kDefaultPort);
  }
  ~ReaderRig() { socket_->Disconnect(); }

  void TakeSamples(int count) {
    const std::int64_t wanted = source.SetsSent() + count;
    machine.loop.RunUntil([&] { return source.SetsSent() >= wanted; }, kPeriod * 2 * count);
  }
  std::size_t BytesRead() const { return bytes_; }

 private:
  std::unique_ptr<SocketControl> socket_ = machine.network.MakeSocket();
  std::size_t bytes_ = 0;
};

// The whole road from the source to the store and the backup, beside the same simulation with nobody but a reader in
// it: bare over work is the simulator's share.
void WholeRoad(benchmark::State& state, bool diskBackUp) {
  RecorderRig recorder(diskBackUp);
  ReaderRig reader;
  RunSideBySide(
      state, kRoadSamples, [&] { return SecondsOf([&] { recorder.TakeSamples(kRoadSamples); }); },
      [&] { return SecondsOf([&] { reader.TakeSamples(kRoadSamples); }); });
  const auto rounds = static_cast<std::int32_t>(state.iterations());
  if (recorder.Stored() < rounds * kRoadSamples || reader.BytesRead() == 0) state.SkipWithError("samples were lost");
}
BENCHMARK_CAPTURE(WholeRoad, WithoutBackup, false)
    ->Iterations(Rounds(21))
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(WholeRoad, WithBackup, true)->Iterations(Rounds(21))->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarvolt::bench

BENCHMARK_MAIN();
