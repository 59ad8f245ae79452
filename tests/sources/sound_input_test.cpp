// SPDX-License-Identifier: GPL-3.0-or-later
#include "sources/sound/sound_input.h"

#include <gtest/gtest.h>

#include "sim/sim_host.h"

namespace tarvolt {
namespace {

using namespace std::chrono_literals;

constexpr const char* kCard = "USB,0: Receiver, Line";

TEST(SoundInput, MayBeOpenedAnewInsideTheHandOverToTheSpectrum) {
  SimHost host{7};
  Session session{host.Record(), "/station"};
  ChartWindow window;
  SoundInput input{session, window};
  host.sound.Plug(kCard, [](std::int64_t) { return std::pair(1000, -300); });
  int buffers = 0;
  input.onBuffer = [&](double) { ++buffers; };
  window.run.phase = RunPhase::Running;

  SpectrumFeed& feed = window.sound.spectrum;
  feed.SpectrumActive = true;
  feed.SpectrumSize = 64;
  feed.SpectrumBufL.resize(64);
  feed.SpectrumBufR.resize(64);
  int handOvers = 0;
  std::string why;
  feed.receive = [&](int, const auto&, const auto&) {
    if (++handOvers > 1) return;
    input.Close();
    ASSERT_TRUE(input.Open({kCard, {8000, 16, true}, {64000}, {}}, why)) << why;
    input.Start();
    host.loop.RunFor(5s);
    EXPECT_EQ(handOvers, 1) << "no pass begins inside another";
    EXPECT_TRUE(window.sound.BufferBusy);
    EXPECT_GT(window.sound.overRuns, 0) << "what came meanwhile counts as lost";
  };
  ASSERT_TRUE(input.Open({kCard, {8000, 16, true}, {3200}, {}}, why)) << why;
  input.Start();
  host.loop.RunFor(200ms);
  EXPECT_EQ(handOvers, 1);
  EXPECT_EQ(buffers, 0) << "the buffer of the first opening is no event of the second";

  window.sound.ClearAccumulators();
  host.loop.RunFor(10s);
  EXPECT_GE(buffers, 4);
  EXPECT_EQ(window.sound.SoundBufCountL, buffers);
  EXPECT_EQ(window.sound.SoundAccumL[kAverage], 1000.0 * buffers);
  EXPECT_EQ(host.sound.OpenNow(), 1);
}

}  // namespace
}  // namespace tarvolt
