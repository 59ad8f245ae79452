// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/naming.h"

#include <gtest/gtest.h>

#include "files/desk.h"

namespace tarvolt {
namespace {

TEST(NameDir, KeepsSafeCharactersAndDropsTrailingUnderscores) {
  EXPECT_EQ(NameDir("My Station #1"), "My_Station__1");
  EXPECT_EQ(NameDir("Home                "), "Home");
  EXPECT_EQ(NameDir("                    "), "_");
  EXPECT_EQ(NameDir("a_"), "a_");  // too short to lose its last one
  EXPECT_EQ(NameDir("../etc"), "___etc");
  EXPECT_EQ(NameDir("\xC4"
                    "b"),
            "_b");
  EXPECT_EQ(NameDir(""), "");
}

TEST(NameDataFile, TakesTheDateFromTheFirstSample) {
  Desk desk;
  desk.Record(3);
  EXPECT_EQ(NameDataFile(desk.session, desk.window, NameKind::Data, false), "100102120000.tvd");
  EXPECT_EQ(NameDataFile(desk.session, desk.window, NameKind::Data, false, 7), "100102120000.tvd");
  desk.window.run.ChartIsUT = true;
  EXPECT_EQ(NameDataFile(desk.session, desk.window, NameKind::Data, true), "/station/Data/UT100102120000.tvd");
  desk.window.run.ChartIsLMST = true;
  EXPECT_EQ(NameDataFile(desk.session, desk.window, NameKind::Data, true), "/station/Data/ST100102120000.tvd");
}

TEST(NameDataFile, OrganisesByMonthAndDay) {
  struct Case {
    bool month, day;
    const char* name;
  };
  const Case cases[] = {{false, false, "/station/Data/100102120000.tvd"},
                        {true, false, "/station/Data/Home_2/1001/100102120000.tvd"},
                        {false, true, "/station/Data/100102/100102120000.tvd"},
                        {true, true, "/station/Data/Home_2/1001/100102/100102120000.tvd"}};
  for (const Case& c : cases) {
    Desk desk;
    desk.Record(3);
    desk.window.header.localName = "Home 2              ";
    desk.session.settings.files.OrganizeByMonth = c.month;
    desk.session.settings.files.OrganizeByDay = c.day;
    const auto name = NameDataFile(desk.session, desk.window, NameKind::Data, true);
    EXPECT_EQ(name, c.name);
    EXPECT_TRUE(desk.host.disk.FolderExists(name.parent_path()));
    EXPECT_TRUE(desk.host.disk.FolderExists("/station/Data/Home_2")) << "made whatever the options say";
    EXPECT_EQ(desk.window.header.localName, "Home_2              ");
  }
}

TEST(NameDataFile, AZeroBasedRunIsNamedAfterItsTrueStart) {
  Desk desk;
  desk.Record(3);
  desk.window.run.TimeRefZeroFile = true;
  desk.window.run.time.firstStamp = 40180.75;
  EXPECT_EQ(NameDataFile(desk.session, desk.window, NameKind::Data, false), "100102180000.tvd");
  EXPECT_EQ(NameDataFile(desk.session, desk.window, NameKind::Data, false, 1), "100103180000.tvd");
  desk.window.save.ViewSaveActive = true;
  desk.window.chart.XAxisMin = Desk::Stamp(1);
  EXPECT_EQ(NameDataFile(desk.session, desk.window, NameKind::Data, false), "100103060010.tvd");
}

TEST(NameDataFile, LogsAreNamedAfterTheMoment) {
  Desk desk;
  desk.session.settings.place.LogUsingUT = true;
  EXPECT_EQ(NameDataFile(desk.session, desk.window, NameKind::Log, true), "/station/Data/UT100102120000SessionLog.txt");
  EXPECT_EQ(NameDataFile(desk.session, desk.window, NameKind::Wav, false, 1), "100103120000.wav");
}

TEST(NameDataFile, AFolderThatCannotBeMadeIsLogged) {
  Desk desk;
  desk.Record(3);
  desk.host.disk.SetReadOnly("/station/Data", true);
  EXPECT_EQ(NameDataFile(desk.session, desk.window, NameKind::Data, true), "/station/Data/100102120000.tvd");
  EXPECT_TRUE(desk.Logged("/station/Data/Home"));
}

}  // namespace
}  // namespace tarvolt
