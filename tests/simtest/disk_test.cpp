// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <string>

#include "sim/sim_disk.h"

namespace tarvolt {
namespace {

constexpr const char* kFile = "/home/station/run.tvd";

/// Opens, writes and closes; the error of the write, or of the opening.
std::error_code WriteFile(SimDisk& disk, const char* path, std::string_view bytes, OpenMode mode, bool sync = false) {
  std::error_code error;
  const auto file = disk.Open(path, mode, error);
  if (file != nullptr) file->Write(bytes, error);
  if (file != nullptr && sync && !error) file->Sync(error);
  return error;
}

/// Replaces kFile as a careful program does: beside it, synced or not, and renamed over it.
void ReplaceFile(SimDisk& disk, std::string_view bytes, bool sync) {
  std::error_code error = WriteFile(disk, "/home/station/run.new", bytes, OpenMode::Create, sync);
  if (!error) disk.Rename("/home/station/run.new", kFile, error);
}

TEST(SimDisk, ACrashAtEachOperationLeavesTheOldFileOrTheNew) {
  int olds = 0;
  int news = 0;
  for (std::uint64_t n = 1; n <= 4; ++n) {
    for (std::uint64_t seed = 0; seed < 20; ++seed) {
      SimDisk disk(1);
      disk.Put(kFile, "old");
      disk.CrashAtOperation(n, seed);
      EXPECT_THROW(ReplaceFile(disk, "newer", true), SimCrash);
      EXPECT_THROW(disk.FileExists(kFile), SimCrash) << "a dead program reads nothing";
      disk.Reboot();
      EXPECT_TRUE(disk.FileExists(kFile));
      (disk.Contents(kFile) == "old" ? olds : news)++;
      EXPECT_TRUE(disk.Contents(kFile) == "old" || disk.Contents(kFile) == "newer");
      const std::string torn = disk.Contents("/home/station/run.new").value_or("");
      EXPECT_TRUE(std::string("newer").starts_with(torn));
      EXPECT_FALSE(WriteFile(disk, kFile, "x", OpenMode::Append)) << "one crash, not one at each start";
    }
  }
  EXPECT_GT(news, 0) << "a rename may have been done when the program died in it";
  EXPECT_GT(olds, 60);
}

TEST(SimDisk, TheDeadProgramsDestructorsMeetAFailingDisk) {
  struct WritesAtTheEnd {
    SimDisk& disk;
    std::error_code& error;
    ~WritesAtTheEnd() { error = WriteFile(disk, kFile, "last words", OpenMode::Append); }
  };
  SimDisk disk(1);
  disk.Put(kFile, "");
  std::error_code unwinding;
  std::error_code afterwards;
  std::error_code error;
  const auto openBefore = disk.Open(kFile, OpenMode::Append, error);
  disk.CrashAtOperation(1, 7);
  try {
    const WritesAtTheEnd inStack{disk, unwinding};
    WriteFile(disk, kFile, "", OpenMode::Append);
    FAIL() << "it should have died";
  } catch (const SimCrash& crash) {
    EXPECT_EQ(crash.operation, 1u);
  }
  disk.Kill();
  { const WritesAtTheEnd later{disk, afterwards}; }
  EXPECT_TRUE(unwinding);
  EXPECT_TRUE(afterwards);
  EXPECT_EQ(disk.Contents(kFile), "");
  disk.Reboot();
  openBefore->Write("ghost", error);
  EXPECT_TRUE(error) << "a file opened before the crash is not open after it";
  EXPECT_EQ(disk.Contents(kFile), "");
}

/// Replaces a file, loses power behind the rename, and counts what is found.
struct Found {
  int olds = 0;
  int news = 0;
  int torn = 0;
};
Found AfterPowerLoss(bool sync, bool powerLoss) {
  Found found;
  for (std::uint64_t seed = 0; seed < 100; ++seed) {
    SimDisk disk(seed);
    disk.Put(kFile, "old");
    disk.SetPowerLoss(powerLoss);
    ReplaceFile(disk, "newer", sync);
    disk.Kill();
    disk.Reboot();
    const auto bytes = disk.Contents(kFile);
    (bytes == "old" ? found.olds : bytes == "newer" ? found.news : found.torn)++;
  }
  return found;
}

TEST(SimDisk, LosingPowerLosesWhatWasNotSyncedAndDyingDoesNot) {
  const Found killed = AfterPowerLoss(false, false);
  EXPECT_EQ(killed.news, 100);
  const Found careful = AfterPowerLoss(true, true);
  EXPECT_EQ(careful.torn, 0);
  EXPECT_GT(careful.olds, 0) << "the rename itself was never synced";
  EXPECT_GT(careful.news, 0);
  const Found careless = AfterPowerLoss(false, true);
  EXPECT_GT(careless.torn, 0) << "a rename may be on the disk before the bytes are";
}

TEST(SimDisk, LosingPowerKeepsAPrefixOfTheWritesInOrder) {
  const std::string synced = "0000000000";
  const std::string all = "AAA0000000BBBB";
  int shortened = 0;
  for (std::uint64_t seed = 0; seed < 50; ++seed) {
    SimDisk disk(seed);
    disk.Put(kFile, synced);
    disk.SetPowerLoss(true);
    WriteFile(disk, kFile, "AAA", OpenMode::ReadWrite);
    WriteFile(disk, kFile, "BBBB", OpenMode::Append);
    disk.Kill();
    disk.Reboot();
    const std::string bytes = *disk.Contents(kFile);
    ASSERT_GE(bytes.size(), synced.size());
    EXPECT_EQ(bytes.substr(3, 7), "0000000");
    EXPECT_EQ(disk.Used(), bytes.size());
    const bool laterWriteSurvived = bytes.size() > synced.size();
    EXPECT_TRUE(!laterWriteSurvived || all.starts_with(bytes)) << "the later write without the earlier";
    if (bytes != all) ++shortened;
  }
  EXPECT_GT(shortened, 10);
}

}  // namespace
}  // namespace tarvolt
