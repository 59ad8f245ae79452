// SPDX-License-Identifier: GPL-3.0-or-later
#include "logs/session_log.h"

#include <gtest/gtest.h>

#include "sim/sim_clock.h"
#include "sim/sim_disk.h"

namespace tarvolt {
namespace {

constexpr const char* kFile = "/data/UT261122SessionLog.txt";

class SessionLogTest : public ::testing::Test {
 protected:
  SessionLogTest() {
    disk.MakeFolders("/data", ignored);
    log.AddListener([this](const std::string& line) { told.push_back(line); });
  }

  void WaitSeconds(int seconds) { clock.AdvanceTo(clock.Now() + seconds * 1000); }

  std::error_code ignored;
  SimClock clock{{2026, 11, 22, 23, 59, 58, 900}};
  SimDisk disk{1};
  Settings settings;
  SessionLog log{clock, disk, settings};
  std::vector<std::string> told;
};

TEST_F(SessionLogTest, TheFirstEntryOfEachDayCarriesTheDateLine) {
  log.Add2SLog("before");
  log.Add2SLog("still before");
  WaitSeconds(2);
  log.Add2SLog("after");
  EXPECT_EQ(log.Text(),
            "261122 (YYMMDD) UT\r\n23:59:58 before\r\n23:59:58 still before\r\n"
            "261123 (YYMMDD) UT\r\n00:00:00 after\r\n");
  const std::vector<std::string> lines = {"261122 (YYMMDD) UT", "23:59:58 before", "23:59:58 still before",
                                          "261123 (YYMMDD) UT", "00:00:00 after"};
  EXPECT_EQ(told, lines);
}

TEST_F(SessionLogTest, StampsFollowTheOffsetOfTheRunAndTheDateLineSaysUtRegardless) {
  SimZone zone;
  zone.biasMinutes = -120;  // local time is 01:59:58 of the 23rd
  clock.SetZone(zone);
  log.Add2SLog("local");
  log.SetUTOffset(-2.0 / 24);
  log.Add2SLog("universal");
  EXPECT_EQ(log.Text(),
            "261123 (YYMMDD) UT\r\n01:59:58 local\r\n"
            "261122 (YYMMDD) UT\r\n23:59:58 universal\r\n");
}

TEST_F(SessionLogTest, TheFileGrowsOnlyWhenItIsAskedFor) {
  log.SetFileName(kFile);
  settings.files.AutoSaveSessionLog = false;
  log.Add2SLog("not saved");
  EXPECT_FALSE(disk.FileExists(kFile));
  settings.files.AutoSaveSessionLog = true;
  log.Add2SLog("saved");
  WaitSeconds(2);
  log.Add2SLog("saved too");
  EXPECT_EQ(disk.Contents(kFile),
            "261122 (YYMMDD) UT\r\n23:59:58 saved\r\n261123 (YYMMDD) UT\r\n00:00:00 saved too\r\n");
}

TEST_F(SessionLogTest, AFailingFileIsToldOnceAndStopsNothing) {
  settings.files.AutoSaveSessionLog = true;
  log.SetFileName(kFile);
  disk.SetReadOnly("/data", true);
  log.Add2SLog("one");
  log.Add2SLog("two");
  disk.SetReadOnly("/data", false);
  log.Add2SLog("three");
  EXPECT_EQ(disk.Contents(kFile), "23:59:58 three\r\n");
  disk.FailOperation(1, SimDisk::Repeat::Once);
  log.Add2SLog("four");
  std::size_t complaints = 0;
  for (const std::string& line : told) complaints += line.starts_with("Could not write the session log file") ? 1 : 0;
  EXPECT_EQ(complaints, 2u) << log.Text();
  EXPECT_TRUE(log.Text().ends_with("23:59:58 four\r\n"));
}

TEST_F(SessionLogTest, TheTextInMemoryLosesItsOldestWholeLines) {
  const std::string filler(997, 'w');
  for (int i = 0; i < 6000; ++i) {
    clock.NoteProgress();
    log.Add2SLog(filler);
    ASSERT_LE(log.Text().size(), SessionLog::kTextLimit);
  }
  log.Add2SLog("newest");
  EXPECT_GT(log.Text().size(), SessionLog::kTextLimit / 2);
  EXPECT_EQ(log.Text().substr(0, 12), "23:59:58 www");
  EXPECT_TRUE(log.Text().ends_with("\r\n23:59:58 newest\r\n"));
  log.Add2SLog(std::string(SessionLog::kTextLimit + 10, 'y'));
  EXPECT_LE(log.Text().size(), SessionLog::kTextLimit);
  EXPECT_TRUE(log.Text().ends_with("yy\r\n"));
}

TEST_F(SessionLogTest, AListenerMayLogAndAddListeners) {
  int heard = 0;
  log.AddListener([&](const std::string&) {
    log.Add2SLog("the administrator's link failed");
    log.AddListener([&](const std::string&) { ++heard; });
  });
  log.Add2SLog("one");
  EXPECT_EQ(told.size(), 2u) << "the date line and the entry, not what a listener logged";
  EXPECT_NE(log.Text().find("the administrator's link failed\r\n"), std::string::npos);
  EXPECT_GT(heard, 0);
}

}  // namespace
}  // namespace tarvolt
