#include <gtest/gtest.h>

#include <chrono>

#include "apps/station.h"
#include "apps/tv-uds/link/messages.h"
#include "apps/tv_uds_program.h"
#include "text/number.h"
#include "timebase/time_stamp.h"

namespace tarvolt {
namespace {

using Samples = std::vector<std::vector<double>>;

TimeStamp Now() {
  return uds::StampOfUnixSeconds(
      std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count());
}

/// Sets whose sums have rounding errors of their own, or whole numbers that an integer file can hold.
Samples MadeUp(int count, bool whole) {
  Samples sets;
  for (int n = 0; n < count; ++n) {
    const double x = whole ? 37 * n % 101 - 50 : 0.1 * n - 1.7 / (n + 1);
    sets.push_back({x, -300 * x});
  }
  return sets;
}

std::string ReplayText(const Samples& sets) {
  std::string text;
  for (const auto& set : sets) text += NumberText(set[0]) + " " + NumberText(set[1]) + "\n";
  return text;
}

/// What a recorder makes of the sets: each `count` of them summed in order and divided.
Samples Averaged(const Samples& sets, std::size_t count) {
  Samples averages;
  for (std::size_t i = 0; i + count <= sets.size(); i += count) {
    double first = 0;
    double second = 0;
    for (std::size_t k = i; k < i + count; ++k) {
      first += sets[k][0];
      second += sets[k][1];
    }
    averages.push_back({first / static_cast<double>(count), second / static_cast<double>(count)});
  }
  return averages;
}

struct Way {
  bool push;
  bool stamps;  ///< the source sends them and the file holds them; else neither when pushed
  bool integers;
  int average;
};

void RecordReplay(const Way& way) {
  constexpr double kRate = 100;
  const Samples sets = MadeUp(42, way.integers);
  const Home home;
  uds::RunningSource source({"--replay", home.Write("sets.txt", ReplayText(sets)).string(), "--rate", NumberText(kRate),
                             way.push && way.stamps ? "--time-stamps" : "--auto"});
  const auto flag = [](const char* key, bool on) { return std::string(key) + (on ? "=True" : "=False"); };
  const TimeStamp before = Now();
  RunningStation station(
      home, Recording(source.Port(), {flag("UDSpush", way.push), "SampleRate=10", flag("NoTimeStamps", !way.stamps),
                                      flag("SaveAsIntegers", way.integers), "LogUsingUT=True",
                                      "vAvg=" + NumberText(std::int64_t{way.average})}));
  // The replay ends with the connection, which ends the chart, which ends the station.
  ASSERT_EQ(station.ExitStatus(), 0) << station.Output();
  const TimeStamp after = Now();

  const Recorded file = ReadRecorded(home.DataFile());
  EXPECT_EQ(file.layout.timeStamps, way.stamps);
  EXPECT_EQ(file.layout.integers, way.integers);
  ASSERT_EQ(file.samples, Averaged(sets, way.average)) << station.Output();
  EXPECT_GT(file.times.front(), before - kMillisecond);
  EXPECT_LT(file.times.back(), after + kMillisecond);
  for (std::size_t i = 1; i < file.times.size(); ++i) EXPECT_GT(file.times[i], file.times[i - 1]) << i;
  if (!way.push || !way.stamps) return;
  for (std::size_t i = 0; i < file.times.size(); ++i) {
    const double ofSource = static_cast<double>(i) * way.average / kRate / 86400;
    EXPECT_NEAR(file.times[i] - file.times[0], ofSource, kMillisecond) << i;
  }
}

TEST(StationRecording, FilesHoldWhatTheSourceSent) {
  for (const Way& way :
       {Way{true, true, false, 1}, Way{true, false, false, 1}, Way{true, true, true, 1}, Way{true, true, false, 4},
        Way{false, true, false, 1}, Way{false, false, true, 1}, Way{false, true, false, 4}}) {
    SCOPED_TRACE(::testing::Message() << (way.push ? "pushed" : "polled") << (way.stamps ? ", stamps" : "")
                                      << (way.integers ? ", integers" : "") << ", average of " << way.average);
    RecordReplay(way);
  }
}

}  // namespace
}  // namespace tarvolt
