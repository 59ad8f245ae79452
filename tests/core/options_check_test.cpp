// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/station/options_check.h"

#include <gtest/gtest.h>

#include "config/settings_table.h"
#include "station/station.h"

namespace tarvolt {
namespace {

constexpr SoundFacts kNoSound{};

// Settings that a station without a sound card has when they are in order.
Settings Fine() {
  Settings settings;
  settings.channels.Dsrc = {20, 21};
  return settings;
}

TEST(OptionsCheck, RefusesWhatIsOutsideItsLimitsAndNamesTheField) {
  ASSERT_TRUE(CheckOptions(Fine(), kNoSound).empty());
  constexpr const char* kFactor = "Cannot set the Power Detection Factor to zero.";
  constexpr const char* kTiming = "Sound Card Timing Correction factor must be greater than 0.5 and less than 1.5.";
  constexpr const char* kPort = "A port is a number from 1 to 65535.";
  struct Case {
    const char* key;
    const char* value;
    const char* words;
  };
  for (const Case& c :
       {Case{"SampleRate", "9.99", "Sample Rate must be 10 milliseconds or greater."},
        Case{"MaxArrayCount", "9", "Max Samples must be at least 10"},
        Case{"MaxDuration", "0.0166", "Max duration must be set to at least one minute."},
        Case{"PwrMultiL", "0", kFactor}, Case{"PwrMultiR", "0", kFactor}, Case{"SCTadjust", "0.5", kTiming},
        Case{"SCTadjust", "1.5", kTiming}, Case{"LocalServerPort", "65536", kPort}, Case{"UDSport", "0", kPort},
        Case{"TVudsPort", "-1", kPort},
        Case{"Dsrc1", "2",
             "You have selected a sound channel as a data source and no sound card is available. Please select a "
             "different data source for channel 2."}}) {
    Settings settings = Fine();
    ASSERT_FALSE(ReadOptionTexts({{c.key, c.value}}, settings)) << c.key;
    const auto problems = CheckOptions(settings, kNoSound);
    ASSERT_EQ(problems.size(), 1u) << c.key << " " << c.value;
    EXPECT_EQ(problems[0].text, c.words);
    EXPECT_EQ(problems[0].key, c.key);
  }
}

TEST(OptionsCheck, TakesTheLimitsThemselves) {
  Settings settings = Fine();
  const OptionTexts limits = {{"SampleRate", "10"},  {"MaxArrayCount", "10"}, {"MaxDuration", "0.0166666667"},
                              {"SCTadjust", "1,49"}, {"TVudsPort", " "},      {"LocalClientPort", "0"}};
  ASSERT_FALSE(ReadOptionTexts(limits, settings));
  EXPECT_TRUE(CheckOptions(settings, kNoSound).empty());
  EXPECT_EQ(settings.card.SCTadjust, 1.49) << "a comma is a decimal point as well";
}

TEST(OptionsCheck, FieldsThatAnotherSwitchesOnAreCheckedOnlyThen) {
  Settings settings = Fine();
  settings.timing.RestartTime = "25:00:00";
  settings.net.LocalClientPort = 32001;
  settings.net.LocalServerPort = 6300;
  EXPECT_TRUE(CheckOptions(settings, kNoSound).empty());
  settings.net.AutoSelectClientPort = false;
  EXPECT_EQ(CheckOptions(settings, kNoSound).front().text,
            "Please input a Client Port value between 1 and 32000. \nAvoid numbers near your Server Port: '6300");
  settings.timing.UseRestartTime = true;
  EXPECT_EQ(CheckOptions(settings, kNoSound).front().key, "RestartTime") << "its page comes first";
}

TEST(OptionsCheck, RefusesTextThatIsNoNumber) {
  for (const char* text : {"fast", "-", ".", "&Hx", ""}) {
    Settings settings = Fine();
    const auto problem = ReadOptionTexts({{"LocalName", "Here"}, {"vAvg", text}}, settings);
    ASSERT_TRUE(problem) << text;
    EXPECT_EQ(problem->key, "vAvg");
    EXPECT_EQ(settings.station.LocalName, "Here");
    EXPECT_EQ(settings.timing.vAvg, 1);
  }
  Settings settings = Fine();
  EXPECT_FALSE(ReadOptionTexts({{"vAvg", " 4 reads"}, {"Pbuffer", "&H40"}, {"SaveIFVal", "-.5"}}, settings));
  EXPECT_EQ(settings.timing.vAvg, 4);
  EXPECT_EQ(settings.sound.Pbuffer, 64);
  EXPECT_EQ(settings.files.SaveIFVal, -0.5);
}

TEST(OptionsCheck, LiftsWhatIsTooLow) {
  for (const auto& [key, typed, lifted] : {std::tuple("vAvg", "0", "1"),
                                           {"ClientAvg", "0", "1"},
                                           {"ClientUpdateRate", "0", "1"},
                                           {"ChartUpdateRate", "-3", "1"},
                                           {"ChartWidth", "0.2", "1"},
                                           {"AvgSamplingPeriod", "0", "1"},
                                           {"ConnectionTimeOut", "19", "20"},
                                           {"ConnectionTimeOut", "21", "21"}}) {
    Settings settings = Fine();
    ASSERT_FALSE(ReadOptionTexts({{key, typed}}, settings)) << key;
    LiftOptions(settings);
    EXPECT_EQ(OptionText(settings, key), lifted) << key;
  }
}

TEST(OptionsCheck, PositionsAreEnteredInTheSenseThatIsChosenWithThem) {
  Settings settings = Fine();
  EXPECT_EQ(ReadOptionTexts({{"UserLat", "90:00:01"}}, settings)->title, "Latitide Error.");
  EXPECT_EQ(ReadOptionTexts({{"UserLng", "361:00"}}, settings)->title, "Longitude Error.");
  EXPECT_EQ(ReadOptionTexts({{"UserLat", "north"}}, settings)->text, "There is an error in your Latitude format.");
  EXPECT_EQ(ReadOptionTexts({{"UserLng", "10 E"}}, settings)->text, "There is an error in your Longitude format.");

  ASSERT_FALSE(ReadOptionTexts({{"UserLat", "-0:30:00"}, {"UserLng", "10:30"}, {"DisplayWest", "False"}}, settings));
  EXPECT_EQ(settings.place.UserLat, -0.5);
  EXPECT_EQ(settings.place.UserLng, 349.5) << "east, though the sense stands behind it";
  EXPECT_EQ(OptionText(settings, "UserLng"), "10:30:00.0");
  settings.place.DisplayWest = true;
  EXPECT_EQ(OptionText(settings, "UserLng"), "349:30:00.0");

  ASSERT_FALSE(ReadOptionTexts({{"UserLat", ""}, {"UserLng", "unknown"}}, settings));
  EXPECT_EQ(settings.place.UserLat, -999);
  EXPECT_EQ(OptionText(settings, "UserLng"), "unknown");
}

TEST(OptionsCheck, DurationIsEnteredInHours) {
  Settings settings = Fine();
  EXPECT_EQ(OptionText(settings, "MaxDuration"), "24");
  ASSERT_FALSE(ReadOptionTexts({{"MaxDuration", "1.5"}}, settings));
  EXPECT_EQ(settings.timing.MaxDuration, 0.0625);
}

TEST(OptionsCheck, WarnsOnceOfFilesWithoutStampsAndOfMonoFormats) {
  const Settings before = Fine();
  Settings draft = before;
  draft.timing.NoTimeStamps = true;
  ASSERT_EQ(OptionWarnings(before, draft, kNoSound).size(), 1u);
  EXPECT_TRUE(OptionWarnings(draft, draft, kNoSound).empty());

  draft = before;
  draft.channels.Dsrc = {1, 2};
  const SoundFacts mono{true, "11025 Hz 16 Bit Mono"};
  ASSERT_TRUE(CheckOptions(draft, mono).empty()) << "it is a warning only";
  ASSERT_EQ(OptionWarnings(before, draft, mono).size(), 1u);
  EXPECT_EQ(OptionWarnings(before, draft, mono)[0].text,
            "Warning: You have selected right and left channel audio data sources but have selected a mono Sound "
            "format.");
  draft.channels.Dsrc = {1, 0, 2};
  EXPECT_TRUE(OptionWarnings(before, draft, mono).empty());
}

// The command that puts options in force, on a whole recorder.
class OptionsCommand : public testing::Test {
 protected:
  std::string Stored(const char* key) { return station_.Setting(key); }

