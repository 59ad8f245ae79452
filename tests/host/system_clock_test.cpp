// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/system_clock.h"

#include <array>
#include <cstdlib>
#include <optional>

namespace tarvolt {
namespace {

/// Sets TZ as a change of the system's zone would, and puts the former one back.
class ZoneOfTheTest {
 public:
  explicit ZoneOfTheTest(const char* zone) {
    if (const char* value = std::getenv("TZ")) former_ = value;
    ::setenv("TZ", zone, 1);
  }
  ~ZoneOfTheTest() {
    if (former_) {
      ::setenv("TZ", former_->c_str(), 1);
    } else {
      ::unsetenv("TZ");
    }
  }

 private:
  std::optional<std::string> former_;
};

constexpr std::time_t kJanuary = 1768478400;  // 2026-01-15 12:00 UT
constexpr std::time_t kJuly = 1784116800;     // 2026-07-15 12:00 UT

int MinutesWest(const ZoneInfo& zone) {
  return zone.biasMinutes + (zone.state == ZoneState::Daylight ? zone.daylightBiasMinutes : zone.standardBiasMinutes);
}

TEST(SystemClock, GivesTheBiasOfTheSeasonInForce) {
  const ZoneOfTheTest zone("CET-1CEST,M3.5.0,M10.5.0/3");
  EXPECT_EQ(ZoneAt(kJanuary).state, ZoneState::Standard);
  EXPECT_EQ(MinutesWest(ZoneAt(kJanuary)), -60);
  EXPECT_EQ(ZoneAt(kJuly).state, ZoneState::Daylight);
  EXPECT_EQ(ZoneAt(kJuly).biasMinutes, -60);
  EXPECT_EQ(MinutesWest(ZoneAt(kJuly)), -120);
  const ZoneOfTheTest india("IST-5:30");
  EXPECT_EQ(ZoneAt(kJuly).state, ZoneState::NoDaylightInformation);
  EXPECT_EQ(MinutesWest(ZoneAt(kJuly)), -330);
}

TEST(SystemClock, BreaksAMomentIntoLocalFieldsAndNoticesAChangeOfZone) {
  const ZoneOfTheTest west("EST5EDT,M3.2.0,M11.1.0");
  const WallTime time = LocalTimeAt({kJuly, 987'654'321});
  EXPECT_EQ((std::array{time.year, time.month, time.day, time.hour, time.minute, time.second, time.millisecond}),
            (std::array{2026, 7, 15, 8, 0, 0, 987}));
  const ZoneOfTheTest east("NZST-12");
  EXPECT_EQ(LocalTimeAt({kJuly, 0}).day, 16);
  EXPECT_EQ(LocalTimeAt({kJuly, 0}).hour, 0);
}

TEST(SystemClock, ReadsTheMachinesClock) {
  const ZoneOfTheTest zone("UTC0");
  SystemClock clock;
  const std::time_t before = std::time(nullptr);
  const WallTime now = clock.LocalNow();
  const std::time_t after = std::time(nullptr);
  std::tm fields{now.second, now.minute, now.hour, now.day, now.month - 1, now.year - 1900, 0, 0, 0, 0, nullptr};
  EXPECT_GE(::timegm(&fields), before);
  EXPECT_LE(::timegm(&fields), after);
  const double first = clock.MonotonicMilliseconds();
  timespec pause{0, 20'000'000};
  ::nanosleep(&pause, nullptr);
  EXPECT_GE(clock.MonotonicMilliseconds() - first, 20.0);
}

}  // namespace
}  // namespace tarvolt
