// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include "station/station.h"

namespace tarvolt {

/// A test with a station of its own.
class OnAStation : public testing::Test {
 protected:
  Station station;
};

}  // namespace tarvolt
