// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "station/station.h"
#include "timebase/time_stamp.h"

namespace tarvolt {

inline constexpr const char* kCard = "USB,0: Receiver, Line";

inline std::pair<int, int> Steady(std::int64_t frame) {
  return frame % 2 == 0 ? std::pair(1000, -300) : std::pair(-1000, 300);
}

/// A station whose only sources are the sides of a sound card, at 8000 Hz so that hours of it pass quickly.
class SoundStation : public ::testing::Test {
 protected:
  SoundStation() {
    station.host.sound.Plug(kCard, Steady);
    station.Set("Dsrc0", 1).Set("Dsrc1", 2).Set("Detection0", 2).Set("Detection1", 1).Set("sWavFormat", 8);
    station.Set("SampleRate", 100).Set("Pbuffer", 800).Set("ShowMsgBox", true);
  }

  std::vector<Sample> Stored() const { return station.Stored(); }
  int LogLines(std::string_view words) const { return station.LogLines(words); }

  Station station;
};

}  // namespace tarvolt
