// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/chart/recovered_charts.h"

#include <gtest/gtest.h>

#include "station/station.h"

namespace tarvolt {
namespace {

TEST(RecoveredCharts, AreListedOpenedKeptAndDeleted) {
  Station station;
  station.StartChart().RunForSets(41).Kill();
  station.host.disk.Put("/station/Data/recovery/torn.tvd", "no chart");
  station.Boot();
  RecoveredCharts& recovered = station.Form().Recovered();
  std::vector<RecoveredChart> charts = recovered.List();
  ASSERT_EQ(charts.size(), 2u);
  EXPECT_FALSE(charts[0].readable);
  const RecoveredChart rescued = charts[1];
  EXPECT_EQ(rescued.channels, 2);
  EXPECT_EQ(rescued.samples, 41);
  EXPECT_NEAR(rescued.days * 86400, 4, 1e-3);
  EXPECT_EQ(FormatDate(rescued.start, "YYYY/MM/DD HH:nn"), "2010/01/02 12:00");

  EXPECT_TRUE(recovered.Open(rescued));
  EXPECT_EQ(station.Chart().Count(), 41);
  station.Form().ProcessCmd("/L \"" + rescued.file.string() + "\"");
  EXPECT_EQ(station.LogLines("Loaded from disk."), 2);
  EXPECT_FALSE(recovered.Delete(rescued)) << "it is asked about, and No is the default";
  station.host.dialogs.AnswerNext(Answer::Yes);
  EXPECT_TRUE(recovered.Delete(charts[0]));
  EXPECT_TRUE(recovered.Keep(rescued));
  EXPECT_TRUE(recovered.List().empty());
  ASSERT_EQ(station.FilesSaved().size(), 1u);
  EXPECT_EQ(station.FilesSaved()[0], "/station/Data/100102120000.tvd");
  EXPECT_EQ(station.FirstChannelIn(station.FilesSaved()[0]), Ramp(41));
}

}  // namespace
}  // namespace tarvolt
