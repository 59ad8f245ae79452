#include "files/backup.h"

#include <gtest/gtest.h>

#include "files/desk.h"
#include "files/raw_file.h"

namespace tarvolt {
namespace {

constexpr const char* kBackup = "/station/Data/localdatabackup.tvd";
constexpr const char* kNotes = "free notes";

/// A desk whose samples go into a backup one by one.
struct BackedUp : Desk {
  explicit BackedUp(std::uint64_t seed = 1, bool stamps = true, bool integers = false)
      : Desk(2, seed), backup(session, window) {
    session.settings.files.DiskBackUp = true;
    session.settings.timing.NoTimeStamps = !stamps;
    session.settings.files.SaveAsIntegers = integers;
    window.save.PendingNotes = kNotes;
  }

  void RecordAndBackUp(int count) {
    for (int i = 0; i < count; ++i) {
      Record(1);
      backup.LocalBackUp();
    }
  }

  std::string Samples() {
    const std::string bytes = Bytes(kBackup);
    return bytes.substr(std::min<std::size_t>(bytes.size(), 156 + 10));
  }

  LocalBackup backup;
};

std::string Expected(int first, int last, bool stamps = true, bool integers = false) {
  RawFile raw;
  for (int i = first; i <= last; ++i) {
    if (stamps) raw.Add(Desk::Stamp(i));
    for (int channel = 0; channel < 2; ++channel) {
      if (integers) {
        raw.Add(static_cast<std::int16_t>(100 * channel + i));
      } else {
        raw.Add(Desk::Value(channel, i));
      }
    }
  }
  return raw.Bytes();
}

TEST(LocalBackup, HoldsEverySampleAsSoonAsItIsStored) {
  for (const bool stamps : {true, false}) {
    for (const bool integers : {true, false}) {
      BackedUp desk(1, stamps, integers);
      desk.window.run.time.utOffset = 0.25;
      desk.host.disk.Put(kBackup, "the backup of an older run, longer than this one will ever be");
      desk.BeginLog(desk.backup);
      EXPECT_EQ(desk.Marker(), "Running");
      for (int i = 0; i < 4; ++i) {
        desk.RecordAndBackUp(1);
        EXPECT_EQ(desk.Samples(), Expected(0, i, stamps, integers));
        EXPECT_TRUE(desk.backup.IsComplete());
      }
      const std::string bytes = desk.Bytes(kBackup);
      EXPECT_EQ(NumberAt<double>(bytes, 10), 40180.75) << "the moment of the start in the base of the stamps";
      if (!stamps) {
        EXPECT_EQ(NumberAt<double>(bytes, 18), Desk::Stamp(3));
      }
      EXPECT_EQ(bytes.substr(156, 10), kNotes) << "free text alone, without framing";
      EXPECT_EQ(NumberAt<std::int16_t>(bytes, 150), 2);
    }
  }
}

TEST(LocalBackup, SwitchedOffItOnlyMarksItselfInactive) {
  BackedUp desk;
  desk.window.save.keeping.BackupActive = true;
  desk.session.settings.files.DiskBackUp = false;
  desk.BeginLog(desk.backup);
  desk.RecordAndBackUp(2);
  EXPECT_FALSE(desk.window.save.keeping.BackupActive);
  EXPECT_FALSE(desk.Exists(kBackup));
  EXPECT_NE(desk.Marker(), "Running");
}

TEST(LocalBackup, AFullDiskIsToldOnceAndEverySampleIsWrittenAfterIt) {
  BackedUp desk;
  desk.session.settings.program.ShowMsgBox = true;
  desk.BeginLog(desk.backup);
  desk.RecordAndBackUp(2);
  desk.host.disk.SetCapacity(desk.host.disk.Used() + 30);  // room for one sample and a quarter
  desk.RecordAndBackUp(5);
  EXPECT_EQ(desk.Samples(), Expected(0, 2)) << "cut back to the last whole sample";
  EXPECT_FALSE(desk.backup.IsComplete());
  EXPECT_EQ(desk.host.dialogs.Boxes().size(), 1u);
  desk.host.disk.SetCapacity(SimDisk::kUnlimited);
  desk.RecordAndBackUp(1);
  EXPECT_EQ(desk.Samples(), Expected(0, 7));
  EXPECT_TRUE(desk.Logged("Backup Works Again"));

  desk.host.disk.FailOperation(1, SimDisk::Repeat::ForEver);
  desk.RecordAndBackUp(2);
  EXPECT_EQ(desk.host.dialogs.Boxes().size(), 2u) << "a new failure is told anew";
  desk.host.disk.Heal();
  desk.RecordAndBackUp(1);
  EXPECT_EQ(desk.Samples(), Expected(0, 10));
}

// The n-th operation fails, whichever it is, and perhaps all after it for a while; in the end nothing is missing.
TEST(LocalBackup, AFailureAtAnyOperationLosesNothing) {
  for (const SimDisk::Repeat repeat : {SimDisk::Repeat::Once, SimDisk::Repeat::ForEver}) {
    for (std::uint64_t step = 1; step < 25; ++step) {
      for (const bool stamps : {true, false}) {
        BackedUp desk(step, stamps);
        desk.host.disk.FailOperation(step, repeat);
        desk.BeginLog(desk.backup);
        desk.RecordAndBackUp(6);
        desk.host.disk.Heal();
        desk.RecordAndBackUp(1);
        EXPECT_EQ(desk.Samples(), Expected(0, 6, stamps)) << step << stamps;
        EXPECT_TRUE(desk.backup.IsComplete());
      }
    }
  }
}

TEST(LocalBackup, AVanishedOrForeignFileIsMadeAnew) {
  for (const char* damage : {"removed", "folder", "short", "long"}) {
    BackedUp desk;
    desk.BeginLog(desk.backup);
    desk.RecordAndBackUp(3);
    std::error_code error;
    if (damage == std::string("removed")) desk.host.disk.Remove(kBackup, error);
    if (damage == std::string("folder")) desk.host.disk.RemoveTree("/station/Data");
    if (damage == std::string("short")) desk.host.disk.Put(kBackup, "x");
    if (damage == std::string("long")) desk.host.disk.Put(kBackup, std::string(1000, 'x'));
    desk.RecordAndBackUp(2);
    desk.backup.SyncToDisk();
    EXPECT_EQ(desk.Samples(), Expected(0, 4)) << damage;
    EXPECT_EQ(desk.Bytes(kBackup).substr(156, 10), kNotes) << damage;
  }
}

TEST(LocalBackup, GoesOnWhenTheStoreIsEmptiedDuringTheLog) {
  BackedUp desk;
  desk.BeginLog(desk.backup);
  desk.RecordAndBackUp(3);
  desk.window.chart.ClearData();
  desk.backup.StoreWasCleared();
  desk.RecordAndBackUp(2);
  EXPECT_EQ(desk.Samples(), Expected(0, 4));

  // What stands whole in the file is kept when its end is lost: the store could not give it again.
  const std::string whole = desk.Bytes(kBackup);
  desk.host.disk.Put(kBackup, whole.substr(0, whole.size() - 30));
  desk.RecordAndBackUp(1);
  EXPECT_EQ(desk.Samples(), Expected(0, 2) + Expected(5, 5));
}

TEST(LocalBackup, TheLayoutOfAFileNeverChangesDuringALog) {
  BackedUp desk;
  desk.BeginLog(desk.backup);
  desk.RecordAndBackUp(2);
  desk.session.settings.timing.NoTimeStamps = desk.session.settings.files.SaveAsIntegers = true;
  desk.RecordAndBackUp(2);
  EXPECT_EQ(desk.Samples(), Expected(0, 3));
}

TEST(LocalBackup, ACrashAtAnyOperationKeepsAllSamplesBeforeIt) {
  for (std::uint64_t step = 1; step < 30; ++step) {
    BackedUp desk(step);
    int stored = 0;
    desk.BeginLog(desk.backup);
    desk.host.disk.CrashAtOperation(step, step);
    desk.host.RunsUntilCrash([&] {
      for (; stored < 10; ++stored) desk.RecordAndBackUp(1);
    });
    desk.host.Reboot();
    const std::string samples = desk.Samples();
    ASSERT_GE(samples.size(), stored * 24u) << step;
    EXPECT_EQ(samples.substr(0, stored * 24), Expected(0, stored - 1));
  }
}

}  // namespace
}  // namespace tarvolt
