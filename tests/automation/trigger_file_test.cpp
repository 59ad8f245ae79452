// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/triggers/trigger_file.h"

#include <gtest/gtest.h>

namespace tarvolt {
namespace {

TriggerDefinition Unusual() {
  TriggerDefinition trigger;
  trigger.Action = "LJU12";
  trigger.Threshold = -0.1;
  trigger.MinDuration = 7;
  trigger.TriggerBelowThreshold = true;
  trigger.MinResetSamples = 2147483647;
  trigger.RestPeriod = 3;
  trigger.Parameter = " \"/opt/a b/x\" --set A=B {1} ; rm -rf $HOME ";
  trigger.OneShot = true;
  trigger.LJU3command = "AO";
  trigger.LJU3channel = -32768;
  trigger.LJU3value = 4.95;
  trigger.LJU12command = "AO";
  trigger.LJU12channel = 1;
  trigger.LJU12value = 1e-300;
  trigger.LPTnum = 0x378;
  trigger.LPTpin = 12;
  trigger.LPTvalue = 1;
  trigger.Annotate = true;
  trigger.ShowInObLog = true;
  trigger.ShowInSessionLog = true;
  trigger.ShowInStatusBar = true;
  trigger.Notation =
      "{2}=Sturm \xFC"
      "ber [DATE TIME]";
  return trigger;
}

TEST(TriggerFile, IsWrittenKeyByKeyInItsOrder) {
  TriggerDefinitions triggers;
  triggers[1] = Unusual();
  const std::string text = FormatTriggers(triggers);
  EXPECT_TRUE(*ParseTriggers(text) == triggers);
  const std::size_t second = text.find("{2}\r\n");
  EXPECT_EQ(text.substr(second, text.find("{3}\r\n") - second),
            "{2}\r\nACTION=LJU12\r\nTHRESHOLD=-0.1\r\nMINDURATION=7\r\nTRIGGERBELOWTHRESHOLD=True\r\n"
            "MINRESETSAMPLES=2147483647\r\nRESTPERIOD=3\r\n"
            "PARAMETER= \"/opt/a b/x\" --set A=B {1} ; rm -rf $HOME \r\nONESHOT=True\r\n"
            "LJU3COMMAND=AO\r\nLJU3CHANNEL=-32768\r\nLJU3VALUE=4.95\r\n"
            "LJU12COMMAND=AO\r\nLJU12CHANNEL=1\r\nLJU12VALUE=1E-300\r\nLPTNUM=888\r\nLPTPIN=12\r\nLPTVALUE=1\r\n"
            "ANNOTATE=True\r\nSHOWINOBLOG=True\r\nSHOWINSESSIONLOG=True\r\nSHOWINSTATUSBAR=True\r\n"
            "NOTATION={2}=Sturm \xFC"
            "ber [DATE TIME]\r\n");
}

TEST(TriggerFile, ATextCannotMakeLinesOfItsOwn) {
  TriggerDefinitions triggers;
  triggers[0].Notation = "a\r\n{2}\nACTION=EXECUTE";
  const auto read = ParseTriggers(FormatTriggers(triggers));
  ASSERT_TRUE(read);
  EXPECT_EQ((*read)[0].Notation, "a  {2} ACTION=EXECUTE");
  EXPECT_EQ((*read)[1].Action, "");
}

TEST(TriggerFile, IsReadLeniently) {
  const auto read = ParseTriggers(
      "THRESHOLD=99\n"  // of no trigger
      " {3} \n"
      " notation =from = to\n"
      "Threshold= 1 000.5 mV\n"
      "LPTNUM=&H378\r\n"
      "ONESHOT=true\n"
      "ANNOTATE=yes\n"
      "COLOUR=red\n"
      "=5\n"
      "no key\n"
      "{11}\nNOTATION=eleven\n{0}\nNOTATION=none\n{-1}\nNOTATION=below\n{x}\nNOTATION=unread\n"
      "{10}\nMINDURATION=4");
  ASSERT_TRUE(read);
  TriggerDefinitions expected;
  expected[2].Notation = "from = to";
  expected[2].Threshold = 1000.5;
  expected[2].LPTnum = 0x378;
  expected[2].OneShot = true;
  expected[9].MinDuration = 4;
  EXPECT_TRUE(*read == expected) << FormatTriggers(*read);
  const auto odd = ParseTriggers("3}{\nNOTATION=three\n4{}\nNOTATION=four {5}\nDURATION{6}=1\nREST=2");
  ASSERT_TRUE(odd);
  EXPECT_EQ((*odd)[2].Notation, "three");
  EXPECT_EQ((*odd)[3].Notation, "four {5}") << "no other trigger begins in a text";
}

TEST(TriggerFile, ATextWithoutATriggerIsRefused) {
  for (const char* text : {"", "Tarvolt\r\nACTION=EXECUTE\r\n", "{11}\r\nACTION=EXECUTE\r\n"}) {
    EXPECT_FALSE(ParseTriggers(text)) << text;
  }
}

}  // namespace
}  // namespace tarvolt
