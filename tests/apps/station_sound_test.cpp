// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cmath>

#include "apps/sound_readings.h"
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

TEST(StationSound, AFileIsDetectedBufferByBuffer) {
  const Home home;
  const std::vector<std::int16_t> sound = MadeUpSound(150);
  const std::string file = home.Write("observation.wav", WavBytes(sound, kRate, 2)).string();
  RunningStation station(
      home, Starting({"Dsrc0=1", "Dsrc1=1", "Dsrc2=1", "Detection0=1", "Detection1=2", "Detection2=3", "PwrMultiL=250",
                      "PromptBeforeSaving=False", "SoundCardName=fastfile:" + file, "TimerType=1", "SampleRate=10",
                      "NoTimeStamps=True", "DiskBackUp=True"}));
  EXPECT_EQ(station.ExitStatus(), 0) << station.Output();
  EXPECT_TRUE(station.Printed("The sound input has come to its end.")) << station.Output();
  const Recorded recorded = ReadRecorded(home.DataFile());
  const auto count = static_cast<int>(recorded.samples.size());
  ASSERT_GE(count, 100) << station.Output();
  const int skipped = 150 - count;  // heard before the run was armed, and the one that began it
  ASSERT_GE(skipped, 1);
  for (int i = 0; i < count; ++i) {
    const std::vector<double> expected = ReadingsOf(sound, 0, (skipped + i) * kFramesOfBuffer, kFramesOfBuffer, 250);
    for (int channel = 0; channel < 3; ++channel) {
      EXPECT_NEAR(recorded.samples[i][channel], expected[channel], 1e-6 * expected[channel]) << i << " " << channel;
    }
  }
}

TEST(StationSound, TheListTellsThatThereIsNoInput) {
  RunningProgram list("tarvoltd", {"--list-sound"}, {"PULSE_SERVER=", "XDG_RUNTIME_DIR=/nowhere"});
  EXPECT_EQ(list.ExitStatus(), 0);
  if (!std::filesystem::exists("/proc/asound/cards")) {
    EXPECT_EQ(list.Output(), "None Available\n");
  }
}

}  // namespace
}  // namespace tarvolt
