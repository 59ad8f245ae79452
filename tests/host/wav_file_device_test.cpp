// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/wav_file_device.h"

#include <gtest/gtest.h>

#include "host/wav_bytes.h"
#include "sim/sim_host.h"

namespace tarvolt {
namespace {

using namespace std::chrono_literals;

constexpr WaveFormat kFormat{1000, 16, true};

std::vector<std::int16_t> RampOf(int frames) {
  std::vector<std::int16_t> samples;
  for (int i = 0; i < frames; ++i) samples.insert(samples.end(), {static_cast<std::int16_t>(i), 7});
  return samples;
}

class WavDevice : public ::testing::Test {
 protected:
  WavDevice() { host.disk.Put("/a.wav", WavBytes(RampOf(1000), 1000, 2)); }

  bool Play(WavPlay play, int frames = 30) {
    device.emplace(host.loop, host.clock, host.disk, WavFileName{play, "/a.wav"});
    device->onBuffer = [this](WaveHandle handle) {
      std::vector<std::int16_t> samples(device->ParseWaveHeader(handle) / 2);
      EXPECT_EQ(device->CopyWaveHeader(handle, samples.data(), 1 << 20), samples.size() * 2);
      firsts.push_back(samples.at(0));
      sizes.push_back(static_cast<int>(samples.size() * 2));
      if (whileTaken) whileTaken();
    };
    device->onEnded = [this] { ended = true; };
    if (!device->Open(kFormat, {frames * 4, 20}, why)) return false;
    device->Start();
    return true;
  }

