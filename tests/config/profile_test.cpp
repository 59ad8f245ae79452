// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/profile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "config/settings_row.h"
#include "sim/sim_disk.h"
#include "text/number.h"

namespace tarvolt {
namespace {

constexpr const char* kFile = "/home/x.tvp";

class Profile : public testing::Test {
 protected:
  Profile() { disk.Put(kFile, ""); }

  bool Load(std::string_view text) {
    disk.Put(kFile, text);
    return static_cast<bool>(LoadProfileFile(disk, kFile, overrides, "/home", settings));
  }

  std::vector<std::string> SavedLines(const Settings& saved) {
    EXPECT_TRUE(SaveProfileFile(disk, kFile, saved));
    std::vector<std::string> lines;
    std::string text = disk.Contents(kFile).value_or("");
    for (std::size_t end = text.find("\r\n"); end != std::string::npos; end = text.find("\r\n")) {
      lines.push_back(text.substr(0, end));
      text.erase(0, end + 2);
    }
    return lines;
  }

  SimDisk disk{1};
  SettingOverrides overrides;
  Settings settings;
};

TEST_F(Profile, OneLookup) {
  const std::vector<std::string> lines = {"no equals",   "AutoPublish= True;",    "Dsrc3 = 20;", "Equ2= ;",
                                          "vAvg=7",      "UDSexe = C:\\a=b.exe;", "QTH = a;;",   "VAVG=8;",
                                          "TZ = 1.5 ; ", "LocalName  = x;"};
  EXPECT_EQ(GetProfileValue(lines, "autopublish", ""), "True");
  EXPECT_EQ(GetProfileValue(lines, "Dsrc3", ""), "20");
  EXPECT_EQ(GetProfileValue(lines, "Equ2", " "), " ");
  EXPECT_EQ(GetProfileValue(lines, "vAvg", "1"), "7");
  EXPECT_EQ(GetProfileValue(lines, "UDSexe", ""), "C:\\a=b.exe");
  EXPECT_EQ(GetProfileValue(lines, "QTH", ""), "a;");        // one ";" is dropped
  EXPECT_EQ(GetProfileValue(lines, "TZ", ""), "1.5 ");       // what stands in front of it is kept
  EXPECT_EQ(GetProfileValue(lines, "LocalName", "d"), "d");  // one blank before the "=" at most
  EXPECT_EQ(GetProfileValue(lines, "Dsrc4", "d"), "d");
  // Meant: the tail of a longer key matches, and so does a key inside a value; the value is that of the line.
  EXPECT_EQ(GetProfileValue(lines, "Publish", ""), "True");
  EXPECT_EQ(GetProfileValue(lines, "c:\\a", ""), "C:\\a=b.exe");
}

TEST_F(Profile, HoldsTheKeysInTheirOrderAndSpelling) {
  settings.chart.AutoScale = false;
  settings.station.PublishInfo = "two\r\nlines";
  const std::vector<std::string> lines = SavedLines(settings);
  ASSERT_EQ(lines.front(), "TimeRefZero = False;");
  EXPECT_EQ(lines.back(), "SynchOnInterval = 0;");
  EXPECT_EQ(lines[lines.size() - 2], "ATInterval = 60;");
  const auto count = [&](std::string_view line) { return std::count(lines.begin(), lines.end(), line); };
  for (const char* twice : {"LocalName = unknown;", "AutoSaveStandAlone = True;", "AutoSaveClient = True;"}) {
    EXPECT_EQ(count(twice), 2) << twice;
  }
  for (const char* once :
       {"ChartAutoScale = False;", "AutoScale = False;", "Source=UDS;", "ApplyToChannel7 = 1;", "LPTportaddress = 888;",
        "ShowFixedList = True;", "TVuds_IP = ;", "TVuds_Port = ;", "Channel0Color = 255;", "Channel8Offset = 0;",
        "Channel7Label = CH 8;", "Equ0 =  ;", "PublishInfo = two  lines;", "MaxArrayCount = 1000000;"}) {
    EXPECT_EQ(count(once), 1) << once;
  }
}

/// Another text than `text` that the same kind of member can hold.
std::string Different(const std::string& text, const std::string& key) {
  if (text == "True") return "False";
  if (text == "False") return "True";
  const std::string number = NumberText(Val(text) + 3);
  if (NumberText(Val(text)) == text) return number;
  return "a " + key + " b;";
}

TEST_F(Profile, EverySettingComesBackDifferentFromItsDefault) {
  Settings saved;
  for (const SettingRow& row : ProfileRows()) {
    for (int index = 0; index < row.count && !row.lineOnly; ++index) {
      const std::string before = row.Text(saved, index);
      row.Set(saved, index, Different(before, row.ProfileKey(index)));
      ASSERT_NE(row.Text(saved, index), before) << row.Key(index);
    }
  }
  SavedLines(saved);
  ASSERT_TRUE(LoadProfileFile(disk, kFile, {}, "/home", settings));
  for (const SettingRow& row : ProfileRows()) {
    for (int index = 0; index < row.count; ++index) {
      if (row.key == "Source") continue;
      EXPECT_EQ(row.Text(settings, index), row.Text(saved, index)) << row.Key(index);
    }
  }
}

TEST_F(Profile, SourceIsReadFromTheLineOfMixerSource) {  // Meant: the first line that holds the key wins.
  Settings saved;
  saved.card.MixerSource = 2;
  SavedLines(saved);
  ASSERT_TRUE(LoadProfileFile(disk, kFile, {}, "/home", settings));
  EXPECT_EQ(settings.sound.Source, "2");
  ASSERT_TRUE(Load("Source=UDS;"));
  EXPECT_EQ(settings.sound.Source, "UDS");
  ASSERT_TRUE(Load("ChartAutoScale = False;\nAutoScale = True;"));
  EXPECT_FALSE(settings.chart.AutoScale);
}

TEST_F(Profile, DescribesTheWholeConfigurationAndNothingElse) {
  settings.timing.vAvg = 10;
  settings.channels.Dsrc[3] = 20;
  settings.chart.DisplayMilliseconds = true;  // not in a profile
  settings.files.NotesFileName = "/else.txt";
  ASSERT_TRUE(Load("SampleRate = 250 ms;\nDsrc1= 21;\nLogUsingUT = true;\nDefaultTriggerFile=\\t\\1.ini;"));
  EXPECT_EQ(settings.timing.vAvg, 1);
  EXPECT_EQ(settings.timing.SampleRate, 250);
  EXPECT_EQ(settings.channels.Dsrc[0], 1);
  EXPECT_EQ(settings.channels.Dsrc[1], 21);
  EXPECT_EQ(settings.channels.Dsrc[3], 0);
  EXPECT_FALSE(settings.place.LogUsingUT);
  EXPECT_TRUE(settings.chart.DisplayMilliseconds);
  EXPECT_EQ(settings.files.NotesFileName, "/home/notes.txt");
  EXPECT_EQ(settings.files.DefaultTriggerFile, "/home/t/1.ini");
}

TEST_F(Profile, OverridesStayOnTop) {
  overrides = {{"vAvg", "4"}, {"DisplayMilliseconds", "True"}};
  ASSERT_TRUE(Load("vAvg = 9;"));
  EXPECT_EQ(settings.timing.vAvg, 4);
  EXPECT_TRUE(settings.chart.DisplayMilliseconds);
}

TEST_F(Profile, WhatIsNoProfileChangesNothing) {
  settings.timing.vAvg = 10;
  EXPECT_FALSE(LoadProfileFile(disk, "", {}, "/home", settings));
  const Outcome missing = LoadProfileFile(disk, "/missing.tvp", {}, "/home", settings);
  ASSERT_FALSE(missing);
  EXPECT_FALSE(missing.Words().empty());
  EXPECT_FALSE(Load(std::string((std::size_t{16} << 20) + 1, 'x')));
  std::string flood = "vAvg = 9;\n";
  for (int i = 0; i < 100001; ++i) flood += "=\n";
  EXPECT_FALSE(Load(flood));
  std::string noise;
  std::mt19937 engine(5);
  for (int i = 0; i < 300'000; ++i) noise += static_cast<char>(engine());
  for (const std::string& text : {std::string(), std::string("a letter\nxTZ=2 in it\n"), noise + "TZ=3"}) {
    EXPECT_FALSE(Load(text));
  }
  EXPECT_EQ(settings.timing.vAvg, 10);
  EXPECT_TRUE(Load("\r\n  vavg = 9;"));
  disk.FailOperation(1, SimDisk::Repeat::Once);
  EXPECT_FALSE(SaveProfileFile(disk, kFile, settings));
}

}  // namespace
}  // namespace tarvolt
