#include "core/run/trigger_run.h"

#include <gtest/gtest.h>

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

  TriggerDefinition& Trigger(int number) { return triggers.at(number - 1); }

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
  Trigger(10).Threshold = 5;
  Trigger(10).MinDuration = 3;
  Trigger(10).Action = "Execute";
  Trigger(10).Parameter = "notify --at[SAMPLE NUMBER] [DATE TIME]";
  Record(7);
  EXPECT_TRUE(Started().empty());
  Record(20);
  EXPECT_EQ(Started(), std::vector<std::string>{"notify --at 7 100102120000"});
}

TEST_F(TriggerRunTest, OnlyChannelsThatAreTestedAndWatchedFire) {
  for (const int number : {1, 2, 3}) {
    Trigger(number).Threshold = -3;
    Trigger(number).TriggerBelowThreshold = true;
    Trigger(number).Action = "EXECUTE";
    Trigger(number).Parameter = "program " + NumberText(std::int64_t{number});
  }
  station.Set("CHTrigger1", "0100000000").Set("ChTriggerEnabled1", true);
  station.Set("CHTrigger0", "1000000000");
  Record(10);
  EXPECT_EQ(Started(), std::vector<std::string>{"program 2"});
}

TEST_F(TriggerRunTest, ThresholdsAreHeldAgainstTheValueWithoutItsOffset) {
  Trigger(1).Threshold = 100;
  Trigger(1).Action = "EXECUTE";
  Trigger(1).Parameter = "program";
  station.Set("UseOffsets", true).Set("Channel0Offset", "500");
  Record(10);
  EXPECT_EQ(station.Chart().GetValue(0, 9), 509);
  EXPECT_TRUE(Started().empty());
}

TEST_F(TriggerRunTest, AProgramThatCannotStartIsToldAndTheRunGoesOn) {
  station.host.processes.RefuseStarts("No such file");
  Trigger(2).Threshold = 3;
  Trigger(2).Action = "EXECUTE";
  Trigger(2).Parameter = "nowhere";
  Trigger(2).ShowInSessionLog = true;
  Trigger(2).Notation = "Over three";
  Record(10);
  EXPECT_TRUE(station.Logged("Trigger 2 could not start \"nowhere\": No such file"));
  EXPECT_TRUE(station.Logged("Over three")) << "its note is its own affair";
  EXPECT_EQ(station.Run().Dcount, 10);
}

TEST_F(TriggerRunTest, OneShotFiresOnceInEachRun) {
  Trigger(1).Threshold = 0;
  Trigger(1).OneShot = true;
  Trigger(1).Action = "EXECUTE";
  Trigger(1).Parameter = "program";
  station.uds.Measures([](std::int64_t set) { return std::vector<double>{set % 2 == 0 ? 1.0 : -1.0, 0}; });
  Record(10);
  EXPECT_EQ(Started().size(), 1u);
  station.StopChart();
  Record(10);
  EXPECT_EQ(Started().size(), 2u);
}

TEST_F(TriggerRunTest, NotationsStandAtTheirSampleInTheFileOfTheirLog) {
  Trigger(1).Threshold = 7;
  Trigger(1).Annotate = true;
  Trigger(1).Notation = "Seven";
  Trigger(2).Threshold = -13;
  Trigger(2).TriggerBelowThreshold = true;
  Trigger(2).Annotate = true;
  Trigger(2).Notation = "end \xFF *]]* [SAMPLE NUMBER]";
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
  Trigger(1).Threshold = 25;
  Trigger(1).Annotate = true;
  Trigger(1).Notation = "here";
  station.Set("MiniServer", true).Set("ChartWidth", "1").Set("DiskBackUp", true);
  Record(40);
  EXPECT_LT(station.Chart().Count(), 20);
  station.StopChart();
  EXPECT_EQ(station.OnlySaved(), Ramp(40));
  EXPECT_EQ(NotationsIn(station.FilesSaved()[0]), std::vector<std::string>{"0@25 here"});
}

TEST_F(TriggerRunTest, TheHundredAndSecondNotationTakesTheLastSlot) {
  Trigger(1).Threshold = 0;
  Trigger(1).Annotate = true;
  Trigger(1).Notation = "n[SAMPLE NUMBER]";
  station.uds.Measures([](std::int64_t set) { return std::vector<double>{set % 2 == 0 ? 1.0 : -1.0, 0}; });
  Record(300);
  const Notations& shown = station.Form().Window().notations;
  EXPECT_EQ(shown.count, 100);
  EXPECT_EQ(shown.slots[99].text, "n 198");
  EXPECT_EQ(shown.slots[100].text, "n 298");
}

TEST_F(TriggerRunTest, ANoteInTheStatusBarStaysForItsTime) {
  Trigger(1).Threshold = 3;
  Trigger(1).ShowInStatusBar = true;
  Trigger(1).Notation = "Burst";
  Record(5);
  EXPECT_EQ(station.View().Status.Text(), "Burst");
  station.RunFor(108s);
  EXPECT_EQ(station.View().Status.Text(), "Burst");
  station.RunFor(3s);
  EXPECT_EQ(station.View().Status.Text(), "");
}

