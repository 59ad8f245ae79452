// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/triggers/trigger_object.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "automation/triggers/trigger_slots.h"

namespace tarvolt {
namespace {

clsTriggerObject Armed(double threshold, int minDuration = 1, int minReset = 1, int rest = 0) {
  clsTriggerObject trigger;
  trigger.Enabled = true;
  trigger.Threshold = threshold;
  trigger.MinDuration = minDuration;
  trigger.MinResetSamples = minReset;
  trigger.RestPeriod = rest;
  return trigger;
}

/// One letter a sample: "F" for a firing, else the state behind it, "a"rmed, "b"usy, "r"esting or "o"ff.
std::string Judge(clsTriggerObject& trigger, const std::vector<double>& samples) {
  std::string states;
  for (const double sample : samples) {
    if (trigger.Update(sample) != 0) {
      states += 'F';
    } else if (!trigger.Enabled) {
      states += 'o';
    } else {
      states += trigger.Resting ? 'r' : trigger.Busy ? 'b' : 'a';
    }
  }
  return states;
}

std::vector<double> Levels(const std::string& text) {
  std::vector<double> samples;
  for (const char c : text) samples.push_back(c == '#' ? 20 : 0);
  return samples;
}

TEST(TriggerObject, EachStateIsLeftAsItsRuleSays) {
  struct Case {
    const char* what;
    int duration, reset, rest;
    const char* samples;  // "#" past the threshold
    const char* states;
  };
  for (const Case& c : {
           Case{"fires at the first sample past it", 0, 1, 0, ".#", "aF"},
           Case{"a duration of 1 is none", 1, 1, 0, ".#", "aF"},
           Case{"a short run is forgotten at the first failing sample", 5, 1, 0, "####.####.#####", "aaaaaaaaaaaaaaF"},
           Case{"busy while the samples stay", 2, 1, 0, "######", "aFbbbb"},
           Case{"a reset of 0 takes one sample", 1, 0, 0, "#.#", "FaF"},
           Case{"a reset takes failing samples in a row", 1, 3, 0, "#..#..#...#", "FbbbbbbbbaF"},
           Case{"samples before the firing do not count to the reset", 1, 3, 0, "....#..", "aaaaFbb"},
           Case{"passing samples while busy do not count to the next firing", 3, 1, 0, "###.##.###", "aaFaaaaaaF"},
           Case{"rests, and judges the sample that ends the rest", 1, 1, 3, "#.####", "FrrrrF"},
           Case{"a rest may end in a failing sample", 1, 1, 3, "#.###..#", "FrrrraaF"},
           Case{"samples of the rest are not counted", 3, 1, 2, "###.##..###", "aaFrrraaaaF"},
       }) {
    clsTriggerObject trigger = Armed(10, c.duration, c.reset, c.rest);
    EXPECT_EQ(Judge(trigger, Levels(c.samples)), c.states) << c.what;
  }
}

TEST(TriggerObject, AValueOnTheThresholdPassesBothWays) {
  clsTriggerObject above = Armed(-2.5);
  EXPECT_EQ(Judge(above, {-2.6, -2.5}), "aF");
  clsTriggerObject below = Armed(-2.5);
  below.TriggerBelowThreshold = true;
  EXPECT_EQ(Judge(below, {-2.4, -2.5, -2.4, -9}), "aFaF");
}

TEST(TriggerObject, NotANumberPassesNoThreshold) {
  const double none = std::numeric_limits<double>::quiet_NaN();
  for (const bool lookDown : {false, true}) {
    clsTriggerObject trigger = Armed(0, 2);
    trigger.TriggerBelowThreshold = lookDown;
    EXPECT_EQ(Judge(trigger, {0, none, 0, 0, none}), "aaaFa");
  }
}

TEST(TriggerObject, OneShotLeavesItBusyAndOff) {
  clsTriggerObject trigger = Armed(10);
  trigger.OneShot = true;
  EXPECT_EQ(Judge(trigger, Levels("#..#.#")), "Fooooo");
  EXPECT_TRUE(trigger.Busy);
  trigger.CancelActions();
  EXPECT_FALSE(trigger.Busy);
  EXPECT_FALSE(trigger.Enabled) << "only a new run brings it back";
}

TEST(TriggerObject, AnOffTriggerCountsNothing) {
  clsTriggerObject trigger = Armed(10, 3);
  trigger.Enabled = false;
  EXPECT_EQ(Judge(trigger, Levels("###")), "ooo");
  trigger.Enabled = true;
  EXPECT_EQ(Judge(trigger, Levels("###")), "aaF");
}

TEST(TriggerObject, CancelActionsForgetsWhatIsUnderWay) {
  clsTriggerObject trigger = Armed(10, 3, 1, 5);
  Judge(trigger, Levels("##"));
  trigger.CancelActions();
  EXPECT_EQ(Judge(trigger, Levels("###.")), "aaFr");
  trigger.CancelActions();
  EXPECT_EQ(Judge(trigger, Levels("###.")), "aaFr");
  EXPECT_EQ(Judge(trigger, Levels("#####")), "rrrrr") << "the cancelled rest leaves nothing in the count of the next";
}

TEST(TriggerObject, TheLongestRestNeverOverflows) {
  clsTriggerObject trigger = Armed(10, std::numeric_limits<int>::min(), 1, std::numeric_limits<int>::max());
  EXPECT_EQ(Judge(trigger, Levels("#.###")), "Frrrr");
}

TEST(TriggerSlots, TheDigitsOfAChannelNameItsTriggers) {
  TriggerChannels channels;
  channels.CHTrigger.fill("0000000000");
  channels.CHTrigger[1] = "10x000000900";
  channels.CHTrigger[2] = "01";
  EXPECT_TRUE(Watches(channels, 0, 1));
  EXPECT_FALSE(Watches(channels, 1, 1));
  EXPECT_FALSE(Watches(channels, 2, 1)) << "no digit";
  EXPECT_TRUE(Watches(channels, 9, 1));
  EXPECT_TRUE(Watches(channels, 1, 2));
  EXPECT_FALSE(Watches(channels, 9, 2)) << "a text that is too short";

  EXPECT_FALSE(IsInUse(channels, 9, 8)) << "its channel is not offered";
  channels.ChTriggerEnabled[1] = true;
  EXPECT_TRUE(IsInUse(channels, 9, 8));
  EXPECT_FALSE(IsInUse(channels, 9, 1)) << "its channel is not recorded";

  SetWatches(channels, 9, 2, true);
  SetWatches(channels, 1, 2, false);
  EXPECT_EQ(channels.CHTrigger[2], "0000000001");
}

}  // namespace
}  // namespace tarvolt
