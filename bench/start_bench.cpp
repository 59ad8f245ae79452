// SPDX-License-Identifier: GPL-3.0-or-later
// The way from the start of the recorder to an armed run, with a real data source on this machine.

#include <arpa/inet.h>
#include <benchmark/benchmark.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <string>

#include "child_program.h"
#include "core/form_main.h"
#include "real_station.h"
#include "side_by_side.h"
#include "text/number.h"

namespace tarvolt::bench {
namespace {

constexpr std::chrono::milliseconds kSourceForgets{20};
constexpr std::chrono::milliseconds kConnected{200};

void Pause(std::chrono::milliseconds span) {
  ::poll(nullptr, 0, static_cast<int>(span.count()));
}

/// The data source, running in a process of its own on a free port.
class RunningSource {
 public:
  RunningSource() : program_({"tv-uds", "--port", "0", "--channels", "8"}) {
    const std::string line = program_.WaitForOutput("listening on 127.0.0.1 port ");
    port_ = ValLong(line);
  }

  std::int32_t Port() const { return port_; }

  /// It serves one recorder at a time: gives it a moment to notice that the last has gone.
  static void LetGo() { Pause(kSourceForgets); }

 private:
  ChildProgram program_;
  std::int32_t port_ = 0;
};

/// Connects, asks for the status and reads until it has come.
bool BareExchange(std::int32_t port) {
  const int fd = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  const std::string question = "INIT\xFFPOLL\xFFSTAT\xFF";
  std::string answer;
  if (::connect(fd, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
      ::send(fd, question.data(), question.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(question.size())) {
    std::array<char, 256> bytes;
    for (ssize_t got = 1; got > 0 && answer.find("^^1001") == std::string::npos && answer.size() < 4096;) {
      got = ::recv(fd, bytes.data(), bytes.size(), 0);
      answer.append(bytes.data(), static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
    }
  }
  ::close(fd);
  return answer.find("^^1001") != std::string::npos;
}

std::vector<std::pair<std::string, std::string>> SettingsOfTheRun(std::int32_t port) {
  std::vector<std::pair<std::string, std::string>> settings = {{"UDSip", "127.0.0.1"},
                                                               {"UDSport", NumberText(std::int64_t{port})},
                                                               {"StartUDS", "False"},
                                                               {"DiskBackUp", "True"}};
  for (int channel = 0; channel < kBenchChannels; ++channel) {
    settings.emplace_back("Dsrc" + NumberText(std::int64_t{channel}), NumberText(std::int64_t{20 + channel}));
  }
  return settings;
}

/// The start of the recorder in a home, up to the armed run, and its end.
double SecondsToArmed(const std::filesystem::path& home, std::int32_t port, bool& good) {
  const auto machine = MakeSilentHost();
  Session session(machine->host, home);
  session.overrides = SettingsOfTheRun(port);
  Person nobody;
  FormMain form(session, nobody);
  const double seconds = SecondsOf([&] {
    form.Form_Load("");
    form.StartChart("");
  });
  good = form.Window().run.chartState() == ChartState::Armed && good;
  form.Form_Unload();
  RunningSource::LetGo();
  return seconds;
}

double SecondsOfExchange(std::int32_t port, bool& good) {
  const double seconds = SecondsOf([&] { good = BareExchange(port) && good; });
  RunningSource::LetGo();
  return seconds;
}

// From the loading of the settings to the armed run, in a home that has been used before; beside a bare exchange with
// the same source.
void FormLoadToArmed(benchmark::State& state) {
  const RunningSource source;
  const TemporaryFolder home;
  bool good = source.Port() > 0;
  SecondsToArmed(home.Path(), source.Port(), good);
  RunSideBySide(
      state, 1, [&] { return SecondsToArmed(home.Path(), source.Port(), good); },
      [&] { return SecondsOfExchange(source.Port(), good); });
  if (!good) state.SkipWithError("a run was not armed, or the source did not answer");
}
BENCHMARK(FormLoadToArmed)->Iterations(Rounds(21))->UseManualTime()->Unit(benchmark::kMillisecond);

// The same at the first use of a station, when its folders and its settings are made.
void FirstUseToArmed(benchmark::State& state) {
  const RunningSource source;
  bool good = source.Port() > 0;
  RunSideBySide(
      state, 1,
      [&] {
        const TemporaryFolder home;
        return SecondsToArmed(home.Path(), source.Port(), good);
      },
      [&] { return SecondsOfExchange(source.Port(), good); });
  if (!good) state.SkipWithError("a run was not armed, or the source did not answer");
}
BENCHMARK(FirstUseToArmed)->Iterations(Rounds(21))->UseManualTime()->Unit(benchmark::kMillisecond);

double SecondsToRecording(const std::filesystem::path& home, std::int32_t port, bool& good) {
  std::vector<std::string> words = {"tarvoltd", "--home", home.string(), "--start"};
  for (const auto& [key, value] : SettingsOfTheRun(port)) words.insert(words.end(), {"--set", key + "=" + value});
  ChildProgram program;
  const double seconds = SecondsOf([&] {
    program.Start(words);
    good = !program.WaitForOutput("Chart Started").empty() && good;
  });
  Pause(kConnected);  // a station told to end before its source has answered has failed to start
  good = program.EndsWell() && good;
  RunningSource::LetGo();
  return seconds;
}

// As a person has it, from the start of the process to its word that the chart has started; beside a process that tells
// its version and ends.
void ProcessToChartStarted(benchmark::State& state) {
  const RunningSource source;
  const TemporaryFolder home;
  bool good = source.Port() > 0;
  SecondsToRecording(home.Path(), source.Port(), good);
  RunSideBySide(
      state, 1, [&] { return SecondsToRecording(home.Path(), source.Port(), good); },
      [&] {
        ChildProgram program;
        return SecondsOf([&] {
          program.Start({"tarvoltd", "--version"});
          good = !program.WaitForOutput("tarvoltd").empty() && good;
        });
      });
  if (!good) state.SkipWithError("the station did not start or did not end well");
}
BENCHMARK(ProcessToChartStarted)->Iterations(Rounds(21))->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarvolt::bench

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
