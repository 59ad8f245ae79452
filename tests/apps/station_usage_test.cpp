// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <regex>

#include "apps/station.h"
#include "apps/test_source.h"
#include "apps/tv_uds_program.h"
#include "text/number.h"

namespace tarvolt {
namespace {

struct WrongWords {
  std::vector<std::string> arguments;
  int status;
  std::string answer;
};

TEST(StationUsage, WrongWordsAreNamed) {
  const Home home;
  const WrongWords cases[] = {
      {{"--colour", "red"}, 2, "--colour"},
      {{"--set", "SampelRate=20"}, 2, "\"SampleRate\""},
      {{"--set", "SampleRate"}, 2, "KEY=VALUE"},
      {{"--set", "vAvg=2", "observe"}, 2, "\"observe\" is neither"},
      {{"--mode", "spectator"}, 2, "spectator"},
      {{"--seconds", "-1"}, 2, "--seconds"},
      {{"observe"}, 2, "observe"},
      {{"/NM", "/XYZ"}, 2, "Unrecognized Command Line Parameter XYZ"},
      {{"--profile", "nowhere.tvp", "--start"}, 1, "nowhere.tvp"},
      {{"--load", "nowhere.tvd"}, 1, "Cannot Find the file: nowhere.tvd"},
      {{"--start", "--mode", "client"}, 1, "A chart cannot be started in Client Mode."},
      {{"--start", "--set", "Dsrc0=0"}, 1, "You must select a data source for channel one."},
      {{"--start", "--set", "Dsrc0=20", "--set", "UDSport=1"}, 1, "UDS Connection failed. Connection refused"},
      {{"--start", "--set", "Dsrc0=1", "--set", "SoundCardName=file:/no.wav"}, 1, "file:/no.wav cannot be opened"},
  };
  for (const WrongWords& c : cases) {
    SCOPED_TRACE(c.arguments.back());
    RunningStation station(home, c.arguments);
    EXPECT_EQ(station.ExitStatus(), c.status);
    EXPECT_TRUE(station.Printed(c.answer)) << station.Output();
    EXPECT_TRUE(home.DataFiles().empty());
  }
}

TEST(StationUsage, AHomeHasOneStation) {
  const Home home;
  RunningStation first(home, {});
  ASSERT_TRUE(
      WaitUntil([&] { return BytesOf(home.Folder() / "settings.ini").find("ShutDown=Running") != std::string::npos; }));
  const std::string settings = BytesOf(home.Folder() / "settings.ini");
  RunningStation second(home, {});
  EXPECT_EQ(second.ExitStatus(), 1);
  EXPECT_TRUE(second.Printed("in use by the program with the process id " + NumberText(std::int64_t{first.Id()})))
      << second.Output();
  EXPECT_EQ(BytesOf(home.Folder() / "settings.ini"), settings);

  // A killed station holds nobody off.
  first.Signal(SIGKILL);
  first.ExitStatus();
  RunningStation third(home, {});
  EXPECT_TRUE(third.WaitFor("Identity"));
}

/// The lines of the settings file that say something of a recording, and not of what the station did last.
std::vector<std::string> LastingSettings(const Home& home) {
  static const std::regex kLine("(vAvg|SampleRate|UDSport|UDSpush|Dsrc\\d|LocalName|MaxArrayCount)=[^\n]*");
  const std::string text = BytesOf(home.Folder() / "settings.ini");
  std::vector<std::string> lines;
  for (std::sregex_iterator line(text.begin(), text.end(), kLine), end; line != end; ++line)
    lines.push_back(line->str());
  return lines;
}

TEST(StationUsage, AProfileHoldsForTheRunAndSetGoesOnTop) {
  const Home home;
  RunningStation firstUse(home, {"--set", "LocalName=passing"});
  ASSERT_TRUE(firstUse.WaitFor("Identity"));
  firstUse.Signal(SIGTERM);
  ASSERT_EQ(firstUse.ExitStatus(), 0);
  const std::vector<std::string> before = LastingSettings(home);
  ASSERT_EQ(before.size(), 14U);

  uds::RunningSource source({"--replay",
                             home.Write("sets.txt", "1 2\n3 5\n10 20\n30 40\n5 5\n7 7\n9 8\n11 10\n").string(),
                             "--rate", "100", "--time-stamps"});
  const std::string port = NumberText(std::int64_t{source.Port()});
  const std::string profile = home.Write("Grüne Linie.tvp",
                                         "vAvg = 4;\r\nDsrc0= 20;\r\nDsrc1= 21;\r\nUDSpush=True;\r\n"
                                         "UDSport = " +
                                             port + ";\r\nLocalName = Dish 2;\r\n")
                                  .string();
  RunningStation station(home, {"--profile", profile, "--set", "vAvg=2", "--start"});
  EXPECT_EQ(station.ExitStatus(), 0);
  EXPECT_TRUE(station.Printed("Loaded Profile Grüne Linie.tvp")) << station.Output();
  const Recorded file = ReadRecorded(home.DataFile());
  EXPECT_EQ(file.samples, (std::vector<std::vector<double>>{{2, 3.5}, {20, 30}, {6, 6}, {10, 9}}));
  EXPECT_EQ(file.header.localName, "Dish_2              ");
  EXPECT_EQ(LastingSettings(home), before);
}

TEST(StationUsage, OpensDataFiles) {
  const Home home;
  {
    uds::RunningSource source({"--replay", home.Write("sets.txt", "1 2\n3 4\n5 6\n").string(), "--time-stamps"});
    RunningStation station(home, Recording(source.Port(), {"LocalName=north mast"}));
    ASSERT_EQ(station.ExitStatus(), 0) << station.Output();
  }
  const std::filesystem::path file = home.Folder() / "Löwe transit.tvd";
  std::filesystem::rename(home.DataFile(), file);
  for (const std::vector<std::string>& words :
       {std::vector<std::string>{file.string()}, std::vector<std::string>{"/L", file.string()},
        std::vector<std::string>{"--load", file.string()}}) {
    RunningStation station(home, words);
    EXPECT_TRUE(station.WaitFor(file.string() + " Loaded from disk.")) << station.Output();
  }
}

/// Ends the process that was started with these words in its command line, if there is one.
void EndProcessWith(const std::string& words) {
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator("/proc", error)) {
    const std::int32_t id = ValLong(entry.path().filename().string());
    const std::string command = BytesOf(entry.path() / "cmdline");
    if (id > 1 && command.starts_with("User Data Source") && command.find(words) != std::string::npos) {
      kill(id, SIGKILL);
    }
  }
}

/// Ends the data source that a station has started, also when the test fails.
struct StartedSource {
  std::string words;
  ~StartedSource() { EndProcessWith(words); }
};

// Any data source on the machine counts as the one that is wanted, so the test lets one that is not ours end first.
TEST(StationStartsSource, UnlessOneRuns) {
  const Home home;
  const std::string port = NumberText(std::int64_t{FreePort()});
  const std::string program = std::string("UDSexe=\"") + TARVOLT_PROGRAM_FOLDER + "/tv-uds\" --port " + port +
                              " --replay \"" + home.Write("sets.txt", "1 2\n3 4\n5 6\n").string() + "\"";
  bool started = false;
  for (int tries = 0; tries < 20 && !started; ++tries) {
    const StartedSource source{std::string("--port\0", 7) + port};
    RunningStation station(home, Recording(static_cast<std::uint16_t>(ValLong(port)), {"StartUDS=True", program}));
    started = station.ExitStatus() == 0;
    if (!started) usleep(500000);
  }
  ASSERT_TRUE(started);
  EXPECT_EQ(ReadRecorded(home.DataFile()).samples, (std::vector<std::vector<double>>{{1, 2}, {3, 4}, {5, 6}}));

  // Its own one runs: nothing is started, and it is polled until its replay ends.
  uds::RunningSource own({"--replay", (home.Folder() / "sets.txt").string()});
  ASSERT_NE(own.Port(), 0);
  const Home other;
  RunningStation station(other, Recording(own.Port(), {"StartUDS=True", "UDSexe=no-such-program", "UDSpush=False",
                                                       "SampleRate=10", "SaveAsIntegers=True"}));
  EXPECT_EQ(station.ExitStatus(), 0);
  EXPECT_FALSE(station.Printed("Trying to Start UDS")) << station.Output();
  const Recorded polled = ReadRecorded(other.DataFile());
  EXPECT_TRUE(polled.layout.integers);
  EXPECT_EQ(polled.samples, (std::vector<std::vector<double>>{{1, 2}, {3, 4}, {5, 6}})) << station.Output();
}

}  // namespace
}  // namespace tarvolt
