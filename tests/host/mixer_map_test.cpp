// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/mixer_map.h"

#include <gtest/gtest.h>

#include "host/alsa_inputs.h"
#include "host/alsa_mixer.h"

namespace tarvolt {
namespace {

MixerElement Volume(const char* name) {
  return {name, true, false, {}};
}
MixerElement Both(const char* name) {
  return {name, true, true, {}};
}

TEST(MixerMap, ACardWithASwitchForEachInput) {
  const std::vector<MixerElement> elements = {{"Master", false, false, {}},
                                              {"PCM", false, false, {}},
                                              {"Line", false, true, {}},
                                              Both("Mic"),
                                              {"Mic Boost", false, false, {}},
                                              {"Mix", false, true, {}},
                                              Both("Capture")};
  const MixerRoutes routes = MapMixer(elements);
  EXPECT_EQ(routes[0], (MixerRoute{"Line", 6, 2})) << "its switch, and the volume that all share";
  EXPECT_EQ(routes[1], (MixerRoute{"Mic", 3, 3}));
  EXPECT_FALSE(routes[2]) << "what can only be played is no input";
  EXPECT_EQ(routes[3], (MixerRoute{"Mix", 6, 5}));
}

TEST(MixerMap, ACardThatChoosesItsInputFromAList) {
  const std::vector<MixerElement> elements = {
      Both("Capture"), {"Mic", false, false, {}}, {"Input Source", false, false, {"Rear Mic", "Front Mic", "Line"}}};
  const MixerRoutes routes = MapMixer(elements);
  EXPECT_EQ(routes[0], (MixerRoute{"Line", 0, -1, 2, 2}));
  EXPECT_EQ(routes[1], (MixerRoute{"Front Mic", 0, -1, 2, 1}));
  EXPECT_FALSE(routes[2] || routes[3]);
}

TEST(MixerMap, ACardWithOneInputHasItAsLine) {
  EXPECT_EQ(MapMixer(std::vector{MixerElement{"Master", false, false, {}}, Both("Capture")})[0],
            (MixerRoute{"Capture", 1}));
  EXPECT_EQ(MapMixer(std::vector{Volume("Mic")})[1], (MixerRoute{"Mic", 0})) << "one that says what it is stays it";
  EXPECT_FALSE(MapMixer(std::vector{Volume("Mic")})[0]);
  EXPECT_FALSE(MapMixer({})[0]);
}

TEST(AlsaMixer, AnInputWithoutAMixerHasNothingAndRefuses) {
  DriverCalls drivers;
  const AlsaInputs quiet(drivers);
  AlsaMixer mixer(drivers);
  testing::internal::CaptureStderr();
  for (const char* card : {"Absent,0: no card", "loop:/a/file.wav", ""}) {
    for (const MixerInput& input : mixer.Inputs(card)) EXPECT_FALSE(input.there) << card;
    EXPECT_FALSE(mixer.Select(card, 0));
    EXPECT_FALSE(mixer.SetVolume(card, 0, 50));
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "") << "the library's own words";
}

}  // namespace
}  // namespace tarvolt
