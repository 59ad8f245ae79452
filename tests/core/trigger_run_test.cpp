// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/run/trigger_run.h"

#include <gtest/gtest.h>

#include <utility>

#include "automation/triggers/trigger_file.h"
#include "files/format/data_file_reader.h"
#include "station/station.h"
#include "text/number.h"

namespace tarvolt {
namespace {

using namespace std::chrono_literals;

constexpr const char* kFile = "/station/Triggers.ini";
constexpr const char* kCopy = "/station/TempTriggers.ini";

/// Outputs that note what they are asked.
class NotedOutputs final : public TriggerOutputs {
 public:
  Outcome Open(TriggerAction device) override {
    return Note("open " + NumberText(std::int64_t{static_cast<int>(device)}));
  }
  Outcome SetPin(int address, int pin, bool high) override {
    return Note("pin " + Text(address) + " " + Text(pin) + (high ? " high" : " low"));
  }
  Outcome SetU3Digital(int channel, double value) override { return Note("U3 D" + Text(channel) + " " + Text(value)); }
  Outcome SetU3Analog(int channel, double volts) override { return Note("U3 A" + Text(channel) + " " + Text(volts)); }
  Outcome SetU12Digital(int channel, double value) override {
    return Note("U12 D" + Text(channel) + " " + Text(value));
  }
  Outcome SetU12Analog(double level0, double level1) override {
    return Note("U12 A " + Text(level0) + " " + Text(level1));
  }

  std::vector<std::string> calls;
  std::string problem;

 private:
  static std::string Text(double value) { return NumberText(value); }
  Outcome Note(const std::string& call) {
    calls.push_back(call);
    if (problem.empty()) return Done();
    return Failure{problem};
  }
};

/// Set n measures n on channel 1 and -n on channel 2, so that thresholds name sets.
class TriggerRunTest : public ::testing::Test {
 protected:
  TriggerRunTest() {
    for (TriggerDefinition& trigger : triggers) trigger.Threshold = 1e9;  // never, unless a test says so
    station.Set("CHTrigger0", "1111111111").Set("ChTriggerEnabled0", true);
  }

  TriggerDefinition& Trigger(int number, double threshold) {
    triggers.at(number - 1).Threshold = threshold;
    return triggers.at(number - 1);
  }
  TriggerDefinition& Starts(int number, double threshold, const std::string& program) {
    TriggerDefinition& trigger = Trigger(number, threshold);
    trigger.Action = "Execute";
    trigger.Parameter = program;
    return trigger;
  }
  TriggerDefinition& Notes(int number, double threshold, const char* text, bool TriggerDefinition::*where) {
    TriggerDefinition& trigger = Trigger(number, threshold);
    trigger.*where = true;
    trigger.Notation = text;
    return trigger;
  }

  /// Set n measures 1 when it is even and -1 when it is odd.
  void Alternate() {
    station.uds.Measures([](std::int64_t set) { return std::vector<double>{set % 2 == 0 ? 1.0 : -1.0, 0}; });
  }

  /// The station comes up with the triggers in their file.
  void Boot() {
    station.host.disk.Put(kFile, FormatTriggers(triggers));
    station.Boot();
    booted = true;
  }
  void Record(int sets) {
    if (!booted) Boot();
    if (!station.Running()) station.StartChart();
    station.RunForSets(station.uds.SetsSent() + sets);
  }
  std::vector<std::string> Started() { return station.host.processes.Started(); }
  TriggerRun& Runner() { return station.Form().Triggers(); }

  /// Channel, index and text of each notation of a file.
  std::vector<std::string> NotationsIn(const std::string& file) {
    std::vector<std::string> texts;
    DataFileReader reader(station.host.disk);
    if (reader.Open(file) != OpenResult::Ok) return texts;
    const Notations& read = reader.Notes().notations;
    for (int slot = 0; slot < read.count; ++slot) texts.push_back(Told(read.slots[slot]));
    return texts;
  }
  static std::string Told(const Notation& notation) {
    return NumberText(std::int64_t{notation.channel}) + "@" + NumberText(std::int64_t{notation.index}) + " " +
           notation.text;
  }