  Station station_;
};

TEST_F(OptionsCommand, WhatIsRefusedChangesNothingAndWhatIsAcceptedIsStored) {
  station_.Boot();
  EXPECT_TRUE(station_.Form().Options().Confirm({{"LocalName", "Here"}, {"MaxArrayCount", "9"}}, {}));
  EXPECT_EQ(Stored("LocalName"), "unknown");
  EXPECT_EQ(station_.TheSession().settings.station.LocalName, "unknown");

  EXPECT_FALSE(station_.Form().Options().Confirm({{"LocalName", "Here"}, {"vAvg", "0"}, {"Dsrc1", "0"}}, "clear sky"));
  EXPECT_EQ(Stored("LocalName"), "Here");
  EXPECT_EQ(Stored("vAvg"), "1");
  EXPECT_EQ(station_.View().Title, "Here");
  EXPECT_EQ(station_.Form().Window().run.ChannelCount, 1);
  EXPECT_EQ(Stored("Dsrc1"), "0") << "a setting of this run alone stays as it is stored";
  station_.ShutDown().Boot();
  EXPECT_EQ(station_.TheSession().notes, "clear sky");
  EXPECT_EQ(station_.TheSession().settings.channels.Dsrc[1], 21);
}

TEST_F(OptionsCommand, AMissingDataFolderIsCreatedWhenThePersonWantsIt) {
  station_.Boot();
  const OptionTexts elsewhere = {{"DataDirectory", "/elsewhere/data"}};
  station_.host.dialogs.AnswerNext(Answer::No);
  EXPECT_EQ(station_.Form().Options().Confirm(elsewhere, {})->key, "DataDirectory");
  EXPECT_FALSE(station_.host.disk.FolderExists("/elsewhere/data"));
  station_.host.dialogs.AnswerNext(Answer::Yes);
  EXPECT_FALSE(station_.Form().Options().Confirm(elsewhere, {}));
  EXPECT_TRUE(station_.host.disk.FolderExists("/elsewhere/data"));
  EXPECT_TRUE(station_.Form().Options().Confirm({{"DataDirectory", "data"}}, {})) << "a folder of nowhere";

  station_.Set("ShowMsgBox", false);
  const int questions = station_.host.dialogs.Questions();
  EXPECT_FALSE(station_.Form().Options().Confirm({{"DataDirectory", "/third"}}, {}));
  EXPECT_TRUE(station_.host.disk.FolderExists("/third"));
  EXPECT_EQ(station_.host.dialogs.Questions(), questions) << "nothing waits for a person";
}

TEST_F(OptionsCommand, AChartThatIsNotSavedYetKeepsItsTimeBase) {
  station_.Set("TimeRefZero", true).Set("AutoSaveStandAlone", false).StartChart().RunForSets(50).StopChart();
  ASSERT_TRUE(station_.FilesSaved().empty());
  const TimeStamp first = station_.Run().time.firstStamp;
  station_.RunFor(std::chrono::hours(1));
  EXPECT_FALSE(
      station_.Form().Options().Confirm({{"LogUsingUT", "False"}, {"LogLMST", "True"}, {"NoTimeStamps", "True"}}, {}));
  EXPECT_FALSE(station_.host.dialogs.Boxes().empty()) << "files without stamps are warned of";
  EXPECT_EQ(station_.Run().time.firstStamp, first);
  EXPECT_TRUE(station_.Run().ChartIsUT);
  EXPECT_FALSE(station_.Run().ChartIsLMST);
}

// The settings of a first use come from a person when there is one.
TEST(FirstUse, IsSettledByThePersonOrEndsTheProgram) {
  SimHost host(1);
  struct Newcomer : Person {
    bool CompleteFirstUse(Session& /*session*/, Settings& settings) override {
      ++asked;
      EXPECT_EQ(settings.files.DataDirectory, "/station/Data");
      EXPECT_EQ(settings.station.QTH, "Hill");
      settings.station.LocalName = "Asked";
      return accepts;
    }
    int asked = 0;
    bool accepts = true;
  } person;
  const auto load = [&](bool accepts, const char* showMsgBox) {
    Session session(host.Record(), "/station");
    session.overrides = {{"ShowMsgBox", showMsgBox}};
    person.accepts = accepts;
    FormMain form(session, person);
    const bool ready = form.Form_Load("");
    if (ready) form.Form_Unload();
    return std::pair(ready, session.settings.station.LocalName);
  };
  std::error_code error;
  host.disk.MakeFolders("/station", error);
  host.disk.Open("/station/default.tvp", OpenMode::Create, error)->Write("QTH = Hill;\r\n", error);

  EXPECT_FALSE(load(false, "True").first);
  EXPECT_FALSE(host.disk.FolderExists("/station/Data")) << "nothing is made for a cancelled first use";
  EXPECT_EQ(load(true, "True"), std::pair(true, std::string("Asked")));
  EXPECT_TRUE(host.disk.FolderExists("/station/Data"));
  EXPECT_EQ(load(false, "True"), std::pair(true, std::string("Asked"))) << "only once";
  EXPECT_EQ(person.asked, 2);

  host.disk.Remove("/station/settings.ini", error);
  EXPECT_EQ(load(false, "False"), std::pair(true, std::string("unknown"))) << "nothing waits for a person";
  EXPECT_EQ(person.asked, 2);
}

TEST(FirstUse, BeginsWithASourceThatTheMachineHas) {
  for (const bool hasCard : {false, true}) {
    SimHost host(1);
    if (hasCard) host.sound.Plug("USB,0: Receiver", [](std::int64_t) { return std::pair(0, 0); });
    Session session(host.Record(), "/station");
    Person nobody;
    FormMain(session, nobody).Form_Load("");
    EXPECT_EQ(session.store.GetSetting(Section::Settings, "Dsrc0"), hasCard ? "1" : "20");
  }
}

}  // namespace
}  // namespace tarvolt
