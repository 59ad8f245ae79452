#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <csignal>

#include "apps/station.h"
#include "host/wav_bytes.h"
#include "text/number.h"

namespace tarvolt {
namespace {

constexpr int kRate = 44100;
constexpr int kFramesOfBuffer = 441;  // ten milliseconds

/// A second of sound in which each buffer is louder than the one before.
std::vector<std::int16_t> MadeUpSound(int buffers) {
  std::vector<std::int16_t> samples;
  for (int i = 0; i < buffers * kFramesOfBuffer; ++i) {
    const double loudness = 100 + 20.0 * (i / kFramesOfBuffer);
    samples.push_back(static_cast<std::int16_t>(std::lround(loudness * std::sin(i * 0.37))));
    samples.push_back(static_cast<std::int16_t>(std::lround(-3 * loudness * std::sin(i * 0.91 + 1))));
  }
  return samples;
}

/// Peak, Average and Power of the left side of a buffer, from what the words mean.
std::vector<double> ReadingsOf(const std::vector<std::int16_t>& samples, int buffer, double factor) {
  constexpr int kFramesOfBlock = 44;  // a tenth of 882 samples are 88
  const auto left = [&](int frame) { return std::fabs(samples[2 * (buffer * kFramesOfBuffer + frame)]); };
  double peaks = 0;
  for (int block = 0; block < 10; ++block) {
    double high = 0;
    for (int i = 0; i < kFramesOfBlock; ++i) high = std::fmax(high, left(block * kFramesOfBlock + i));
    peaks += high / 10;
  }
  double mean = 0;
  double square = 0;
  for (int i = 0; i < kFramesOfBuffer; ++i) {
    mean += left(i) / kFramesOfBuffer;
    square += left(i) * left(i) / kFramesOfBuffer;
  }
  return {peaks, mean, square / factor};
}

std::vector<std::string> Listening(const std::string& input, const std::vector<std::string>& more) {
  std::vector<std::string> arguments = {"--start"};
  for (const char* setting : {"Dsrc0=1", "Dsrc1=1", "Dsrc2=1", "Detection0=1", "Detection1=2", "Detection2=3",
                              "PwrMultiL=250", "PromptBeforeSaving=False"}) {
    arguments.insert(arguments.end(), {"--set", setting});
  }
  arguments.insert(arguments.end(), {"--set", "SoundCardName=" + input});
  for (const std::string& setting : more) arguments.insert(arguments.end(), {"--set", setting});
  return arguments;
}

TEST(StationSound, AFileIsDetectedBufferByBuffer) {
  const Home home;
  const std::vector<std::int16_t> sound = MadeUpSound(150);
  const std::string file = home.Write("observation.wav", WavBytes(sound, kRate, 2)).string();
  RunningStation station(
      home, Listening("fastfile:" + file, {"TimerType=1", "SampleRate=10", "NoTimeStamps=True", "DiskBackUp=True"}));
  EXPECT_EQ(station.ExitStatus(), 0) << station.Output();
  EXPECT_TRUE(station.Printed("The sound input has come to its end.")) << station.Output();
  const Recorded recorded = ReadRecorded(home.DataFile());
  const auto count = static_cast<int>(recorded.samples.size());
  ASSERT_GE(count, 100) << station.Output();
  const int skipped = 150 - count;  // heard before the run was armed, and the one that began it
  ASSERT_GE(skipped, 1);
  for (int i = 0; i < count; ++i) {
    const std::vector<double> expected = ReadingsOf(sound, skipped + i, 250);
    for (int channel = 0; channel < 3; ++channel) {
      EXPECT_NEAR(recorded.samples[i][channel], expected[channel], 1e-6 * expected[channel]) << i << " " << channel;
    }
  }
}

TEST(StationSound, AFileIsPlayedInRealTime) {
  const Home home;
  const std::string file = home.Write("loop.wav", WavBytes(MadeUpSound(100), kRate, 2)).string();
  RunningStation station(home, Listening("loop:" + file, {"TimerType=1", "SampleRate=50"}));
  ASSERT_TRUE(station.WaitFor("Chart Started")) << station.Output();
  const auto begin = std::chrono::steady_clock::now();
  ASSERT_TRUE(WaitUntil([&] { return std::chrono::steady_clock::now() - begin > std::chrono::seconds(3); }));
  station.Signal(SIGTERM);
  EXPECT_EQ(station.ExitStatus(), 0) << station.Output();
  const Recorded recorded = ReadRecorded(home.DataFile());
  ASSERT_GT(recorded.times.size(), 40U);
  EXPECT_LT(recorded.times.size(), 62U);
  const double span = (recorded.times.back() - recorded.times.front()) * 86400;
  EXPECT_NEAR(span / static_cast<double>(recorded.times.size() - 1), 0.05, 0.01);
}

TEST(StationSound, TheListTellsThatThereIsNoInput) {
  RunningProgram list("tarvoltd", {"--list-sound"}, {"PULSE_SERVER=", "XDG_RUNTIME_DIR=/nowhere"});
  EXPECT_EQ(list.ExitStatus(), 0);
  if (!std::filesystem::exists("/proc/asound/cards")) {
    EXPECT_EQ(list.Output(), "None Available\n");
  }
}

TEST(StationSound, AMissingFileIsRefusedAndNothingElseIsRecorded) {
  const Home home;
  RunningStation station(home, Listening("file:/nowhere/at/all.wav", {}));
  EXPECT_EQ(station.ExitStatus(), 1);
  EXPECT_TRUE(station.Printed("The sound input file:/nowhere/at/all.wav cannot be opened")) << station.Output();
  EXPECT_TRUE(home.DataFiles().empty());
}

}  // namespace
}  // namespace tarvolt
