// SPDX-License-Identifier: GPL-3.0-or-later
// The whole way of real sound: a sound server of the test's own plays a tone, and the station captures it through ALSA.

#include <gtest/gtest.h>
#include <unistd.h>

#include <cmath>
#include <csignal>
#include <fstream>
#include <numbers>

#include "apps/sound_readings.h"
#include "apps/station.h"
#include "host/temp_folder.h"
#include "host/wav_bytes.h"

namespace tarvolt {
namespace {

constexpr const char* kServer = "/usr/bin/pulseaudio";
constexpr const char* kPlayer = "/usr/bin/paplay";
constexpr int kRate = 44100;
constexpr int kFramesOfBuffer = 4410;  // a tenth of a second

/// A period of it is 98 frames on the left and 49 on the right, and a tenth of a buffer holds whole numbers of both:
/// its readings are the same wherever a buffer begins.
std::vector<std::int16_t> Tone(int seconds) {
  std::vector<std::int16_t> samples;
  for (int i = 0; i < seconds * kRate; ++i) {
    const double turn = 2 * std::numbers::pi * i / 98;
    samples.push_back(static_cast<std::int16_t>(std::lround(8000 * std::sin(turn))));
    samples.push_back(static_cast<std::int16_t>(std::lround(3000 * std::sin(2 * turn))));
  }
  return samples;
}

/// A sound server with one output that plays into nothing, and its monitor as the input of everyone.
class SoundServer {
 public:
  SoundServer()
      : server_(kServer,
                {"-n", "-F", Script(), "--daemonize=no", "--use-pid-file=no", "--exit-idle-time=-1",
                 "--disable-shm=yes", "--realtime=no", "--high-priority=no"},
                Variables()) {}

  std::vector<std::string> Variables() const {
    return {"HOME=" + folder_.Path().string(), "XDG_RUNTIME_DIR=" + folder_.Path().string(),
            "PULSE_SERVER=unix:" + socket_};
  }

  bool IsUp() const {
    return WaitUntil([&] { return std::filesystem::exists(socket_); });
  }

  void Signal(int signal) const { server_.Signal(signal); }

 private:
  std::string Script() const {
    std::filesystem::permissions(folder_.Path(), std::filesystem::perms::owner_all);
    const std::string path = (folder_.Path() / "server.pa").string();
    std::ofstream(path) << "load-module module-null-sink sink_name=rec rate=44100 format=s16le channels=2 norewinds=1\n"
                           "load-module module-native-protocol-unix auth-anonymous=1 socket="
                        << socket_ << "\nset-default-sink rec\nset-default-source rec.monitor\n";
    return path;
  }

  const TempFolder folder_;  // its name is plain, as the server's own words need it
  const std::string socket_ = (folder_.Path() / "socket").string();
  RunningProgram server_;
};

int AgreeingSamples(const Recorded& recorded, const std::vector<double>& expected) {
  int agreeing = 0;
  for (const std::vector<double>& sample : recorded.samples) {
    bool agrees = true;
    for (std::size_t i = 0; i < expected.size(); ++i) {
      agrees = agrees && std::fabs(sample[i] - expected[i]) <= 1e-6 * expected[i];
    }
    if (agrees) ++agreeing;
  }
  return agreeing;
}

TEST(StationSoundServer, ALiveToneIsMeasuredAndAServerThatHangsIsOutlived) {
  if (access(kServer, X_OK) != 0 || access(kPlayer, X_OK) != 0) GTEST_SKIP() << "no sound server to start";
  const Home home;
  const std::vector<std::int16_t> tone = Tone(20);
  const SoundServer server;
  ASSERT_TRUE(server.IsUp());
  RunningProgram list("tarvoltd", {"--list-sound"}, server.Variables());
  EXPECT_EQ(list.ExitStatus(), 0);
  EXPECT_TRUE(list.Output().starts_with("default: Sound server\n     0  44100 Hz 16 Bit Stereo\n")) << list.Output();
  const std::vector<std::string> arguments =
      Starting({"Dsrc0=1", "Dsrc1=1", "Dsrc2=1", "Dsrc3=2", "Dsrc4=2", "Dsrc5=2", "Detection0=1", "Detection1=2",
                "Detection2=3", "Detection3=1", "Detection4=2", "Detection5=3", "PwrMultiL=250", "PwrMultiR=40",
                "TimerType=1", "SampleRate=100", "NoTimeStamps=True", "PromptBeforeSaving=False"});
  RunningStation station(home, arguments, server.Variables());
  ASSERT_TRUE(station.WaitFor("Sound input: default: Sound server")) << station.Output();
  ASSERT_TRUE(station.WaitFor("Chart Started")) << station.Output();
  const RunningProgram player(kPlayer, {home.Write("tone.wav", WavBytes(tone, kRate, 2)).string()}, server.Variables());
  const auto waitOut = [](std::chrono::milliseconds time) {
    const auto until = std::chrono::steady_clock::now() + time;
    WaitUntil([&] { return std::chrono::steady_clock::now() > until; });
  };
  waitOut(std::chrono::milliseconds(3000));
  server.Signal(SIGSTOP);
  EXPECT_TRUE(station.WaitFor("was lost: it delivers nothing. The run goes on without it.")) << station.Output();
  waitOut(std::chrono::milliseconds(3000));  // it is looked for meanwhile
  server.Signal(SIGCONT);
  EXPECT_TRUE(station.WaitFor("Sound is back from default: Sound server. The gap is ")) << station.Output();
  waitOut(std::chrono::milliseconds(2000));
  server.Signal(SIGSTOP);
  waitOut(std::chrono::milliseconds(5000));
  station.Signal(SIGTERM);
  EXPECT_EQ(station.ExitStatus(), 0) << "it saves while the server hangs\n" << station.Output();

  std::vector<double> expected = ReadingsOf(tone, 0, 0, kFramesOfBuffer, 250);
  const std::vector<double> right = ReadingsOf(tone, 1, 0, kFramesOfBuffer, 40);
  expected.insert(expected.end(), right.begin(), right.end());
  const Recorded recorded = ReadRecorded(home.DataFile());
  EXPECT_GE(AgreeingSamples(recorded, expected), 30) << recorded.samples.size() << " samples\n" << station.Output();
}

}  // namespace
}  // namespace tarvolt
