// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/settings_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "config/settings_row.h"
#include "sim/sim_disk.h"
#include "text/ansi.h"

namespace tarvolt {
namespace {

class SettingsTable : public testing::Test {
 protected:
  static constexpr const char* kFile = "/home/settings.ini";

  SettingsTable() { disk.Put(kFile, ""); }

  /// Puts texts into the section Settings of the file and loads everything.
  void LoadWith(const std::vector<std::pair<std::string, std::string>>& texts, const std::string& home = "/home") {
    for (const auto& [key, text] : texts) store.SaveSetting(Section::Settings, key, text);
    LoadRegistrySettings(store, overrides, home, settings);
  }

  SimDisk disk{1};
  SettingsStore store{disk, kFile};
  SettingOverrides overrides;
  Settings settings;
};

TEST_F(SettingsTable, NoTwoRowsShareAKeyOrAMember) {
  std::set<std::string> keys;
  std::vector<SettingMember> members;
  for (const auto& rows : SettingTable()) {
    for (const SettingRow& row : rows) {
      if (row.lineOnly) continue;
      const std::string section(1, static_cast<char>('0' + static_cast<int>(row.section)));
      EXPECT_TRUE(keys.insert(section + Upper(row.key)).second) << row.key;
      if (!row.HasMember()) continue;
      EXPECT_EQ(std::find(members.begin(), members.end(), row.member), members.end()) << row.key;
      members.push_back(row.member);
    }
  }
}

TEST_F(SettingsTable, DefaultTextsBelongToASectionAndANumber) {
  EXPECT_EQ(DefaultText(Section::Settings, "clientrun9"), "OK");
  EXPECT_EQ(DefaultText(Section::Settings, "ClientRun10"), "");
  EXPECT_EQ(DefaultText(Section::Settings, "Channel2Label"), "CH 3");
  EXPECT_EQ(DefaultText(Section::Settings, "TitleFontColor"), "128");
  EXPECT_EQ(DefaultText(Section::Colors, "TitleFontColor"), "0");
}

TEST_F(SettingsTable, ValuesAreReadLeniently) {
  LoadWith({{"LogLMST", "true"},  // Only the exact word is true.
            {"Continuous", "-1"},
            {"ChTriggerEnabled0", "1"},
            {"ChTriggerEnabled1", "True"},
            {"ChTriggerEnabled2", "nonsense"},
            {"MaxArrayCount", "&H20"},
            {"vAvg", "12 reads"},
            {"ClientAvg", "many"},
            {"SampleRate", "12.5ms"},
            {"Dsrc1", "99999"},
            {"ATInterval", "15"},
            {"lptPORTaddress", "&H278"}});
  EXPECT_FALSE(settings.place.LogLMST);
  EXPECT_FALSE(settings.timing.Continuous);
  EXPECT_TRUE(settings.channels.ChTriggerEnabled[0]);
  EXPECT_TRUE(settings.channels.ChTriggerEnabled[1]);
  EXPECT_FALSE(settings.channels.ChTriggerEnabled[2]);
  EXPECT_EQ(settings.timing.MaxArrayCount, 32);
  EXPECT_EQ(settings.timing.vAvg, 12);
  EXPECT_EQ(settings.timing.ClientAvg, 0);
  EXPECT_EQ(settings.timing.SampleRate, 12.5);
  EXPECT_EQ(settings.channels.Dsrc[1], 32767);
  EXPECT_EQ(settings.place.ATinterval, 15);
  EXPECT_EQ(settings.lpt.LPTPortAddress, 0x278);
}

TEST_F(SettingsTable, SavedSettingsLoadAgain) {
  settings.timing.MaxDuration = 1.0 / 1440;
  settings.channels.DefaultChannelOffset[8] = -0.1;
  settings.channels.PenColor[2] = 7;
  settings.station.PublishInfo = " two\nlines; \\ and = \xFE ";
  settings.observerLog.LMsgs = true;
  SaveRegistrySettings(store, {}, "/home", settings);
  EXPECT_EQ(store.GetSetting(Section::Colors, "Channel2PenColor"), "7");
  EXPECT_EQ(store.GetSetting(Section::LogEntries, "LMsgs"), "True");

  SettingsStore reopened(disk, kFile);
  reopened.Load();
  Settings loaded;
  LoadRegistrySettings(reopened, {}, "/home", loaded);
  EXPECT_EQ(loaded.timing.MaxDuration, 1.0 / 1440);
  EXPECT_EQ(loaded.channels.DefaultChannelOffset[8], -0.1);
  EXPECT_EQ(loaded.channels.PenColor[2], 7);
  EXPECT_EQ(loaded.station.PublishInfo, settings.station.PublishInfo);
  EXPECT_TRUE(loaded.observerLog.LMsgs);
}

TEST_F(SettingsTable, OverridesHoldForThisRunAndAreNotStored) {
  overrides = {{"samplerate", "50"}, {"Dsrc1", "20"}, {"NotesFileName", "\\mine.txt"}};
  LoadWith({{"SampleRate", "200"}});
  EXPECT_EQ(settings.timing.SampleRate, 50);
  EXPECT_EQ(settings.channels.Dsrc[1], 20);
  EXPECT_EQ(settings.files.NotesFileName, "/home/mine.txt");

  settings.timing.vAvg = 3;
  SaveRegistrySettings(store, overrides, "/home", settings);
  EXPECT_EQ(store.GetSetting(Section::Settings, "SampleRate"), "200");
  EXPECT_EQ(store.GetSetting(Section::Settings, "Dsrc1"), "0");
  EXPECT_EQ(store.GetSetting(Section::Settings, "vAvg"), "3");
}

TEST_F(SettingsTable, PathsUnderTheHomeMoveWithIt) {
  LoadWith({});
  EXPECT_EQ(settings.files.NotesFileName, "/home/notes.txt");
  settings.files.NotesFileName = "/home/logs/today.txt";
  settings.files.DefaultTriggerFile = "/elsewhere/Triggers.ini";
  SaveRegistrySettings(store, {}, "/home", settings);
  LoadWith({}, "/moved/");
  EXPECT_EQ(settings.files.NotesFileName, "/moved/logs/today.txt");
  EXPECT_EQ(settings.files.DefaultTriggerFile, "/elsewhere/Triggers.ini");

  // What would not read back as the same path is stored as it stands.
  for (const std::string path : {"/home/a\\b.txt", "/home//x", "/homestead/x", "\\\\server\\share\\x"}) {
    settings.files.NotesFileName = path;
    SaveRegistrySettings(store, {}, "/home", settings);
    LoadWith({});
    EXPECT_EQ(settings.files.NotesFileName, path);
  }
}

TEST_F(SettingsTable, KeysAreFoundWithoutCaseAndUnknownOnesNamed) {
  EXPECT_TRUE(ApplySetting(settings, "CHANNEL3label", "Sun"));
  EXPECT_EQ(settings.channels.ChannelLabel[3], "Sun");
  EXPECT_EQ(SettingText(settings, "Channel3Label"), "Sun");
  EXPECT_EQ(SettingText(settings, "ShowMsgBox"), "True");
  EXPECT_FALSE(ApplySetting(settings, "Dsrc8", "1"));
  EXPECT_FALSE(ApplySetting(settings, "Dsrc", "1"));
  EXPECT_FALSE(ApplySetting(settings, "ChartAutoScale", "False"));
  EXPECT_FALSE(SettingText(settings, "ShutDown").has_value());
  EXPECT_FALSE(IsSettingKey("ShutDown"));
  EXPECT_TRUE(IsSettingKey("udsPORT"));
  EXPECT_EQ(NearestSettingKey("sampelrate"), "SampleRate");
  EXPECT_EQ(NearestSettingKey("Dsrc8").substr(0, 4), "Dsrc");
  EXPECT_FALSE(NearestSettingKey(std::string(100000, 'x')).empty());
}

}  // namespace
}  // namespace tarvolt
