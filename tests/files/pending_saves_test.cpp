// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/pending_saves.h"

#include <gtest/gtest.h>

#include "files/desk.h"
#include "files/saving.h"

namespace tarvolt {
namespace {

constexpr const char* kFirst = "/disk/100102120000.tvd";
constexpr const char* kAside = "/station/Data/recovery/100102120000local.tvd";

/// A station whose files go to a disk of their own, which is full.
struct FullDisk : BackedUpDesk {
  FullDisk() : pending(session) {
    std::error_code error;
    host.disk.MakeFolders("/disk", error);
    host.disk.SetReadOnly("/disk", true);
  }

  /// One log: recorded, refused by the disk and set aside.
  bool LogSetAside(int samples, const std::string& name) {
    BeginLog();
    RecordAndBackUp(samples);
    EXPECT_EQ(SaveDataFile(session, window, name, false), SaveOutcome::Failed);
    return pending.SetAside(window, name);
  }

  void RetryFor(int calls) {
    for (int i = 0; i < calls; ++i) pending.Retry();
  }

  PendingSaves pending;
};

TEST(PendingSaves, KeepALogUntilTheDiskHasRoom) {
  FullDisk station;
  station.window.save.PendingNotes = "notes of the first log";
  ASSERT_TRUE(station.LogSetAside(5, kFirst));
  EXPECT_EQ(station.window.chart.Count(), 0);
  EXPECT_TRUE(station.Exists(kAside)) << "its backup outlives the next log's";
  station.window.save.PendingNotes = "notes of the second log";
  ASSERT_TRUE(station.LogSetAside(4, "/disk/second.tvd"));

  const std::string logBefore = station.session.log.Text();
  station.RetryFor(3);
  EXPECT_EQ(station.session.log.Text(), logBefore) << "tries that fail are silent";
  station.host.disk.SetReadOnly("/disk", false);
  station.RetryFor(10);
  EXPECT_TRUE(station.pending.Empty());
  EXPECT_EQ(SamplesOf(station.Bytes(kFirst)), Expected(0, 4));
  EXPECT_TRUE(NotesOf(station.Bytes(kFirst)).starts_with("notes of the first log"));
  EXPECT_EQ(SamplesOf(station.Bytes("/disk/second.tvd")), Expected(5, 8));
  EXPECT_FALSE(station.Exists(kAside));
  EXPECT_TRUE(station.Logged(" Saved /disk/100102120000.tvd"));
}

TEST(PendingSaves, AreLimitedAndThenTakeNothing) {
  FullDisk station;
  for (std::size_t i = 0; i < PendingSaves::kLimit; ++i)
    ASSERT_TRUE(station.LogSetAside(3, "/disk/" + std::string(1, static_cast<char>('a' + i)) + ".tvd"));
  EXPECT_FALSE(station.LogSetAside(3, "/disk/last.tvd"));
  EXPECT_EQ(station.window.chart.Count(), 3);
  EXPECT_TRUE(station.window.save.keeping.BackupActive);
}

TEST(PendingSaves, TriesGrowRareWhileTheDiskRefuses) {
  FullDisk station;
  ASSERT_TRUE(station.LogSetAside(3, kFirst));
  station.host.disk.SetReadOnly("/disk", false);
  station.host.disk.FailOperation(1, SimDisk::Repeat::ForEver);
  const std::uint64_t before = station.host.disk.Operations();
  station.RetryFor(600);
  EXPECT_LT(station.host.disk.Operations() - before, 60u);
  station.host.disk.Heal();
  station.RetryFor(70);
  EXPECT_TRUE(station.pending.Empty());
}

TEST(PendingSaves, AMiniServersSamplesComeFromItsBackupSetAside) {
  FullDisk station;
  station.session.settings.files.MiniServer = true;
  station.BeginLog();
  station.RecordAndBackUp(4);
  station.ClearStore();
  station.RecordAndBackUp(2);
  station.host.disk.FailOperation(1, SimDisk::Repeat::ForEver);
  EXPECT_FALSE(station.pending.SetAside(station.window, kFirst)) << "the next log's backup would take its place";
  EXPECT_EQ(station.window.chart.Count(), 2);
  station.host.disk.Heal();
  ASSERT_TRUE(station.pending.SetAside(station.window, kFirst));
  station.BeginLog();
  station.host.disk.SetReadOnly("/disk", false);
  station.pending.Retry();
  EXPECT_EQ(SamplesOf(station.Bytes(kFirst)), Expected(0, 5));
}

}  // namespace
}  // namespace tarvolt
