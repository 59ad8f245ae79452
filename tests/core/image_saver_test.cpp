// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/run/image_saver.h"

#include <gtest/gtest.h>

#include "station/station.h"

namespace tarvolt {
namespace {

using namespace std::chrono_literals;

// A station whose pictures are noted instead of drawn.
class Images : public testing::Test, protected Person {
 protected:
  Station& Booted() {
    station.Set("SaveFTPImagePeriod", 2).Set("MaxDuration", 10).For(*this).Boot();
    return station;
  }
  bool HasScreen() const override { return true; }
  bool DrawChart(const std::filesystem::path& file, bool fullView, std::string& problem) override {
    if (diskFull) problem = "no room";
    if (!diskFull) drawn.push_back(file.string() + (fullView ? " full" : " view"));
    return !diskFull;
  }

  Station station;
  std::vector<std::string> drawn;
  bool diskFull = false;
};

TEST_F(Images, AreSavedInTimeWhileARunGoesOn) {
  station.Set("AutoStartFTP", true);
  Booted().StartChart();
  station.RunFor(119s);
  EXPECT_TRUE(drawn.empty());
  station.RunFor(3s);
  EXPECT_EQ(drawn, (std::vector<std::string>{"/station/ftpchart.png view", "/station/ftpchartFV.png full"}));
  station.RunFor(8min);
  EXPECT_EQ(drawn.size(), 10u);
  EXPECT_EQ(station.Setting("NewFVImage"), "True");
  station.StopChart().RunFor(10min);
  EXPECT_EQ(drawn.size(), 10u) << "no run, no picture";
}

TEST_F(Images, AreOfTheViewOrOfAllAsTheSettingSays) {
  station.Set("SaveFTPImage", true).Set("SaveFTPFullView", 1);
  Booted().StartChart();
  station.RunFor(123s);
  EXPECT_EQ(drawn, (std::vector<std::string>{"/station/ftpchartFV.png full"}));
  station.Set("SaveFTPFullView", 0).RunFor(2min);
  EXPECT_EQ(drawn.back(), "/station/ftpchart.png view");
  EXPECT_EQ(drawn.size(), 2u);
  station.Form().Images().mnuSaveFTPImage();
  station.RunFor(10min);
  EXPECT_EQ(drawn.size(), 2u) << "switched off";
}

TEST_F(Images, AFailureIsToldOnceAndTriedAgain) {
  station.Set("SaveFTPImage", true).Set("SaveFTPFullView", 0);
  Booted().StartChart();
  diskFull = true;
  station.RunFor(7min);
  EXPECT_TRUE(station.Logged("Could not save the image /station/ftpchart.png: no room"));
  EXPECT_EQ(station.LogLines("Could not save the image"), 1);
  diskFull = false;
  station.RunFor(2min);
  EXPECT_EQ(drawn.size(), 1u);
}

TEST_F(Images, AMiniChartIsPicturedBeforeItIsCleared) {
  station.Set("SaveFTPImage", true).Set("SaveFTPFullView", 0).Set("SaveFTPImagePeriod", 100).Set("MiniServer", true);
  station.Set("ChartWidth", 10);
  Booted();
  station.TheSession().settings.images.SaveFTPImagePeriod = 100;
  station.StartChart().RunFor(35s);
  EXPECT_EQ(drawn.size(), 3u) << "one each chart width";
}

}  // namespace
}  // namespace tarvolt
