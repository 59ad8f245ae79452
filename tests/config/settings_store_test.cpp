// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/settings_store.h"

#include <gtest/gtest.h>

#include "config/recent_files.h"
#include "config/text_file.h"
#include "sim/sim_disk.h"
#include "text/number.h"

namespace tarvolt {
namespace {

constexpr const char* kFile = "/home/settings.ini";
constexpr const char* kAside = "/home/settings.ini.damaged1";

class Store : public testing::Test {
 protected:
  Store() {
    std::error_code error;
    disk.MakeFolders("/home", error);
    store.OnProblem([this](const std::string& words) { problems.push_back(words); });
  }

  void LoadText(std::string_view text) {
    disk.Put(kFile, text);
    store.Load();
  }

  std::string Get(std::string_view key) const { return store.GetSetting(Section::Settings, key); }

  SimDisk disk{1};
  SettingsStore store{disk, kFile};
  std::vector<std::string> problems;
};

TEST_F(Store, GivesDefaultsUntilSomethingIsStored) {
  store.Load();
  EXPECT_EQ(Get("MaxArrayCount"), "1000000");
  EXPECT_EQ(store.GetSetting(Section::Settings, "LocalName", "else"), "else");
  store.SaveSetting(Section::Settings, "localname", "");
  EXPECT_EQ(Get("LocalName"), "");  // stored empty is not absent
  store.SaveSetting(Section::Colors, "LocalName", "x");
  EXPECT_EQ(Get("LocalName"), "");
  EXPECT_TRUE(problems.empty());
}

TEST_F(Store, AnyBytesSurvive) {
  std::string all;
  for (int byte = 255; byte >= 0; --byte) all += static_cast<char>(byte);
  const std::vector<std::string> texts = {all, " ", "  a  ", "\r\n", "[Settings]", "a=b=c", "\\n\\41", "", "\t", "\\"};
  std::vector<std::string> keys = {"plain", "a=b", "[x]", " blank ", "\xFE\xFF"};
  for (std::size_t i = keys.size(); i < texts.size(); ++i) keys.push_back("k" + std::string(i, 'x'));
  for (std::size_t i = 0; i < texts.size(); ++i) store.SaveSetting(Section::Export, keys[i], texts[i]);

  SettingsStore reopened(disk, kFile);
  reopened.OnProblem([](const std::string& words) { ADD_FAILURE() << words; });
  reopened.Load();
  for (std::size_t i = 0; i < texts.size(); ++i) {
    EXPECT_EQ(reopened.GetSetting(Section::Export, keys[i], "absent"), texts[i]) << keys[i];
  }
}

TEST_F(Store, ReadsWhatAPersonHasEdited) {
  LoadText("\r\n[settings]\r\n  vAvg = 5 \r\nVAVG=6\n[Other]\nvAvg=9\nTZ=\\FFx");
  EXPECT_EQ(Get("vAvg"), "6");
  EXPECT_EQ(Get("TZ"), "0");
  EXPECT_TRUE(problems.empty());
  store.SaveSetting(Section::Settings, "TZ", "2");
  EXPECT_NE(disk.Contents(kFile)->find("[Other]\nTZ=\xFFx\nvAvg=9\n"), std::string::npos);
}

TEST_F(Store, ABackslashThatBeginsNoEscapeIsItself) {
  const std::vector<std::string> paths = {"\\Triggers.ini", "C:\\a", "C:\\data\\4z", "\\\\server\\share\\", "\\"};
  std::string text = "[Settings]\n";
  for (std::size_t i = 0; i < paths.size(); ++i) text += "P" + std::string(i, 'x') + "=" + paths[i] + "\n";
  LoadText(text);
  store.SaveSetting(Section::Settings, "TZ", "2");  // what was read stands escaped in the file then
  store.Load();
  for (std::size_t i = 0; i < paths.size(); ++i) EXPECT_EQ(Get("P" + std::string(i, 'x')), paths[i]);
  EXPECT_TRUE(problems.empty());
}

TEST_F(Store, TellsOfLinesItCannotUnderstandAndKeepsTheRest) {
  LoadText("lost=1\n[Settings]\nno equals\n=5\nvAvg=7\n[\nvAvg=8\n[Broken\nvAvg=9\n[]\n");
  EXPECT_EQ(Get("vAvg"), "7");
  EXPECT_EQ(Get("TZ"), "0");
  ASSERT_EQ(problems.size(), 1u);
  EXPECT_NE(problems[0].find("understood: 8, the first is line 1"), std::string::npos) << problems[0];
}

TEST_F(Store, SetsAFileAsideThatItCannotRead) {
  const std::string zeros(512, '\0');
  LoadText(zeros);
  EXPECT_EQ(disk.Contents(kAside), zeros);
  LoadText(std::string(kTextFileLimit + 1, 'x'));
  EXPECT_EQ(disk.Contents("/home/settings.ini.damaged2")->size(), kTextFileLimit + 1);
  EXPECT_EQ(disk.Contents(kAside), zeros);  // an older one is not written over
  EXPECT_EQ(problems.size(), 2u);

  store.SaveSetting(Section::Settings, "vAvg", "5");
  EXPECT_EQ(disk.Contents(kFile), "[Settings]\nvAvg=5\n");
}

TEST_F(Store, NeverWritesOverAFileThatItCouldNotReadNorSetAside) {
  disk.Put(kFile, "[Settings]\nvAvg=7\n");
  disk.SetUnreadable(kFile, true);
  disk.FailOperation(1, SimDisk::Repeat::Once);
  store.Load();
  ASSERT_EQ(problems.size(), 1u);
  disk.SetUnreadable(kFile, false);
  store.SaveSetting(Section::Settings, "TZ", "2");
  EXPECT_EQ(Get("TZ"), "2");
  EXPECT_EQ(disk.Contents(kFile), "[Settings]\nvAvg=7\n");
}

TEST_F(Store, AFailedWriteIsToldAndMadeUpLater) {
  store.SaveSetting(Section::Settings, "vAvg", "1");
  for (std::uint64_t failing = 1; failing <= 4; ++failing) {
    const auto before = disk.Contents(kFile);
    const std::string value(failing, '9');
    disk.FailOperation(failing, SimDisk::Repeat::Once);
    problems.clear();
    store.SaveSetting(Section::Settings, "vAvg", value);
    EXPECT_EQ(problems.size(), 1u) << failing;
    EXPECT_EQ(Get("vAvg"), value);
    EXPECT_EQ(disk.Contents(kFile), before);
    disk.Heal();
    store.SaveSetting(Section::Settings, "vAvg", value);  // nothing new, but the file still lacks it
    EXPECT_EQ(disk.Contents(kFile), "[Settings]\nvAvg=" + value + "\n");
  }
}

TEST_F(Store, ABatchIsOneWriteAndNoChangeIsNone) {
  const std::uint64_t start = disk.Operations();
  store.SaveSetting(Section::Settings, "vAvg", "1");
  const std::uint64_t one = disk.Operations() - start;
  store.BeginBatch();
  for (const char* key : {"TZ", "QTH", "Author"}) store.SaveSetting(Section::Settings, key, "5");
  EXPECT_EQ(disk.Operations() - start, one);
  store.EndBatch();
  EXPECT_EQ(disk.Operations() - start, 2 * one);
  store.SaveSetting(Section::Settings, "QTH", "5");
  store.BeginBatch();
  store.EndBatch();
  EXPECT_EQ(disk.Operations() - start, 2 * one);
}

/// What a start after the crash finds: all old or all new values.
void ExpectOldOrNew(SimDisk& disk, const std::string& note) {
  SettingsStore after(disk, kFile);
  after.OnProblem([&](const std::string& words) { ADD_FAILURE() << note << ": " << words; });
  after.Load();
  const std::string average = after.GetSetting(Section::Settings, "vAvg");
  const std::string name = after.GetSetting(Section::Settings, "LocalName");
  EXPECT_TRUE((average == "1" && name == "old") || (average == "222" && name == "the new one"))
      << note << average << name;
}

TEST(StoreCrash, ADeathOrALossOfPowerInAnyOperationLeavesTheOldValuesOrTheNew) {
  for (std::uint64_t seed = 0; seed < 400; ++seed) {
    for (std::uint64_t operation = 1; operation <= 4; ++operation) {
      SimDisk disk(seed);
      disk.Put(kFile, "[Settings]\nLocalName=old\nvAvg=1\n");
      disk.SetPowerLoss(seed % 2 == 0);
      disk.CrashAtOperation(operation, seed);
      const auto change = [&disk] {
        SettingsStore store(disk, kFile);
        store.Load();
        store.BeginBatch();
        store.SaveSetting(Section::Settings, "vAvg", "222");
        store.SaveSetting(Section::Settings, "LocalName", "the new one");
        store.EndBatch();
      };
      EXPECT_THROW(change(), SimCrash);
      disk.Reboot();
      ExpectOldOrNew(disk, "operation " + NumberText(static_cast<std::int64_t>(operation)));
    }
  }
}

TEST(RecentLists, NewestFirstAndWithoutDoubles) {
  SimDisk disk(1);
  disk.Put(kFile, "");
  SettingsStore store(disk, kFile);
  RecentFiles recent;
  for (const char* name : {"a", "b", "c", "d", "e", "f", "c", ""}) AddRecentLoaded(recent, name);
  EXPECT_EQ(recent.loaded, (std::array<std::string, 5>{"c", "f", "e", "d", "b"}));
  AddRecentSaved(recent, "s");
  for (const char* name : {"1", "2", "3", "4", "5"}) AddProfileFile(recent, name);
  SaveRecentFiles(store, recent);
  SaveProfileFiles(store, recent);
  EXPECT_EQ(store.GetSetting(Section::Recent, "ProfileFile4"), "2");

  RecentFiles loaded;
  GetRecentFiles(store, loaded);
  EXPECT_EQ(loaded.loaded, recent.loaded);
  EXPECT_EQ(loaded.saved, recent.saved);
  EXPECT_EQ(loaded.profiles[0], "");
  GetProfileFiles(store, loaded);
  EXPECT_EQ(loaded.profiles, recent.profiles);
}

}  // namespace
}  // namespace tarvolt
