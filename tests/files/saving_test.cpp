// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/saving.h"

#include <gtest/gtest.h>

#include "files/desk.h"
#include "files/format/notes_block.h"

namespace tarvolt {
namespace {

constexpr const char* kName = "/station/Data/100102120000.tvd";

TEST(SaveDataFile, WritesHeaderNotesAndEverySample) {
  Desk desk;
  desk.session.store.SaveSetting(Section::Settings, "Version", "1.12.3");
  desk.Record(5);
  desk.window.notes = "loaded notes. ";
  desk.window.save.PendingNotes = "my notes";
  desk.window.run.DataNeedsSave = true;
  ASSERT_EQ(SaveDataFile(desk.session, desk.window, kName, false), SaveOutcome::Saved);

  const std::string bytes = desk.Bytes(kName);
  EXPECT_EQ(bytes.substr(0, 10), "0112030000");
  EXPECT_EQ(NumberAt<double>(bytes, 10), Desk::Stamp(0));
  EXPECT_EQ(NumberAt<double>(bytes, 18), Desk::Stamp(3)) << "one sample short of the last";
  EXPECT_EQ(NumberAt<std::int16_t>(bytes, 150), 2);
  EXPECT_EQ(NotesOf(bytes), Block("loaded notes. my notes", {"CHL0", "CHL1", "CHO00", "CHO10"}));
  EXPECT_EQ(SamplesOf(bytes), Expected(0, 4));

  EXPECT_FALSE(desk.window.run.DataNeedsSave);
  EXPECT_EQ(desk.window.view.Status.Text(), " Saved 100102120000.tvd");
  EXPECT_TRUE(desk.Logged(std::string(" Saved ") + kName));
  EXPECT_EQ(desk.session.recent.saved[0], kName);
  EXPECT_FALSE(desk.Exists(std::string(kName) + ".part"));
}

TEST(SaveDataFile, KnowsAllFourLayouts) {
  for (const bool stamps : {true, false}) {
    for (const bool integers : {true, false}) {
      Desk desk;
      desk.Record(4);
      desk.session.settings.timing.NoTimeStamps = !stamps;
      desk.session.settings.files.SaveAsIntegers = integers;
      desk.SettleLog();
      ASSERT_EQ(SaveDataFile(desk.session, desk.window, kName, false), SaveOutcome::Saved);
      EXPECT_EQ(SamplesOf(desk.Bytes(kName)), Expected(0, 3, stamps, integers)) << stamps << integers;
    }
  }
}

TEST(SaveDataFile, ManyPiecesMakeOneFile) {
  Desk desk(1);
  desk.Record(70000);  // more than one buffer
  ASSERT_EQ(SaveDataFile(desk.session, desk.window, kName, false), SaveOutcome::Saved);
  EXPECT_EQ(SamplesOf(desk.Bytes(kName)), Expected(0, 69999, true, false, 1));
}

TEST(SaveDataFile, ValuesTooLargeForIntegersAreSavedAsDoublesUnderTheIntegerToken) {
  Desk desk;
  desk.Record(4);
  desk.window.chart.SetValue(1, 2, 40000);
  desk.session.settings.files.SaveAsIntegers = true;
  desk.SettleLog();
  ASSERT_EQ(SaveDataFile(desk.session, desk.window, kName, false), SaveOutcome::Saved);
  const std::string bytes = desk.Bytes(kName);
  EXPECT_EQ(SamplesOf(bytes).size(), 4 * 24u);
  EXPECT_TRUE(ParseNotes(NotesOf(bytes)).integers);
  EXPECT_EQ(desk.host.dialogs.Questions(), 0);

  desk.session.settings.program.ShowMsgBox = true;
  EXPECT_EQ(CheckForSave(desk.session, desk.window, SaveReason::RunEnded, false), SaveOutcome::Saved);
  EXPECT_EQ(desk.host.dialogs.Questions(), 0) << "a silent save never asks, also where boxes are on";
  desk.host.dialogs.AnswerNext(Answer::Cancel);
  EXPECT_EQ(SaveDataFile(desk.session, desk.window, "/station/Data/other.tvd", true), SaveOutcome::Unsaved);
  EXPECT_TRUE(desk.Logged("exceed the limits of Integer Saves")) << "a silent save says so in the log";
  EXPECT_FALSE(desk.Exists("/station/Data/other.tvd"));
}

// Every operation of a save fails in turn: the old file stays whole, nothing else is left behind, and the next try
// works.
TEST(SaveDataFile, AFailureAtAnyStepLosesNothing) {
  for (std::uint64_t step = 1;; ++step) {
    Desk desk;
    desk.Record(5);
    desk.host.disk.Put(kName, "old file");
    desk.window.run.DataNeedsSave = true;
    desk.host.disk.FailOperation(step, SimDisk::Repeat::ForEver, std::errc::no_space_on_device);
    const SaveOutcome outcome = SaveDataFile(desk.session, desk.window, kName, false);
    desk.host.disk.Heal();
    if (outcome == SaveOutcome::Saved) {
      EXPECT_GT(step, 4u);
      break;
    }
    EXPECT_EQ(outcome, SaveOutcome::Failed);
    EXPECT_EQ(desk.Bytes(kName), "old file");
    EXPECT_TRUE(desk.window.run.DataNeedsSave);
    EXPECT_TRUE(desk.Logged("Could Not Save"));
    EXPECT_EQ(SaveDataFile(desk.session, desk.window, kName, false), SaveOutcome::Saved);
    EXPECT_EQ(SamplesOf(desk.Bytes(kName)), Expected(0, 4));
  }
}

TEST(SaveDataFile, ACrashLeavesTheOldFileOrTheNewOne) {
  for (std::uint64_t step = 1; step < 12; ++step) {
    Desk desk(2, step);
    desk.Record(5);
    desk.host.disk.Put(kName, "old file");
    desk.host.disk.SetPowerLoss(true);
    desk.host.disk.CrashAtOperation(step, step);
    desk.host.RunsUntilCrash([&] { SaveDataFile(desk.session, desk.window, kName, false); });
    desk.host.Reboot();
    const std::string bytes = desk.Bytes(kName);
    EXPECT_TRUE(bytes == "old file" || SamplesOf(bytes) == Expected(0, 4)) << step;
  }
}

TEST(SaveDataFile, AFailureIsToldOnceHoweverOftenItIsTried) {
  Desk desk;
  desk.session.settings.program.ShowMsgBox = true;
  desk.Record(5);
  desk.host.disk.SetReadOnly("/station/Data", true);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(SaveDataFile(desk.session, desk.window, kName, false), SaveOutcome::Failed);
  EXPECT_EQ(desk.host.dialogs.Boxes().size(), 1u);
}

// A run of five samples with its backup, stopped.
struct StoppedRun : BackedUpDesk {
  StoppedRun() {
    BeginLog();
    RecordAndBackUp(5);
    window.run.DataNeedsSave = true;
  }
};

TEST(SaveFromBackup, SamplesComeFromAWholeBackupAndElseFromTheStore) {
  for (const int cut : {0, 24, 5, -1}) {  // bytes that the backup lacks, or -1 when it has vanished
    StoppedRun run;
    run.window.chart.SetValue(0, 1, -1);  // only a file made from the backup has the value of the run
    const std::filesystem::path backup = run.window.save.keeping.LocalBackupFile;
    const std::string whole = run.Bytes(backup);
    std::error_code error;
    cut < 0 ? run.host.disk.Remove(backup, error) : run.host.disk.Put(backup, whole.substr(0, whole.size() - cut));
    ASSERT_EQ(SaveDataFile(run.session, run.window, kName, false), SaveOutcome::Saved);
    const std::string samples = SamplesOf(run.Bytes(kName));
    EXPECT_EQ(samples.size(), Expected(0, 4).size());
    EXPECT_EQ(NumberAt<double>(samples, 32), cut == 0 ? Desk::Value(0, 1) : -1) << cut;
    EXPECT_EQ(run.window.save.keeping.BackupActive, cut >= 0) << "one that has vanished is forgotten";
  }
}

// What the settings become while the run goes on changes neither how its backup is written nor how it is read.
TEST(SaveFromBackup, TheFormOfTheRunDecidesAndNotTheSettingsOfTheMoment) {
  for (const bool mini : {true, false}) {
    for (const bool integers : {true, false}) {
      BackedUpDesk desk;
      Settings& settings = desk.session.settings;
      settings.files.MiniServer = mini;
      settings.files.SaveAsIntegers = settings.timing.NoTimeStamps = integers;
      desk.window.run.time.firstStamp = Desk::Stamp(0);
      desk.BeginLog();
      desk.RecordAndBackUp(4);
      settings.files.MiniServer = !mini;
      settings.files.SaveAsIntegers = settings.timing.NoTimeStamps = !integers;
      settings.files.DiskBackUp = false;
      for (const int more : {2, 1}) {  // also a window that was told in mid run to keep little
        desk.ClearStore();
        desk.RecordAndBackUp(more);
      }
      desk.window.run.DataNeedsSave = true;
      ASSERT_EQ(CheckForSave(desk.session, desk.window, SaveReason::RunEnded, true), SaveOutcome::Saved);
      const std::string bytes = desk.Bytes(kName);
      EXPECT_EQ(SamplesOf(bytes), Expected(0, 6, !integers, integers)) << mini << integers;
      const NotesBlock notes = ParseNotes(NotesOf(bytes));
      EXPECT_EQ(notes.integers, integers);
      EXPECT_EQ(notes.noTimeStamps, integers);
      if (!mini) continue;
      EXPECT_EQ(NumberAt<double>(bytes, 10), Desk::Stamp(0));
      EXPECT_EQ(NumberAt<double>(bytes, 18), Desk::Stamp(6)) << "the run's own end";
      EXPECT_EQ(desk.window.view.Status.Text(), "Reload 100102120000.tvd to View ");
    }
  }
}

TEST(CheckForSave, RulesDecide) {
  struct Case {
    int samples;
    std::function<void(Desk&)> change;
    SaveReason reason;
    SaveOutcome outcome;
  };
  const auto nothing = [](Desk&) {};
  const auto noAutosave = [](Desk& desk) { desk.session.settings.files.AutoSaveStandAlone = false; };
  const auto client = [](Desk& desk) {
    desk.session.settings.files.AutoSaveStandAlone = false;
    desk.window.Mode = SessionMode::Client;
  };
  const auto miniWithoutBackup = [](Desk& desk) {
    desk.session.settings.files.MiniServer = true;
    desk.session.settings.files.DiskBackUp = false;
  };
  for (const Case& c : {Case{3, nothing, SaveReason::RunEnded, SaveOutcome::Saved},
                        Case{1, nothing, SaveReason::RunEnded, SaveOutcome::NotWanted},
                        Case{3, noAutosave, SaveReason::RunEnded, SaveOutcome::Unsaved},
                        Case{3, noAutosave, SaveReason::Asked, SaveOutcome::Saved},
                        Case{3, client, SaveReason::RunEnded, SaveOutcome::Saved},
                        Case{3, miniWithoutBackup, SaveReason::RunEnded, SaveOutcome::NotWanted}}) {
    Desk desk;
    desk.Record(c.samples);
    c.change(desk);
    desk.SettleLog();
    EXPECT_EQ(CheckForSave(desk.session, desk.window, c.reason, true), c.outcome) << c.samples;
  }
}

TEST(CheckForSave, EqualityWithTheThresholdSavesAtATurnoverButNotAtAStop) {
  for (const auto& [rule, edge] : {std::pair(1, 102.25), std::pair(-1, 0.25)}) {  // the highest and the lowest value
    Desk desk;
    desk.Record(3);
    desk.session.settings.files.SaveIF = rule;
    desk.session.settings.files.SaveIFVal = edge;
    desk.SettleLog();
    EXPECT_TRUE(SaveIfAtTurnover(desk.window));
    EXPECT_EQ(CheckForSave(desk.session, desk.window, SaveReason::RunEnded, true), SaveOutcome::NotWanted);
    desk.session.settings.files.SaveIFVal -= 0.25 * rule;
    desk.SettleLog();
    EXPECT_EQ(CheckForSave(desk.session, desk.window, SaveReason::RunEnded, true), SaveOutcome::Saved);
  }
}

TEST(CheckForSave, TwoSamplesAreToldOrSavedUnderTheBadName) {
  Desk desk;
  desk.Record(2);
  EXPECT_EQ(CheckForSave(desk.session, desk.window, SaveReason::RunEnded, true), SaveOutcome::Saved);
  EXPECT_EQ(SamplesOf(desk.Bytes("/station/Data/BADFILE")), Expected(0, 1));
  desk.session.settings.program.ShowMsgBox = true;
  EXPECT_EQ(CheckForSave(desk.session, desk.window, SaveReason::RunEnded, true), SaveOutcome::Unsaved);
  EXPECT_TRUE(desk.host.dialogs.HasShown("There is not enough data to save."));
}

TEST(CheckForSave, ThePersonChoosesTheNameOrCancels) {
  Desk desk;
  desk.Record(3);
  Settings& settings = desk.session.settings;
  settings.files.PromptBeforeSaving = settings.program.ShowMsgBox = settings.files.OrganizeByMonth =
      settings.files.OrganizeByDay = true;
  desk.host.dialogs.ChooseFileNext(std::nullopt);
  EXPECT_EQ(CheckForSave(desk.session, desk.window, SaveReason::RunEnded, true), SaveOutcome::Unsaved);
  EXPECT_TRUE(desk.host.dialogs.HasShown("Home  Save Data File (Cancel to Abort Save)"));
  EXPECT_FALSE(desk.host.disk.FolderExists("/station/Data/Home/1001"));
  EXPECT_TRUE(desk.host.disk.FolderExists("/station/Data/Home"));

  desk.host.dialogs.ChooseFileNext("/station/mine.tvd");
  EXPECT_EQ(CheckForSave(desk.session, desk.window, SaveReason::RunEnded, true), SaveOutcome::Saved);
  EXPECT_TRUE(desk.Exists("/station/mine.tvd"));

  const int asked = desk.host.dialogs.Questions();
  settings.program.ShowMsgBox = false;
  EXPECT_EQ(CheckForSave(desk.session, desk.window, SaveReason::RunEnded, true), SaveOutcome::Saved);
  EXPECT_EQ(desk.host.dialogs.Questions(), asked) << "with boxes off nothing waits for a person";
}

TEST(SaveView, SavesTheStretchInViewAndPutsTheHeaderBack) {
  Desk desk;
  desk.Record(10);
  desk.window.header.author = "Before              ";
  desk.window.chart.XAxisMin = Desk::Stamp(2) + 1e-6;
  desk.window.chart.XAxisMax = Desk::Stamp(6) - 1e-6;
  desk.window.notations.slots[0] = {0, 4, "event", 1};
  desk.window.notations.count = 1;
  desk.host.dialogs.ChooseFileNext("/station/view.tvd");
  ASSERT_EQ(SaveView(desk.session, desk.window), SaveOutcome::Saved);
  const std::string bytes = desk.Bytes("/station/view.tvd");
  EXPECT_EQ(SamplesOf(bytes), Expected(3, 6));
  EXPECT_EQ(NumberAt<double>(bytes, 10), Desk::Stamp(3));
  EXPECT_EQ(NumberAt<double>(bytes, 18), Desk::Stamp(5));
  const NotesBlock notes = ParseNotes(NotesOf(bytes));
  EXPECT_EQ(notes.notations.slots[0].index, 1);
  EXPECT_EQ(notes.metadata.Records().at(0).name, "Modified Save: 100102120000");
  EXPECT_EQ(notes.metadata.Records().at(0).value, "Local Name:Home Observer:A. Observer");
  EXPECT_EQ(desk.window.header.start, 0);

  desk.window.chart.XAxisMax = desk.window.chart.XAxisMin;
  EXPECT_EQ(SaveView(desk.session, desk.window), SaveOutcome::Unsaved);
}

TEST(SaveView, IsNoSaveOfTheLog) {
  StoppedRun run;
  run.session.settings.program.ShowMsgBox = true;
  run.window.chart.XAxisMin = Desk::Stamp(0);
  run.window.chart.XAxisMax = Desk::Stamp(2);
  SaveOutcome log = SaveOutcome::Saved;
  run.host.dialogs.whileAsking = [&](const SimDialogs::Box&) {
    log = CheckForSave(run.session, run.window, SaveReason::RunEnded, false);
  };
  ASSERT_EQ(SaveView(run.session, run.window), SaveOutcome::Saved);
  EXPECT_EQ(log, SaveOutcome::Unsaved) << "the log waits until the view has its name";
  EXPECT_EQ(SamplesOf(run.Bytes(kName)), Expected(0, 2));
  EXPECT_TRUE(run.window.run.DataNeedsSave);
  EXPECT_EQ(run.Marker(), "Running");

  constexpr const char* kLog = "/station/Data/100102120000_2.tvd";
  ASSERT_EQ(CheckForSave(run.session, run.window, SaveReason::RunEnded, false), SaveOutcome::Saved);
  EXPECT_EQ(SamplesOf(run.Bytes(kLog)), Expected(0, 4)) << "beside the view";
  EXPECT_EQ(SamplesOf(run.Bytes(kName)), Expected(0, 2));
  std::error_code error;
  run.host.disk.Remove(kName, error);
  run.window.save.SavedAs = kName;
  run.host.disk.Put(kName, "the log");
  ASSERT_EQ(SaveView(run.session, run.window), SaveOutcome::Saved);
  EXPECT_EQ(run.Bytes(kName), "the log") << "a view never takes the place of the log";
}

}  // namespace
}  // namespace tarvolt
