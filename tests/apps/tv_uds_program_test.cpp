// SPDX-License-Identifier: GPL-3.0-or-later
#include "apps/tv_uds_program.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>

#include "apps/tv-uds/link/messages.h"
#include "text/number.h"

namespace tarvolt::uds {
namespace {

using Values = std::vector<double>;

const std::string kPolled = "INIT\xFFPOLL\xFFSTAT\xFF";
const std::string kPushed = "INIT\xFFPUSH\xFFSTAT\xFF";

double SecondsNow() {
  return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
}

void ExpectStatus(Recorder& recorder, const std::string& channels) {
  EXPECT_EQ(recorder.Message(), "^^2013" + channels);
  EXPECT_EQ(recorder.Message(), "^^1001");
}

/// A text file for one test.
class TextFile {
 public:
  explicit TextFile(const std::string& text)
      : path_(std::filesystem::temp_directory_path() /
              ("tv_uds_test_" + NumberText(static_cast<std::int64_t>(getpid())) + ".txt")) {
    std::ofstream(path_, std::ios::binary) << text;
  }
  ~TextFile() { std::filesystem::remove(path_); }
  std::string Name() const { return path_.string(); }

 private:
  std::filesystem::path path_;
};

TEST(TvUdsProgram, AnswersARecorderThatPolls) {
  RunningSource source({"--signal", "ramp", "--channels", "2"});
  Recorder recorder(source.Port());
  recorder.Send("INIT\xFFPOLL\xFFST");
  EXPECT_TRUE(recorder.IsSilent(100));
  recorder.Send("AT\xFF");
  ExpectStatus(recorder, "2");
  EXPECT_TRUE(recorder.IsSilent(700));
  recorder.Send("NEWS\xFF\xFFPINH\xFFGETD\xFFGETD\xFF");
  for (const char* expected : {"#0 0", "#1 1000000", "^^3001", "#0 1", "#1 1000001", "^^3001"}) {
    EXPECT_EQ(recorder.Message(), expected);
  }
  EXPECT_TRUE(recorder.IsSilent(200));
}

TEST(TvUdsProgram, PushesAtItsRateAndStartsAnewWithEachConnection) {
  RunningSource source({"--signal", "ramp", "--channels", "8", "--rate", "1000", "--time-stamps"});
  for (int connection = 0; connection < 2; ++connection) {
    Recorder recorder(source.Port());
    recorder.Send(kPushed);
    ExpectStatus(recorder, "8");
    double first = 0;
    double last = 0;
    for (int n = 0; n < 1500; ++n) {
      Values set = recorder.Set();
      ASSERT_EQ(set.size(), 9U) << n;
      ASSERT_EQ(set[0], n);
      ASSERT_EQ(set[7], n + 7000000);
      ASSERT_GT(set[8], last) << n;
      last = set[8];
      if (n == 0) first = last;
    }
    EXPECT_NEAR((last - first) * 86400, 1.499, 0.01);
    EXPECT_NEAR(last, StampOfUnixSeconds(SecondsNow()), 5.0 / 86400);
  }
}

TEST(TvUdsProgram, OptionsOverruleTheRecordersMode) {
  RunningSource pushing({"--push", "--signal", "ramp", "--rate", "100"});
  Recorder poller(pushing.Port());
  poller.Send(kPolled + "GETD\xFF");
  ExpectStatus(poller, "4");
  EXPECT_EQ(poller.Set(), (Values{0, 1000000, 2000000, 3000000}));
  EXPECT_EQ(poller.Set(), (Values{1, 1000001, 2000001, 3000001}));

  RunningSource polled({"--poll", "--signal", "ramp", "--rate", "100"});
  Recorder listener(polled.Port());
  listener.Send(kPushed);
  ExpectStatus(listener, "4");
  EXPECT_TRUE(listener.IsSilent(800));
  listener.Send("GETD\xFF");
  EXPECT_EQ(listener.Set(), (Values{0, 1000000, 2000000, 3000000}));
}

TEST(TvUdsProgram, ReplaysEveryValueUnchangedAndCloses) {
  const TextFile file("0.1 -1e-300\n123456789.123456789;2\n3,4\n");
  const std::vector<Values> sets = {{0.1, -1e-300}, {123456789.123456789, 2}, {3, 4}};
  RunningSource source({"--replay", file.Name(), "--rate", "8", "--time-stamps"});
  for (const std::string& opening : {kPushed, kPolled}) {
    Recorder recorder(source.Port());
    recorder.Send(opening);
    ExpectStatus(recorder, "2");
    double start = 0;
    for (std::size_t n = 0; n < sets.size(); ++n) {
      if (opening == kPolled) recorder.Send("GETD\xFF");
      const Values set = recorder.Set();
      ASSERT_EQ(set.size(), 3U);
      EXPECT_EQ((Values{set[0], set[1]}), sets[n]);
      if (n == 0) start = set[2];
      EXPECT_NEAR((set[2] - start) * 86400, static_cast<double>(n) / 8, 2e-6);
    }
    // The last set is not followed by the end at once: a recorder that polls must find the link up to use it.
    if (opening == kPolled) {
      EXPECT_TRUE(recorder.IsSilent(300));
      recorder.Send("GETD\xFF");
    }
    EXPECT_TRUE(recorder.IsClosed());
  }
}

TEST(TvUdsProgram, MakesNoSetsForARecorderThatDoesNotRead) {
  RunningSource source({"--signal", "ramp", "--channels", "8"});
  Recorder recorder(source.Port(), 32 * 1024);
  recorder.Send(kPolled);
  ExpectStatus(recorder, "8");
  std::string requests;
  for (int i = 0; i < 4000; ++i) requests += "GETD\xFF";
  constexpr std::size_t kFarTooMany = 20'000'000;
  const std::size_t taken = recorder.Flood(requests, kFarTooMany);
  ASSERT_LT(taken, kFarTooMany);
  for (std::size_t n = 0; n < taken / 5; ++n) {
    const Values set = recorder.Set();
    ASSERT_EQ(set.size(), 8U);
    ASSERT_EQ(set[0], static_cast<double>(n));
  }
  EXPECT_TRUE(recorder.IsSilent(200));
}

TEST(TvUdsProgram, ServesOneRecorderAtATime) {
  RunningSource source({"--signal", "ramp", "--channels", "1"});
  {
    Recorder first(source.Port());
    first.Send(kPolled);
    ExpectStatus(first, "1");
    Recorder second(source.Port());
    second.Send(kPolled);
    EXPECT_TRUE(second.IsClosed());
    first.Send("GETD\xFF");
    EXPECT_EQ(first.Set(), Values{0});
  }
  for (int i = 0; i < 20; ++i) {
    Recorder next(source.Port());
    next.Send(kPolled + "GETD\xFF");
    ExpectStatus(next, "1");
    EXPECT_EQ(next.Set(), Values{0});
  }
}

TEST(TvUdsProgram, EndsWithTheRightStatus) {
  for (const int signal : {SIGINT, SIGTERM}) {
    RunningSource source({});
    ASSERT_NE(source.Port(), 0);
    source.Signal(signal);
    EXPECT_EQ(source.ExitStatus(), 0);
  }

  RunningSource once({"--once"});
  { Recorder recorder(once.Port()); }
  EXPECT_EQ(once.ExitStatus(), 0);

  RunningSource holder({});
  RunningSource late({"--port", NumberText(static_cast<std::int64_t>(holder.Port()))});
  EXPECT_EQ(late.ExitStatus(), 1);
  EXPECT_NE(late.Output().find("is in use"), std::string::npos);

  const TextFile file("1 2\n3 x\n");
  RunningSource replay({"--replay", file.Name()});
  EXPECT_EQ(replay.ExitStatus(), 1);
  EXPECT_NE(replay.Output().find(file.Name() + ": line 2: "), std::string::npos);

  const std::vector<std::string> wrong[] = {{"--channels", "9"},  {"--rate", "0"},       {"--signal", "hum"},
                                            {"--push", "--poll"}, {"--address", "here"}, {"--colour"}};
  for (const std::vector<std::string>& arguments : wrong) {
    EXPECT_EQ(RunningSource(arguments).ExitStatus(), 2) << arguments[0];
  }
}

}  // namespace
}  // namespace tarvolt::uds
