// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>

#include "timebase/time_stamp.h"

namespace tarvolt {

/// What is taken in place of what a damaged file says of its own samples.
struct ForcedValues {
  int ForceChannels = 0;           ///< above 0 the channels of a sample
  int ForceInteger = 0;            ///< 1 values are doubles, 2 they are whole numbers, 0 as the file says
  int ForceNoStamps = 0;           ///< 1 samples have stamps, 2 they have none, 0 as the file says
  std::optional<TimeStamp> start;  ///< of a file without stamps
  std::optional<TimeStamp> end;    ///< the same; as in a header, one sample short

  bool Any() const { return ForceChannels > 0 || ForceInteger != 0 || ForceNoStamps != 0 || start || end; }
};

}  // namespace tarvolt
