// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

#include "timebase/time_stamp.h"

namespace tarvolt {

/// The record that starts a data file, and a window's current header. Text fields hold their blank-padded width.
struct DataFileHeader {
  std::string version = "0.01000001";  ///< 10 characters: major, minor, revision as two digits each, then "0000"
  TimeStamp start = 0;
  TimeStamp end = 0;
  double latitude = 0;
  double longitude = 0;
  double yMax = 0;
  double yMin = 0;
  std::int16_t timeZone = 0;
  std::string source = "unknown   ";                                  ///< 10
  std::string author = "unknown author      ";                        ///< 20
  std::string localName = "unknown local name  ";                     ///< 20
  std::string location = "unknown location                        ";  ///< 40
  std::int16_t channels = 1;
  std::int32_t notesLength = 0;
};

}  // namespace tarvolt