  TriggerDefinitions triggers;
  Station station;
  bool booted = false;
};

TEST_F(TriggerRunTest, AFiringStartsItsProgramOnceWithItsTagsExpanded) {
  Starts(10, 5, "notify --at[SAMPLE NUMBER] [DATE TIME]").MinDuration = 3;
  Record(7);
  EXPECT_TRUE(Started().empty());
  Record(20);
  EXPECT_EQ(Started(), std::vector<std::string>{"notify --at 7 100102120000"});
}

TEST_F(TriggerRunTest, OnlyChannelsThatAreTestedAndWatchedFire) {
  for (const int number : {1, 2, 3}) {
    Starts(number, -3, "program " + NumberText(std::int64_t{number})).TriggerBelowThreshold = true;
  }
  station.Set("CHTrigger1", "0100000000").Set("ChTriggerEnabled1", true);
  station.Set("CHTrigger0", "1000000000");
  Record(10);
  EXPECT_EQ(Started(), std::vector<std::string>{"program 2"});
}

TEST_F(TriggerRunTest, ThresholdsAreHeldAgainstTheValueWithoutItsOffset) {
  Starts(1, 100, "program");
  station.Set("UseOffsets", true).Set("Channel0Offset", "500");
  Record(10);
  EXPECT_EQ(station.Chart().GetValue(0, 9), 509);
  EXPECT_TRUE(Started().empty());
}

TEST_F(TriggerRunTest, AProgramThatCannotStartIsToldAndTheRunGoesOn) {
  station.host.processes.RefuseStarts("No such file");
  Starts(2, 3, "nowhere");
  Notes(2, 3, "Over three", &TriggerDefinition::ShowInSessionLog);
  Record(10);
  EXPECT_TRUE(station.Logged("Trigger 2 could not start \"nowhere\": No such file"));
  EXPECT_TRUE(station.Logged("Over three")) << "its note is its own affair";
  EXPECT_EQ(station.Run().Dcount, 10);
}

TEST_F(TriggerRunTest, OneShotFiresOnceInEachRun) {
  Starts(1, 0, "program").OneShot = true;
  Alternate();
  Record(10);
  EXPECT_EQ(Started().size(), 1u);
  station.StopChart();
  Record(10);
  EXPECT_EQ(Started().size(), 2u);
}

TEST_F(TriggerRunTest, NotationsStandAtTheirSampleInTheFileOfTheirLog) {
  Notes(1, 7, "Seven", &TriggerDefinition::Annotate);
  Notes(2, -13, "end \xFF *]]* [SAMPLE NUMBER]", &TriggerDefinition::Annotate).TriggerBelowThreshold = true;
  station.Set("CHTrigger1", "0100000000").Set("ChTriggerEnabled1", true).Set("CHTrigger0", "1000000000");
  station.Set("MaxArrayCount", 10);
  Record(9);
  const Notations& shown = station.Form().Window().notations;
  ASSERT_EQ(shown.count, 1);
  EXPECT_EQ(Told(shown.slots[0]), "0@7 Seven");
  EXPECT_EQ(shown.slots[0].stamp, station.Chart().GetTime(7));
  Record(6);
  EXPECT_EQ(shown.count, 1) << "a new log begins without those of the last";
  station.StopChart();
  const std::vector<std::string> files = station.FilesSaved();
  ASSERT_EQ(files.size(), 2u);
  EXPECT_EQ(NotationsIn(files[0]), std::vector<std::string>{"0@7 Seven"});
  EXPECT_EQ(NotationsIn(files[1]), std::vector<std::string>{"1@3 end      3"}) << "no byte of it ends the notes";
}

TEST_F(TriggerRunTest, AMiniWindowPinsNotationsToThePlaceInTheLog) {
  Notes(1, 25, "here", &TriggerDefinition::Annotate);
  station.Set("MiniServer", true).Set("ChartWidth", "1").Set("DiskBackUp", true);
  Record(40);
  EXPECT_LT(station.Chart().Count(), 20);
  station.StopChart();
  EXPECT_EQ(station.OnlySaved(), Ramp(40));
  EXPECT_EQ(NotationsIn(station.FilesSaved()[0]), std::vector<std::string>{"0@25 here"});
}

TEST_F(TriggerRunTest, TheHundredAndSecondNotationTakesTheLastSlot) {
  Notes(1, 0, "n[SAMPLE NUMBER]", &TriggerDefinition::Annotate);
  Alternate();
  Record(300);
  const Notations& shown = station.Form().Window().notations;
  EXPECT_EQ(shown.count, 100);
  EXPECT_EQ(shown.slots[99].text, "n 198");
  EXPECT_EQ(shown.slots[100].text, "n 298");
}

TEST_F(TriggerRunTest, ANoteInTheStatusBarStaysForItsTime) {
  Notes(1, 3, "Burst", &TriggerDefinition::ShowInStatusBar);
  Record(5);
  EXPECT_EQ(station.View().Status.Text(), "Burst");
  station.RunFor(108s);
  EXPECT_EQ(station.View().Status.Text(), "Burst");
  station.RunFor(3s);
  EXPECT_EQ(station.View().Status.Text(), "");
}

TEST_F(TriggerRunTest, TheObserverLogIsOpenedForANote) {
  Notes(1, 3, "Burst", &TriggerDefinition::ShowInObLog);
  Notes(2, 5, "More", &TriggerDefinition::ShowInObLog);
  Boot();
  std::vector<std::string> entries;
  int opened = 0;
  station.Form().OLog().OnOpen([&] {
    ++opened;
    station.Form().OLog().OnEntry([&](const std::string& text, bool stamped) {
      EXPECT_TRUE(stamped);
      entries.push_back(text);
    });
  });
  Record(10);
  EXPECT_EQ(entries, (std::vector<std::string>{"Burst", "More"}));
  EXPECT_EQ(opened, 1);
  EXPECT_FALSE(station.Logged("Burst"));
}

TEST_F(TriggerRunTest, WithoutAScreenTheSessionLogHasTheObserversNoteOnce) {
  Notes(4, 3, "Burst", &TriggerDefinition::ShowInObLog).ShowInSessionLog = true;
  Record(5);
  EXPECT_TRUE(station.Logged("Trigger 4 for the observer log, which is not open: Burst"));
  EXPECT_EQ(station.LogLines("Burst"), 1) << station.Log();
}

TEST_F(TriggerRunTest, OutputsAreOpenedOnceAndDrivenAsTold) {
  struct Case {
    const char* action;
    const char* command;  // of a LabJack
    int channel;          // of a LabJack, or the address of a port
    int row;              // of the list of pins
    double value;
    const char* call;  // null for none
  };
  NotedOutputs outputs;
  const std::vector<Case> labJacks = {
      {"LJU3", "DO", 4, 0, 1, "U3 D4 1"},      {"LJU3", "ao", 1, 0, 2.5, "U3 A1 2.5"},
      {"LJU12", "DO", 3, 0, 0, "U12 D3 0"},    {"LJU12", "AO", 1, 0, 4.5, "U12 A 0 4.5"},
      {"LJU12", "AO", 0, 0, 2, "U12 A 2 4.5"}, {"lju3", "XX", 0, 0, 1, nullptr},
      {"LJU12", "AO", 2, 0, 5, nullptr}};
  // Rows of the list become pins of the connector.
  const std::vector<Case> pins = {{"LPT", "", 0x378, 1, 1, "pin 888 1 high"},
                                  {"LPT", "", 0x378, 9, 0, "pin 888 9 low"},
                                  {"LPT", "", 0x278, 10, 1, "pin 632 14 high"},
                                  {"LPT", "", 0x378, 11, 2, "pin 888 16 low"},
                                  {"LPT", "", 0x378, 12, 1, "pin 888 17 high"},
                                  {"LPT", "", 201, 2, 1, "pin 201 2 high"},
                                  {"LPT", "", 200, 2, 1, nullptr}};
  Boot();
  Runner().UseOutputs(outputs);
  std::vector<std::string> opened;
  const auto drive = [&](const std::vector<Case>& cases) {
    std::vector<std::string> expected;
    for (std::size_t i = 0; i < cases.size(); ++i) {
      TriggerDefinition& trigger = Trigger(static_cast<int>(i + 1), static_cast<double>(station.uds.SetsSent() + i));
      trigger.Action = cases[i].action;
      trigger.LJU3command = trigger.LJU12command = cases[i].command;
      trigger.LJU3channel = static_cast<std::int16_t>(cases[i].channel);
      trigger.LJU12channel = trigger.LPTnum = cases[i].channel;
      trigger.LPTpin = cases[i].row;
      trigger.LJU3value = trigger.LJU12value = trigger.LPTvalue = cases[i].value;
      if (cases[i].call != nullptr) expected.emplace_back(cases[i].call);
    }
    EXPECT_TRUE(Runner().TakeOver(triggers, {{"1111111111"}, {true}}));
    outputs.calls.clear();
    station.StartChart();
    opened = std::exchange(outputs.calls, {});
    Record(10);
    EXPECT_EQ(outputs.calls, expected);
    station.StopChart();
  };
  drive(labJacks);
  EXPECT_EQ(opened, (std::vector<std::string>{"open 3", "open 4"})) << "each device once";
  drive(pins);
}

TEST_F(TriggerRunTest, AnOutputThatIsNotThereIsToldAndTheRunGoesOn) {
  Trigger(3, 2).Action = "LJU12";
  Trigger(4, 2).Action = "LPT";
  triggers[3].LPTnum = 200;
  Record(5);
  EXPECT_TRUE(station.Logged("Trigger 3 drives a LabJack U12, which cannot be used: this version has no way to it"));
  EXPECT_FALSE(station.Logged("Trigger 3 could not set")) << "it is told once a run";
  EXPECT_FALSE(station.Logged("parallel port")) << "an address that is no port is nothing to drive";
  EXPECT_TRUE(Runner().oTriggers()[2].Enabled);
  NotedOutputs outputs;
  Runner().UseOutputs(outputs);
  station.StopChart();
  EXPECT_FALSE(Runner().oTriggers()[2].Enabled);
  EXPECT_FALSE(Runner().oTriggers()[2].Busy);
  station.uds.Measures([](std::int64_t set) { return std::vector<double>{set % 2 == 0 ? 9.0 : 0.0, 0}; });
  Record(2);
  outputs.problem = "unplugged";
  Record(18);
  EXPECT_GT(outputs.calls.size(), 3u);
  EXPECT_EQ(station.LogLines("Trigger 3 could not set a LabJack U12: unplugged"), 1);
  EXPECT_EQ(station.Run().Dcount, 20);
}

TEST_F(TriggerRunTest, WhatTheDialogSettlesIsInForceAtOnceAndAfterARestart) {
  Starts(1, 2, "first");
  Record(5);
  Starts(2, 8, "second");
  TriggerChannels channels{station.TheSession().settings.channels.CHTrigger, {true, true}};
  channels.CHTrigger[1] = "0000000100";
  ASSERT_TRUE(Runner().TakeOver(triggers, channels));
  Record(10);
  EXPECT_EQ(Started(), (std::vector<std::string>{"first", "second"})) << "what did not change is not armed anew";
  const std::string file = *station.host.disk.Contents(kFile);
  station.ShutDown().Boot();
  EXPECT_EQ(station.TheSession().settings.files.DefaultTriggerFile, kCopy);
  EXPECT_EQ(Runner().oTriggers()[1].Parameter, "second");
  EXPECT_EQ(station.TheSession().settings.channels.CHTrigger[1], "0000000100");
  EXPECT_EQ(*station.host.disk.Contents(kFile), file) << "the file that was loaded stays as it was";
}

TEST_F(TriggerRunTest, ADiskThatRefusesLeavesTheTriggersInForce) {
  triggers[0].Notation = "before";
  Boot();
  station.host.disk.SetReadOnly("/station", true);
  triggers[0].Notation = "after";
  const Outcome taken = Runner().TakeOver(triggers, {});
  ASSERT_FALSE(taken);
  EXPECT_FALSE(taken.Words().empty());
  EXPECT_EQ(Runner().oTriggers()[0].Notation, "before");
  EXPECT_EQ(station.TheSession().settings.channels.CHTrigger[0], "1111111111");
}

TEST_F(TriggerRunTest, TheFileFollowsTheProfile) {
  triggers[0].Notation = "of the station";
  Boot();
  triggers[0].Notation = "of the profile";
  ASSERT_TRUE(Runner().SaveoTriggers(triggers, "/station/sun.ini"));
  SimDisk& disk = station.host.disk;
  disk.Put("/station/sun.tvp", "DefaultTriggerFile = /station/sun.ini;\r\n");
  disk.Put("/station/bad.tvp", "DefaultTriggerFile = /station/bad.ini;\r\n");
  disk.Put("/station/gone.tvp", "DefaultTriggerFile = /station/gone.ini;\r\n");
  disk.Put("/station/bad.ini", "no trigger\r\n");
  station.StartChart();
  station.Form().Profiles().Load("/station/sun.tvp");
  EXPECT_EQ(Runner().oTriggers()[0].Notation, "of the station") << "a run keeps its triggers";
  station.StopChart().StartChart().StopChart();
  EXPECT_EQ(Runner().oTriggers()[0].Notation, "of the profile");
  for (const char* profile : {"/station/bad.tvp", "/station/gone.tvp"}) {
    station.Form().Profiles().Load(profile);
    EXPECT_EQ(Runner().oTriggers()[0].Notation, "of the profile") << profile;
  }
  EXPECT_TRUE(station.Logged("Could not load the triggers of /station/bad.ini: it holds no trigger"));
}

}  // namespace
}  // namespace tarvolt
