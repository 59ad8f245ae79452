// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "files/log_folder.h"
#include "station/station.h"

namespace tarvolt {
namespace {

using namespace std::chrono_literals;

// A station whose observer log is open.
class ObserverEntriesTest : public ::testing::Test {
 protected:
  ObserverEntriesTest() {
    station.Boot();
    station.Form().OLog().OnEntry([this](const std::string& text, bool stamped) {
      EXPECT_TRUE(stamped) << text;
      entries.push_back(text);
    });
  }

  Station station;
  std::vector<std::string> entries;
};

TEST_F(ObserverEntriesTest, ARunWithoutTheSettingsLeavesNoEntry) {
  station.StartChart().RunForSets(5).StopChart();
  station.Form().Images().NoteSaved("/station/sun.png");
  EXPECT_TRUE(entries.empty()) << entries[0];
}

TEST_F(ObserverEntriesTest, StartTurnoverAndStopAreEntered) {
  station.Set("LLocalStart", true).Set("MaxArrayCount", 10).StartChart().RunForSets(15).StopChart();
  ASSERT_EQ(entries.size(), 3u);
  EXPECT_EQ(entries[0], "Local Chart Started:  2010/01/02 12:00:00");
  EXPECT_EQ(entries[1].substr(0, 34), "Local Chart Started:  2010/01/02 1") << "the second log of the run";
  EXPECT_TRUE(entries[2].starts_with("Local Chart Stopped:  2010/01/02 12:00:0")) << entries[2];
}

TEST_F(ObserverEntriesTest, TheIdentityOfTheStationFollowsTheStart) {
  station.Set("LLocalStart", true).Set("LocalIdentity", true).Set("LocalName", "Dish 2").Set("Author", "K. Jansky");
  station.Set("UserLat", "40.5").Set("UserLng", "-999").Set("QTH", "Holmdel");
  station.TheSession().notes = "Feed warm*[[*CHL0x*]]*";
  station.StartChart();
  ASSERT_EQ(entries.size(), 2u);
  EXPECT_EQ(entries[1],
            "Local Identity Information\r\nLocal Name: Dish 2\r\nObserver: K. Jansky\r\nLatitude: 40:30:00.0\r\n"
            "Longitude: unknown\r\nLocation: Holmdel\r\nNotes: Feed warm\r\nEnd of Identity Information");
}

TEST_F(ObserverEntriesTest, SavedPicturesAreEntered) {
  station.Set("LImages", true);
  station.Form().Images().NoteSaved("/station/sun.png");
  EXPECT_EQ(entries, std::vector<std::string>{"Image File Saved: /station/sun.png"});
}

TEST_F(ObserverEntriesTest, TheLogGoesWithTheObservationWhenAsked) {
  const auto folder = [this] { return OLogFolder(station.TheSession(), station.Form().Window()).string(); };
  station.Set("OrganizeByDay", true).Set("StoreLogWithObservation", true);
  EXPECT_EQ(folder(), station.TheSession().DataFolder()) << "no observation yet";
  station.Set("DefaultLogDirectory", "/station/logs");
  EXPECT_EQ(folder(), "/station/logs");
  station.StartChart().RunForSets(5);
  const std::string during = folder();
  station.StopChart();
  ASSERT_EQ(station.FilesSaved().size(), 1u);
  const std::string observation = std::filesystem::path(station.FilesSaved()[0]).parent_path().string();
  EXPECT_EQ(during, observation);
  EXPECT_EQ(folder(), observation);
  station.Set("StoreLogWithObservation", false);
  EXPECT_EQ(folder(), "/station/logs");
}

}  // namespace
}  // namespace tarvolt