  SimHost host{1};
  std::optional<WavFileDevice> device;
  std::function<void()> whileTaken;
  std::vector<int> firsts;
  std::vector<int> sizes;
  std::string why;
  bool ended = false;
};

TEST_F(WavDevice, PlaysInRealTimeAndEnds) {
  ASSERT_TRUE(Play(WavPlay::Once)) << why;
  host.loop.RunFor(29ms);
  EXPECT_TRUE(firsts.empty());
  host.loop.RunFor(571ms);
  EXPECT_EQ(firsts.size(), 20u);
  EXPECT_FALSE(ended);
  host.loop.RunFor(2s);
  EXPECT_TRUE(ended);
  ASSERT_EQ(firsts.size(), 33u) << "what fills no buffer is left out";
  for (int i = 0; i < 33; ++i) EXPECT_EQ(firsts[i], 30 * i);
  for (const int size : sizes) EXPECT_EQ(size, 120);
}

TEST_F(WavDevice, ALoopHasNoGapAtItsSeam) {
  ASSERT_TRUE(Play(WavPlay::Loop)) << why;
  host.loop.RunFor(10s);
  ASSERT_GE(firsts.size(), 333u);
  for (int i = 0; i < 333; ++i) EXPECT_EQ(firsts[i], 30 * i % 1000);
  EXPECT_FALSE(ended);
}

TEST_F(WavDevice, APauseLosesNothingAndAStopBeginsAnew) {
  ASSERT_TRUE(Play(WavPlay::Once));
  host.loop.RunFor(100ms);
  device->Pause();
  host.loop.RunFor(5s);
  EXPECT_EQ(firsts.size(), 3u);
  device->Restart();
  host.loop.RunFor(31ms);
  EXPECT_EQ(firsts.back(), 90);
  device->Stop();
  device->Start();
  host.loop.RunFor(31ms);
  EXPECT_EQ(firsts.back(), 0);
}

TEST_F(WavDevice, ABufferTellsHowLongItHasWaited) {
  std::vector<double> waited;
  whileTaken = [&] {
    waited.push_back(device->Waited(nullptr));
    if (firsts.size() == 3) host.clock.AdvanceTo(host.clock.Now() + 100);
  };
  ASSERT_TRUE(Play(WavPlay::Once));
  host.loop.RunFor(1s);
  ASSERT_GT(waited.size(), 9u);
  EXPECT_EQ(std::vector<double>(waited.begin(), waited.begin() + 7), (std::vector<double>{0, 0, 0, 70, 40, 10, 0}));
}

TEST_F(WavDevice, WhatFallsDueWhileAHandlerYieldsIsDeliveredInsideIt) {
  for (const WavPlay play : {WavPlay::Once, WavPlay::Loop}) {
    firsts.clear();
    bool busy = false;
    whileTaken = [&] {
      if (firsts.size() > 40 || std::exchange(busy, true)) return;
      EXPECT_LE(device->Waited(nullptr), 6) << "nothing piles up";
      host.loop.RunFor(45ms);
      busy = false;
    };
    ASSERT_TRUE(Play(play));
    host.loop.RunFor(900ms);
    ASSERT_GE(firsts.size(), 29u);
    for (std::size_t i = 0; i < firsts.size(); ++i) EXPECT_EQ(firsts[i], static_cast<int>(30 * i));
  }
}

TEST_F(WavDevice, MayBeClosedAndDestroyedWhileABufferIsTaken) {
  for (const WavPlay play : {WavPlay::Once, WavPlay::Fast}) {
    firsts.clear();
    whileTaken = [this] {
      if (firsts.size() < 2) return;
      device->Close();
      device.reset();
    };
    ASSERT_TRUE(Play(play));
    host.loop.RunFor(1s);
    EXPECT_EQ(firsts.size(), 2u);
  }
}

TEST_F(WavDevice, WhatCannotBePlayedIsRefusedWithItsReason) {
  const std::string format = FormatChunk(1, 2, 1000, 16);
  const std::string data = Chunk("data", Samples16(RampOf(100)));
  const std::pair<std::string, const char*> cases[] = {
      {"RIFX", "it is no wave file"},
      {Riff(format), "it is not a whole wave file"},
      {Riff(data), "it is not a whole wave file"},
      {Riff(FormatChunk(3, 2, 1000, 16) + data), "it does not hold plain samples of 8 or 16 bits, mono or stereo"},
      {Riff(FormatChunk(1, 0, 1000, 16) + data), "it does not hold plain samples of 8 or 16 bits, mono or stereo"},
      {Riff(FormatChunk(1, 2, 0, 16) + data), "it does not hold plain samples of 8 or 16 bits, mono or stereo"},
      {Riff(FormatChunk(1, 1, 1000, 16) + data), "the file has another format"},
      {Riff(format + Chunk("data", Samples16(RampOf(29)))), "the file is shorter than one sound buffer"}};
  for (const auto& [bytes, reason] : cases) {
    host.disk.Put("/a.wav", bytes);
    EXPECT_FALSE(Play(WavPlay::Once)) << reason;
    EXPECT_EQ(why, reason);
  }
}

TEST_F(WavDevice, UnknownChunksAndWrongLengthsArePassedOver) {
  std::string cut = Riff(Chunk("LIST", "odd") + FormatChunk(1, 2, 1000, 16)) + "data";
  AddNumber(cut, 0xFFFFFFFF, 4);
  host.disk.Put("/a.wav", cut + Samples16(RampOf(90)) + "x");
  ASSERT_TRUE(Play(WavPlay::Fast)) << why;
  host.loop.RunFor(1ms);
  EXPECT_TRUE(ended) << "fast takes no time";
  EXPECT_EQ(firsts, (std::vector<int>{0, 30, 60}));
}

TEST(WavFileNames, TellHowToPlay) {
  EXPECT_EQ(ReadWavFileName("file:/a b.wav")->path, "/a b.wav");
  EXPECT_EQ(ReadWavFileName("loop:x")->play, WavPlay::Loop);
  EXPECT_EQ(ReadWavFileName("fastfile:x")->play, WavPlay::Fast);
  EXPECT_FALSE(ReadWavFileName("PCH,0: file:x"));
}

}  // namespace
}  // namespace tarvolt
