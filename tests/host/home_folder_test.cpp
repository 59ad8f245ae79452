// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/home_folder.h"

#include <cstdlib>
#include <fstream>
#include <map>

#include "temp_folder.h"

namespace tarvolt {
namespace {

class HomeFolderTest : public testing::Test {
 protected:
  void SetUp() override {
    for (const char* name : {"TARVOLT_HOME", "XDG_DATA_HOME", "HOME"}) {
      if (const char* value = std::getenv(name)) former_[name] = value;
      ::unsetenv(name);
    }
  }
  void TearDown() override {
    for (const char* name : {"TARVOLT_HOME", "XDG_DATA_HOME", "HOME"}) ::unsetenv(name);
    for (const auto& [name, value] : former_) ::setenv(name.c_str(), value.c_str(), 1);
  }

  TempFolder folder_;
  std::map<std::string, std::string> former_;
  std::string why_;
};

TEST_F(HomeFolderTest, TheNearestWishWins) {
  EXPECT_TRUE(FindHome(std::nullopt).is_absolute());
  EXPECT_TRUE(FindHome(std::nullopt).native().ends_with("/.local/share/tarvolt"));
  ::setenv("HOME", "/home/observer", 1);
  EXPECT_EQ(FindHome(std::nullopt), "/home/observer/.local/share/tarvolt");
  ::setenv("XDG_DATA_HOME", "relative", 1);
  EXPECT_EQ(FindHome(std::nullopt), "/home/observer/.local/share/tarvolt");
  ::setenv("XDG_DATA_HOME", "/data", 1);
  ::setenv("TARVOLT_HOME", "", 1);
  EXPECT_EQ(FindHome(std::nullopt), "/data/tarvolt");
  ::setenv("TARVOLT_HOME", "/srv/station", 1);
  EXPECT_EQ(FindHome(std::nullopt), "/srv/station");
  EXPECT_EQ(FindHome("second"), std::filesystem::current_path() / "second");
}

TEST_F(HomeFolderTest, AHomeThatCannotBeMadeIsToldInWords) {
  std::ofstream(folder_.Path() / "file") << "x";
  HomeLock lock;
  EXPECT_FALSE(lock.Take(folder_.Path() / "file" / "home", why_));
  EXPECT_NE(why_.find("cannot be made"), std::string::npos) << why_;
  std::filesystem::create_directories(folder_.Path() / "odd" / "lock");
  EXPECT_FALSE(lock.Take(folder_.Path() / "odd", why_));
  EXPECT_NE(why_.find("cannot be used"), std::string::npos) << why_;
}

}  // namespace
}  // namespace tarvolt
