// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/session.h"

#include <gtest/gtest.h>

#include "model/channel_table.h"
#include "sim/sim_host.h"

namespace tarvolt {
namespace {

class SessionTest : public ::testing::Test {
 protected:
  SessionTest() { host.disk.Put("/station/notes.txt", ""); }

  SimHost host{1};
  Session session{host.Record(), "/station"};
};

TEST(ActiveChannels, EndAtTheFirstRowWithoutASource) {
  Settings settings;
  settings.channels.Dsrc = {1, 2, 20, 0, 5, 0, 0, 0};
  EXPECT_EQ(ActiveChannels(settings), 3);
  settings.channels.Dsrc[0] = 0;
  EXPECT_EQ(ActiveChannels(settings), 0);
  settings.channels.Dsrc.fill(50);
  EXPECT_EQ(ActiveChannels(settings), kChannels);
}

TEST_F(SessionTest, WhatTheStoreCannotWriteIsLogged) {
  host.disk.FailOperation(1, SimDisk::Repeat::ForEver);
  session.store.SaveSetting(Section::Settings, "Author", "Jansky");
  EXPECT_NE(session.log.Text().find("settings.ini"), std::string::npos) << session.log.Text();
}

TEST_F(SessionTest, TheDataFolderHasNoTrailingSeparators) {
  session.settings.files.DataDirectory = "";
  EXPECT_EQ(session.DataFolder(), "/station/Data");
  session.settings.files.DataDirectory = "/sky/data//\\";
  EXPECT_EQ(session.DataFolder(), "/sky/data");
  session.settings.files.DataDirectory = "/";
  EXPECT_EQ(session.DataFolder(), "/");
}

}  // namespace
}  // namespace tarvolt
