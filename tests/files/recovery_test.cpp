// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/recovery.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "files/desk.h"
#include "files/unsaved_charts.h"

namespace tarvolt {
namespace {

// Twelve o'clock of the day on which the simulated machine is switched on, in the machine's local time.
constexpr const char* kCopy = "/station/Data/recovery/100102120000local.tvd";
constexpr const char* kBackup = "/station/Data/localdatabackup.tvd";

void Mark(Desk& desk, std::string_view key) {
  desk.session.store.SaveSetting(Section::Settings, key, "Running");
}

TEST(RecoverBackups, RescuesTheLocalBackupAndEveryClients) {
  Desk desk;
  desk.session.settings.program.ShowMsgBox = true;
  Mark(desk, "LocalRun");
  desk.host.disk.Put(kBackup, "local samples");
  for (const char* digit : {"1", "2", "3", "4", "5", "6", "7", "8", "9"}) {
    Mark(desk, std::string("ClientRun") + digit);
    desk.host.disk.Put(std::string("/station/Data/clientdatabackup") + digit + ".tvd", digit);
  }
  EXPECT_TRUE(RecoverBackups(desk.session));
  EXPECT_EQ(desk.Bytes(kCopy), "local samples");
  EXPECT_EQ(desk.Bytes("/station/Data/recovery/100102120000client3.tvd"), "3");
  EXPECT_EQ(desk.Bytes("/station/Data/recovery/100102120000client9.tvd"), "9");
  EXPECT_EQ(desk.Marker(), "OK");
  EXPECT_EQ(desk.Marker("ClientRun9"), "OK");
  EXPECT_TRUE(desk.Exists(kBackup)) << "kept until the next run";
  EXPECT_TRUE(desk.host.dialogs.HasShown("Recovery Alert"));
  EXPECT_TRUE(desk.host.dialogs.HasShown(kCopy));
  EXPECT_FALSE(RecoverBackups(desk.session));
}

TEST(RecoverBackups, WithoutAFileOrAMarkerThereIsNothingToTell) {
  Desk desk;
  desk.session.settings.program.ShowMsgBox = true;
  Mark(desk, "LocalRun");
  desk.host.disk.Put("/station/Data/clientdatabackup1.tvd", "of a run that ended well");
  EXPECT_FALSE(RecoverBackups(desk.session));
  EXPECT_EQ(desk.Marker(), "OK");
  EXPECT_TRUE(desk.host.dialogs.Boxes().empty());
  EXPECT_TRUE(desk.host.disk.FolderExists("/station/Data/recovery"));
  EXPECT_EQ(desk.host.disk.AllFiles().count("/station/Data/recovery/100102120000client1.tvd"), 0u);
}

TEST(RecoverBackups, NeverOverwritesAnEarlierRescue) {
  Desk desk;
  for (const char* content : {"first", "second", "third"}) {
    Mark(desk, "LocalRun");
    desk.host.disk.Put(kBackup, content);
    EXPECT_TRUE(RecoverBackups(desk.session));
  }
  EXPECT_EQ(desk.Bytes(kCopy), "first");
  EXPECT_EQ(desk.Bytes("/station/Data/recovery/100102120000local_2.tvd"), "second");
  EXPECT_EQ(desk.Bytes("/station/Data/recovery/100102120000local_3.tvd"), "third");
}

TEST(RecoverBackups, ABackupThatCannotBeCopiedIsMovedAndElseStays) {
  Desk desk;
  desk.session.settings.program.ShowMsgBox = true;
  Mark(desk, "LocalRun");
  desk.host.disk.Put(kBackup, std::string(100, 'x'));
  desk.host.disk.SetReadOnly("/station/Data", true);
  EXPECT_FALSE(RecoverBackups(desk.session));
  EXPECT_EQ(desk.Marker(), "Running");
  EXPECT_TRUE(desk.host.dialogs.HasShown("Could Not Copy"));
  EXPECT_EQ(desk.Bytes(kBackup), std::string(100, 'x'));

  desk.host.disk.SetReadOnly("/station/Data", false);
  desk.host.disk.SetCapacity(desk.host.disk.Used() + 50);
  EXPECT_TRUE(RecoverBackups(desk.session));
  EXPECT_EQ(desk.Bytes(kCopy), std::string(100, 'x'));
  EXPECT_FALSE(desk.Exists(kBackup));
  EXPECT_EQ(desk.Marker(), "OK");
}

// Each LocalBackup is that of another start of the program.
void BeginRun(Desk& desk) {
  desk.session.settings.files.DiskBackUp = true;
  LocalBackup backup(desk.session, desk.window);
  desk.BeginLog(backup);
  desk.Record(3);
  backup.LocalBackUp();
}

void EndRun(Desk& desk) {
  desk.window.chart.ClearData();
  UnsavedCharts(desk.session, desk.window).NothingToSave();
  EXPECT_EQ(desk.Marker(), "OK");
}

TEST(RecoverBackups, WhatCouldNotBeRescuedIsNeverWrittenOver) {
  Desk desk;
  desk.host.disk.Put(kBackup, "the samples");
  Mark(desk, "LocalRun");
  for (int run = 0; run < 2; ++run) {
    desk.host.disk.FailOperation(1, SimDisk::Repeat::ForEver);
    BeginRun(desk);
    EXPECT_FALSE(desk.window.save.keeping.BackupActive) << "there is no room for two of that name";
    EXPECT_EQ(desk.Bytes(kBackup), "the samples");
    desk.host.disk.Heal();
    EndRun(desk);
  }
  BeginRun(desk);
  EXPECT_TRUE(desk.window.save.keeping.BackupActive);
  EXPECT_EQ(desk.Bytes(kCopy), "the samples");
  EXPECT_NE(desk.Bytes(kBackup), "the samples");
}

TEST(RecoverBackups, AFailedLogIsNotWrittenOverByTheNextRunOfTheSameProgram) {
  BackedUpDesk desk;
  desk.BeginLog();
  desk.RecordAndBackUp(3);
  const std::string log = desk.Bytes(kBackup);
  desk.BeginLog();
  EXPECT_EQ(desk.Bytes(kCopy), log);
}

TEST(RecoverBackups, TheBackupIsFoundWhereItWasBegun) {
  Desk desk;
  desk.session.settings.files.DataDirectory = "/station/Other";
  desk.host.disk.Put("/station/Other/x", "");
  BeginRun(desk);
  const std::string log = desk.Bytes("/station/Other/localdatabackup.tvd");
  desk.session.settings.files.DataDirectory = "/station/Data";
  desk.host.disk.Put(kBackup, "of an older run that ended well");
  EXPECT_TRUE(RecoverBackups(desk.session));
  EXPECT_EQ(desk.Bytes(kCopy), log);
  EXPECT_EQ(desk.Marker(), "OK");
}

TEST(RecoverBackups, ADiskThatIsNotMountedIsWaitedForAcrossLaterRuns) {
  Desk desk;
  constexpr const char* kOnDisk = "/disk/Data/localdatabackup.tvd";
  desk.session.settings.files.DataDirectory = "/disk/Data/";
  desk.host.disk.Put("/disk/Data/x", "");
  BeginRun(desk);
  const std::string log = desk.Bytes(kOnDisk);
  desk.host.disk.RemoveTree("/disk");
  EXPECT_FALSE(RecoverBackups(desk.session));
  EXPECT_EQ(desk.Marker(), "Running");
  EXPECT_TRUE(desk.Logged(kOnDisk));
  EXPECT_FALSE(desk.host.disk.FolderExists("/disk")) << "nothing may be made where the disk will be";

  desk.session.settings.files.DataDirectory = "/station/Data/";
  BeginRun(desk);
  EndRun(desk);
  desk.host.disk.Put(kOnDisk, log);
  desk.session.settings.files.DataDirectory = "/disk/Data/";
  BeginRun(desk);
  EXPECT_EQ(desk.Bytes("/disk/Data/recovery/100102120000local.tvd"), log);
}

TEST(RemoveLeftParts, TakesTornDataFilesAlone) {
  Desk desk;
  desk.session.settings.files.OrganizeByMonth = desk.session.settings.files.OrganizeByDay = true;
  const std::vector<std::string> torn = {"/station/Data/a.tvd.part", "/station/Data/recovery/b.tvd.part",
                                         "/station/Data/Home/1001/100102/c.tvd.part",
                                         "/station/Data/Home/1001/100101/d.tvd.part"};
  const std::vector<std::string> others = {"/station/Data/a.tvd", "/station/Data/film.part",
                                           "/station/Data/Home/1001/100102/c.tvd"};
  const auto standing = [&](const std::vector<std::string>& names) {
    return std::count_if(names.begin(), names.end(), [&](const std::string& name) { return desk.Exists(name); });
  };
  for (const std::string& name : torn) desk.host.disk.Put(name, "x");
  for (const std::string& name : others) desk.host.disk.Put(name, "x");
  desk.session.settings.files.DiskBackUp = false;
  RecoverBackups(desk.session);
  EXPECT_EQ(standing(torn), 4) << "without a backup they are all that is left of a log";
  desk.session.settings.files.DiskBackUp = true;
  RecoverBackups(desk.session);
  EXPECT_EQ(standing(torn), 0);
  EXPECT_EQ(standing(others), 3);
}

// A second crash, at any moment of the rescue: the start after it finds the samples in a copy or rescues them itself.
TEST(RecoverBackups, ACrashDuringTheRescueLosesNothing) {
  for (std::uint64_t step = 1; step < 15; ++step) {
    Desk desk(2, step);
    Mark(desk, "LocalRun");
    desk.host.disk.Put(kBackup, "the samples");
    desk.host.disk.CrashAtOperation(step, step);
    desk.host.RunsUntilCrash([&] { RecoverBackups(desk.session); });
    desk.host.Reboot();
    Session next(desk.host.Record(), "/station");
    next.store.Load();
    next.settings.files.DataDirectory = "/station/Data";
    RecoverBackups(next);
    EXPECT_EQ(desk.Bytes(kCopy), "the samples") << step;
  }
}

}  // namespace
}  // namespace tarvolt
