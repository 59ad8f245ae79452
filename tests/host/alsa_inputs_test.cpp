// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/alsa_inputs.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "host/alsa_wave_in.h"
#include "host/block_queue.h"
#include "sim/sim_random.h"
#include "temp_folder.h"
#include "waiting.h"

namespace tarvolt {
namespace {

TEST(BlockQueue, MakesBlocksOfAnyPieces) {
  SimRandom random(3);
  BlockQueue queue(7, 1000, 1);
  std::string sent;
  std::string received;
  for (int i = 0; i < 500; ++i) {
    std::string piece(random.Below(25), '\0');
    for (char& byte : piece) byte = static_cast<char>(random.Below(256));
    sent += piece;
    queue.Put(piece.data(), piece.size(), static_cast<double>(sent.size()));
    while (random.Chance(0.5)) {
      auto block = queue.Take();
      if (!block) break;
      ASSERT_EQ(block->bytes.size(), 7u);
      EXPECT_EQ(block->heardAt, static_cast<double>(received.size() + 7)) << "a byte a millisecond";
      received.append(block->bytes.data(), block->bytes.size());
      queue.Return(std::move(*block));
    }
  }
  while (auto block = queue.Take()) received.append(block->bytes.data(), block->bytes.size());
  EXPECT_EQ(received, sent.substr(0, sent.size() / 7 * 7));
  EXPECT_EQ(queue.TakeLost(), 0);
}

TEST(BlockQueue, DropsTheNewestWhenNobodyTakesThem) {
  BlockQueue queue(2, 3, 1);
  queue.Put("aabbccddee", 10, 0);
  EXPECT_EQ(queue.TakeLost(), 2);
  EXPECT_EQ(queue.TakeLost(), 0);
  EXPECT_EQ(queue.Take()->bytes.at(0), 'a');
  queue.Put("f", 1, 0);
  queue.Clear();
  queue.Put("gh", 2, 0);
  EXPECT_EQ(queue.Ready(), 1u);
  EXPECT_EQ(queue.Take()->bytes.at(0), 'g');
}

TEST(AlsaInputs, NamesLeadToTheCardByItsId) {
  EXPECT_EQ(AlsaPcmName("PCH,0: HDA Intel, Analog"), "plughw:CARD=PCH,DEV=0");
  EXPECT_EQ(AlsaPcmName("Device_1,12: USB, Audio: Mic"), "plughw:CARD=Device_1,DEV=12");
  EXPECT_EQ(AlsaPcmName("default: Sound server"), "default");
  for (const char* none : {"", "PCH", ",0: x", "PCH,: x", "PCH,x: y", "a b,0: x", "PCH,0000: x", "hw:0,DEV=1"}) {
    EXPECT_FALSE(AlsaPcmName(none)) << none;
  }
}

TEST(AlsaWaveIn, AnInputThatIsNotThereIsRefusedWithItsReason) {
  QtEventLoop loop(*QCoreApplication::instance());
  DriverCalls drivers;
  const AlsaInputs quiet(drivers);
  for (const char* name : {"Absent,0: no card", "nonsense"}) {
    AlsaWaveIn input(loop, drivers, name);
    std::string why;
    testing::internal::CaptureStderr();
    EXPECT_FALSE(input.Open({44100, 16, true}, {1764, 5}, why)) << name;
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "") << "the library's own words";
    EXPECT_FALSE(why.empty());
    input.Start();
    input.Stop();
  }
}

// ALSA's own null device, which has frames whenever it is asked.
class NullInput : public ::testing::Test {
 protected:
  NullInput() { Configure("first", "pcm.!default { type null }\n"); }
  ~NullInput() override { unsetenv("ALSA_CONFIG_PATH"); }

  // Each in a file of its own: ALSA reads one again only when its time has changed.
  void Configure(const std::string& file, const std::string& text) {
    const std::string path = (folder_.Path() / file).string();
    std::ofstream(path) << text;
    setenv("ALSA_CONFIG_PATH", path.c_str(), 1);
  }

  TempFolder folder_;
  QtEventLoop loop{*QCoreApplication::instance()};
  DriverCalls drivers;
  AlsaWaveIn input{loop, drivers, "default: null"};
  std::string why;
};

TEST_F(NullInput, ADriverThatAlwaysHasMoreKeepsNoBufferBack) {
  int buffers = 0;
  input.onBuffer = [&](WaveHandle handle) {
    EXPECT_EQ(input.ParseWaveHeader(handle), 1764u);
    ++buffers;
  };
  ASSERT_TRUE(input.Open({44100, 16, true}, {1764, 5}, why)) << why;
  input.Start();
  EXPECT_TRUE(WaitFor(
      loop, [&] { return buffers >= 100; }, std::chrono::seconds(5)));
  input.Stop();
  const int atStop = buffers;
  RunFor(loop, std::chrono::milliseconds(50));
  EXPECT_EQ(buffers, atStop);
}

TEST_F(NullInput, AnInputThatIsGoneBetweenOpenAndStartIsLost) {
  ASSERT_TRUE(input.Open({44100, 16, true}, {1764, 5}, why)) << why;
  Configure("second", "pcm.gone { type null }\npcm.other { type null }\n");
  std::string reason;
  input.onLost = [&](const std::string& words) { reason = words; };
  input.Start();
  EXPECT_EQ(reason, "") << "never inside the call";
  EXPECT_TRUE(WaitFor(
      loop, [&] { return !reason.empty(); }, std::chrono::seconds(5)));
}

}  // namespace
}  // namespace tarvolt
