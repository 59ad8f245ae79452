// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tarvolt {

/// Number of the source of a channel, as stored: 0 none, 1 and 2 sound left and right, 3 MAX187, 10 to 17 MAX186,
/// 20 to 27 UDS, 40 to 47 equation, 50 to 57 LabJack U3, 60 to 67 LabJack U12, 71 cross correlation.
using DataSourceId = std::int16_t;

inline constexpr DataSourceId kSoundLeft = 1;
inline constexpr DataSourceId kSoundRight = 2;
inline constexpr DataSourceId kFirstUds = 20;
inline constexpr DataSourceId kFirstEquation = 40;
inline constexpr DataSourceId kCrossCorrelation = 71;

/// Sources of a family, such as the inputs of a User Data Source.
inline constexpr int kFamilySize = 8;

/// True for a source that reads the sound input.
constexpr bool ReadsSound(DataSourceId source) {
  return source == kSoundLeft || source == kSoundRight || source == kCrossCorrelation;
}

/// True for the values of a User Data Source.
constexpr bool IsUds(DataSourceId source) {
  return source >= kFirstUds && source < kFirstUds + kFamilySize;
}

/// True for a channel that is made by its equation alone.
constexpr bool IsEquation(DataSourceId source) {
  return source >= kFirstEquation && source < kFirstEquation + kFamilySize;
}

}  // namespace tarvolt