TEST_F(TriggerRunTest, TheObserverLogIsOpenedForANote) {
  Trigger(1).Threshold = 3;
  Trigger(1).ShowInObLog = true;
  Trigger(1).Notation = "Burst";
  Trigger(2).Threshold = 5;
  Trigger(2).ShowInObLog = true;
  Trigger(2).Notation = "More";
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
  Trigger(4).Threshold = 3;
  Trigger(4).ShowInObLog = Trigger(4).ShowInSessionLog = true;
  Trigger(4).Notation = "Burst";
  Record(5);
  const std::string log = station.Log();
  const std::size_t note = log.find("Trigger 4 for the observer log, which is not open: Burst");
  ASSERT_NE(note, std::string::npos) << log;
  EXPECT_EQ(log.find("Burst"), log.rfind("Burst")) << log;
}

TEST_F(TriggerRunTest, OutputsAreOpenedOnceAndDrivenAsTold) {
  struct Case {
    const char* action;
    const char* command;
    int channel;
    double value;
    const char* call;  // null for none
  };
  NotedOutputs outputs;
  const std::vector<Case> cases = {{"LJU3", "DO", 4, 1, "U3 D4 1"},      {"LJU3", "ao", 1, 2.5, "U3 A1 2.5"},
                                   {"LJU12", "DO", 3, 0, "U12 D3 0"},    {"LJU12", "AO", 1, 4.5, "U12 A 0 4.5"},
                                   {"LJU12", "AO", 0, 2, "U12 A 2 4.5"}, {"lju3", "XX", 0, 1, nullptr},
                                   {"LJU12", "AO", 2, 5, nullptr}};
  for (std::size_t i = 0; i < cases.size(); ++i) {
    TriggerDefinition& trigger = triggers[i];
    trigger.Threshold = static_cast<double>(i);
    trigger.Action = cases[i].action;
    trigger.LJU3command = trigger.LJU12command = cases[i].command;
    trigger.LJU3channel = static_cast<std::int16_t>(cases[i].channel);
    trigger.LJU12channel = cases[i].channel;
    trigger.LJU3value = trigger.LJU12value = cases[i].value;
  }
  Boot();
  Runner().UseOutputs(outputs);
  station.StartChart();
  EXPECT_EQ(outputs.calls, (std::vector<std::string>{"open 3", "open 4"})) << "each device once";
  outputs.calls.clear();
  Record(10);
  std::vector<std::string> expected;
  for (const Case& c : cases) {
    if (c.call != nullptr) expected.emplace_back(c.call);
  }
  EXPECT_EQ(outputs.calls, expected);
}

TEST_F(TriggerRunTest, PinsOfTheListBecomePinsOfTheConnector) {
  struct Case {
    int address, row;
    double value;
    const char* call;
  };
  const std::vector<Case> cases = {{0x378, 1, 1, "pin 888 1 high"},
                                   {0x378, 9, 0, "pin 888 9 low"},
                                   {0x278, 10, 1, "pin 632 14 high"},
                                   {0x378, 11, 2, "pin 888 16 low"},
                                   {0x378, 12, 1, "pin 888 17 high"},
                                   {201, 2, 1, "pin 201 2 high"},
                                   {200, 2, 1, nullptr}};
  std::vector<std::string> expected;
  for (std::size_t i = 0; i < cases.size(); ++i) {
    triggers[i].Threshold = static_cast<double>(i);
    triggers[i].Action = "LPT";
    triggers[i].LPTnum = cases[i].address;
    triggers[i].LPTpin = cases[i].row;
    triggers[i].LPTvalue = cases[i].value;
    if (cases[i].call != nullptr) expected.emplace_back(cases[i].call);
  }
  NotedOutputs outputs;
  Boot();
  Runner().UseOutputs(outputs);
  station.StartChart();
  outputs.calls.clear();
  Record(10);
  EXPECT_EQ(outputs.calls, expected);
}

TEST_F(TriggerRunTest, AnOutputThatIsNotThereIsToldAndTheRunGoesOn) {
  Trigger(3).Threshold = 2;
  Trigger(3).Action = "LJU12";
  Trigger(4).Threshold = 2;
  Trigger(4).Action = "LPT";
  Trigger(4).LPTnum = 200;
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
  const std::string told = "Trigger 3 could not set a LabJack U12: unplugged";
  const std::string log = station.Log();
  EXPECT_NE(log.find(told), std::string::npos);
  EXPECT_EQ(log.find(told), log.rfind(told));
  EXPECT_EQ(station.Run().Dcount, 20);
}

TEST_F(TriggerRunTest, WhatTheDialogSettlesIsInForceAtOnceAndAfterARestart) {
  Trigger(1).Threshold = 2;
  Trigger(1).Action = "EXECUTE";
  Trigger(1).Parameter = "first";
  Record(5);
  Trigger(2).Threshold = 8;
  Trigger(2).Action = "EXECUTE";
  Trigger(2).Parameter = "second";
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
  Trigger(1).Notation = "before";
  Boot();
  station.host.disk.SetReadOnly("/station", true);
  Trigger(1).Notation = "after";
  const Outcome taken = Runner().TakeOver(triggers, {});
  ASSERT_FALSE(taken);
  EXPECT_FALSE(taken.Words().empty());
  EXPECT_EQ(Runner().oTriggers()[0].Notation, "before");
  EXPECT_EQ(station.TheSession().settings.channels.CHTrigger[0], "1111111111");
}

TEST_F(TriggerRunTest, TheFileFollowsTheProfile) {
  Trigger(1).Notation = "of the station";
  Boot();
  Trigger(1).Notation = "of the profile";
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
