// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/backup.h"

#include <gtest/gtest.h>

#include "files/desk.h"

namespace tarvolt {
namespace {

constexpr const char* kBackup = "/station/Data/localdatabackup.tvd";
constexpr const char* kNotes = "free notes";

TEST(LocalBackup, HoldsEverySampleAsSoonAsItIsStored) {
  for (const bool stamps : {true, false}) {
    for (const bool integers : {true, false}) {
      BackedUpDesk desk;
      desk.session.settings.timing.NoTimeStamps = !stamps;
      desk.session.settings.files.SaveAsIntegers = integers;
      desk.window.save.PendingNotes = kNotes;
      desk.window.run.time.utOffset = 0.25;
      desk.host.disk.Put(kBackup, "the backup of an older run, longer than this one will ever be");
      desk.BeginLog();
      EXPECT_EQ(desk.Marker(), "Running");
      for (int i = 0; i < 4; ++i) {
        desk.RecordAndBackUp(1);
        EXPECT_EQ(SamplesOf(desk.Bytes(kBackup)), Expected(0, i, stamps, integers));
        EXPECT_TRUE(desk.backup.IsComplete());
      }
      const std::string bytes = desk.Bytes(kBackup);
      EXPECT_EQ(NumberAt<double>(bytes, 10), 40180.75) << "the moment of the start in the base of the stamps";
      if (!stamps) {
        EXPECT_EQ(NumberAt<double>(bytes, 18), Desk::Stamp(3));
      }
      EXPECT_EQ(NotesOf(bytes), kNotes) << "free text alone, without framing";
      EXPECT_EQ(NumberAt<std::int16_t>(bytes, 150), 2);
    }
  }
}

// The n-th operation fails, whichever it is, and perhaps all after it for a while; in the end nothing is missing.
TEST(LocalBackup, AFailureAtAnyOperationLosesNothing) {
  for (const SimDisk::Repeat repeat : {SimDisk::Repeat::Once, SimDisk::Repeat::ForEver}) {
    for (std::uint64_t step = 1; step < 25; ++step) {
      for (const bool stamps : {true, false}) {
        BackedUpDesk desk(step);
        desk.session.settings.timing.NoTimeStamps = !stamps;
        desk.host.disk.FailOperation(step, repeat);
        desk.BeginLog();
        desk.RecordAndBackUp(6);
        EXPECT_TRUE(!desk.backup.IsComplete() || SamplesOf(desk.Bytes(kBackup)) == Expected(0, 5, stamps)) << step;
        desk.host.disk.Heal();
        desk.RecordAndBackUp(1);
        EXPECT_EQ(SamplesOf(desk.Bytes(kBackup)), Expected(0, 6, stamps)) << step << stamps;
        EXPECT_TRUE(desk.backup.IsComplete());
      }
    }
  }
}

TEST(LocalBackup, AVanishedOrForeignFileIsMadeAnew) {
  for (const char* damage : {"removed", "folder", "short", "long"}) {
    BackedUpDesk desk;
    desk.window.save.PendingNotes = kNotes;
    desk.BeginLog();
    desk.RecordAndBackUp(3);
    std::error_code error;
    if (damage == std::string("removed")) desk.host.disk.Remove(kBackup, error);
    if (damage == std::string("folder")) desk.host.disk.RemoveTree("/station/Data");
    if (damage == std::string("short")) desk.host.disk.Put(kBackup, "x");
    if (damage == std::string("long")) desk.host.disk.Put(kBackup, std::string(1000, 'x'));
    desk.RecordAndBackUp(2);
    desk.backup.SyncToDisk();
    EXPECT_EQ(SamplesOf(desk.Bytes(kBackup)), Expected(0, 4)) << damage;
    EXPECT_EQ(NotesOf(desk.Bytes(kBackup)), kNotes) << damage;
  }
}

TEST(LocalBackup, GoesOnWhenTheStoreIsEmptiedDuringTheLog) {
  BackedUpDesk desk;
  desk.BeginLog();
  desk.RecordAndBackUp(3);
  desk.ClearStore();
  desk.RecordAndBackUp(2);
  EXPECT_EQ(SamplesOf(desk.Bytes(kBackup)), Expected(0, 4));

  // What stands whole in the file is kept when its end is lost: the store could not give it again.
  const std::string whole = desk.Bytes(kBackup);
  desk.host.disk.Put(kBackup, whole.substr(0, whole.size() - 30));
  desk.RecordAndBackUp(1);
  EXPECT_EQ(SamplesOf(desk.Bytes(kBackup)), Expected(0, 2) + Expected(5, 5));
}

}  // namespace
}  // namespace tarvolt
