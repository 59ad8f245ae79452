// SPDX-License-Identifier: GPL-3.0-or-later
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "apps/station.h"
#include "apps/test_source.h"
#include "automation/triggers/trigger_file.h"
#include "text/ansi.h"

namespace tarvolt {
namespace {

// Lets the one who reads the pipe go on; false while there is none.
bool OpenGate(const std::string& pipe) {
  const int file = open(pipe.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
  if (file < 0) return false;
  const std::string line = "through\n";
  const bool written = write(file, line.data(), line.size()) == static_cast<ssize_t>(line.size());
  close(file);
  return written;
}

// Two programs: one that does not end before the station has gone on, and one whose arguments a shell would tear apart.
TEST(StationTriggers, ProgramsAreReallyStartedAndNotWaitedFor) {
  const Home home;
  const std::string folder = home.Folder().string();
  const std::string gate = folder + "/gate";
  const std::string passed = folder + "/passed";
  const std::string odd = folder + "/$(id) `id`; echo * > out & 'quoted' at";
  ASSERT_EQ(mkfifo(gate.c_str(), 0600), 0);
  TriggerDefinitions triggers;
  for (TriggerDefinition& trigger : triggers) trigger.Threshold = 1e9;
  triggers[0].Threshold = 5;
  triggers[0].Action = "Execute";
  triggers[0].Parameter = AnsiFromUtf8("/bin/sh -c \"read line < '" + gate + "'; echo $line > '" + passed + "'\"");
  triggers[9].Threshold = 7;
  triggers[9].Action = "EXECUTE";
  triggers[9].Parameter = AnsiFromUtf8("/usr/bin/touch \"" + odd + "[SAMPLE NUMBER]\"");
  triggers[9].Annotate = true;
  triggers[9].ShowInSessionLog = true;
  triggers[9].Notation = "Passed seven";
  home.Write("Triggers.ini", FormatTriggers(triggers));

  TestSource source;
  RunningStation station(home, Recording(source.Port(), {"CHTrigger0=1000000001", "ChTriggerEnabled0=True"}));
  ASSERT_TRUE(source.Accept());
  source.BeginRun(2);
  constexpr TimeStamp kStart = 46000;
  std::vector<std::vector<double>> sent;
  for (int n = 0; n < 12; ++n) {
    sent.push_back({static_cast<double>(n), -1});
    source.SendSet(sent.back(), kStart + n / 86400.0);
  }
  EXPECT_TRUE(WaitUntil([&] { return ReadRecorded(home.Backup()).samples == sent; })) << station.Output();
  EXPECT_TRUE(WaitUntil([&] { return std::filesystem::exists(odd + " 7"); })) << station.Output();
  EXPECT_FALSE(std::filesystem::exists(passed)) << "the first program still waits, and the station did not";
  bool opened = false;
  EXPECT_TRUE(WaitUntil([&] { return opened = opened || OpenGate(gate); })) << "nobody stands behind it";
  EXPECT_TRUE(WaitUntil([&] { return BytesOf(passed) == "through\n"; }));
  source.HangUp();
  EXPECT_EQ(station.ExitStatus(), 0);
  EXPECT_TRUE(station.Printed("Passed seven")) << station.Output();
  EXPECT_EQ(ReadRecorded(home.DataFile()).samples, sent);
  EXPECT_NE(BytesOf(home.DataFile()).find("Passed seven"), std::string::npos) << "the notation stands in the file";
}

}  // namespace
}  // namespace tarvolt
