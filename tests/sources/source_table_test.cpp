// SPDX-License-Identifier: GPL-3.0-or-later
#include "sources/source_table.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <limits>
#include <string>
#include <vector>

namespace tarvolt {
namespace {

Settings RowsOf(std::initializer_list<DataSourceId> sources) {
  Settings settings;
  settings.channels.Dsrc = {};
  int row = 0;
  for (const DataSourceId source : sources) settings.channels.Dsrc[row++] = source;
  return settings;
}

TEST(SourceTable, NamesStandAtTheirNumbersAndNowhereElse) {
  EXPECT_EQ(SourceName(10), "MAX186 ADC CH1");
  EXPECT_EQ(SourceName(27), "UDS CH8");
  EXPECT_EQ(SourceName(57), "LJ U3 ADC CH8");
  EXPECT_EQ(SourceName(71), "CROSS CORRELATION");
  int named = 0;
  for (int source = 0; source < kSourceNames; ++source) named += !SourceName(static_cast<DataSourceId>(source)).empty();
  EXPECT_EQ(named, 5 + 5 * 8);
  EXPECT_EQ(SourceName(-1), "");
  EXPECT_EQ(SourceName(std::numeric_limits<DataSourceId>::max()), "");
}

TEST(SourceTable, TheTwoListsLeadBackToEverySource) {
  for (int number = 0; number < kSourceNames; ++number) {
    const auto source = static_cast<DataSourceId>(number);
    if (SourceName(source).empty()) {
      EXPECT_EQ(SrcToIndex(source), 0) << number << " in a profile edited by hand shows as none";
    } else {
      EXPECT_EQ(IndexToSrc(SrcToIndex(source), SrcToADCCH(source)), source);
    }
  }
  const std::vector<int> expected = {1, 2, 3, 4, 7, 8, 5, 6, 9};
  std::vector<int> indices;
  for (const DataSourceId source : {1, 2, 3, 17, 20, 40, 50, 60, 71}) indices.push_back(SrcToIndex(source));
  EXPECT_EQ(indices, expected);
  EXPECT_EQ(IndexToSrc(-1, 0), 0);
  EXPECT_EQ(IndexToSrc(10, 3), 0);
  EXPECT_EQ(SrcToADCCH(3), 0);
  EXPECT_EQ(SrcToADCCH(9), 0) << "9 is meant to be an exception";
  EXPECT_EQ(SrcToADCCH(67), 7);
}

TEST(SourceTable, OnlyRowsBeforeTheFirstNoneAreInUse) {
  const SourcesInUse cut = FindSourcesInUse(RowsOf({1, 0, 20, 3}).channels.Dsrc);
  EXPECT_TRUE(cut.SoundLeftInUse);
  EXPECT_FALSE(cut.UDSInUse);
  EXPECT_FALSE(cut.MAX187InUse);
  const SourcesInUse all = FindSourcesInUse(RowsOf({2, 3, 17, 27}).channels.Dsrc);
  EXPECT_FALSE(all.SoundLeftInUse);
  EXPECT_TRUE(all.SoundRightInUse && all.MAX187InUse && all.MAX186InUse && all.UDSInUse);
  const SourcesInUse neighbours = FindSourcesInUse(RowsOf({18, 28, 19, 9}).channels.Dsrc);
  EXPECT_FALSE(neighbours.MAX186InUse || neighbours.UDSInUse);
}

TEST(SourceTable, TheOptionsRefuseWhatCannotWork) {
  const RowRefusal sound = RefuseInOptions(RowsOf({20, 2}), false);
  EXPECT_EQ(sound.row, 1);
  EXPECT_EQ(sound.text,
            "You have selected a sound channel as a data source and no sound card is available. Please select a "
            "different data source for channel 2.");
  const RowRefusal both = RefuseInOptions(RowsOf({3, 20, 12}), true);
  EXPECT_EQ(both.row, 2);
  EXPECT_EQ(both.text,
            "You have both MAX186 and MAX187 ADCs selected for use.\n\nThis will not work.  Please edit your data "
            "source selections.");
  EXPECT_EQ(RefuseInOptions(RowsOf({3, 0, 12, 1}), false).text, "");
}

TEST(SourceTable, ADifferentialPairTakesBothItsInputs) {
  Settings settings = RowsOf({20, 63, 0, 61});
  settings.channels.LJU12se = {1, 1, 0, 1};
  EXPECT_EQ(RefuseInOptions(settings, false).row, 1);
  EXPECT_EQ(RefuseInOptions(settings, false).text,
            "You cannot use LabJack U12 channel 4 when channel 3 is set to differential mode.");
  for (const DataSourceId fine : {62, 65, 67}) {
    settings.channels.Dsrc[1] = fine;
    EXPECT_EQ(RefuseInOptions(settings, false).text, "") << fine << "; the fourth pair is meant to go through";
  }
}

TEST(SourceTable, EstimatesFollowTheFileLayoutAndTheRate) {
  Settings settings = RowsOf({20, 21});
  settings.timing.MaxArrayCount = std::numeric_limits<std::int32_t>::max();
  EXPECT_EQ(ConvertCountSize(settings), "(approx file size in bytes = 51,539,607,528 )") << "more than 32 bits";
  settings.timing.MaxArrayCount = 1000000;
  settings.files.SaveAsIntegers = settings.timing.NoTimeStamps = true;
  EXPECT_EQ(ConvertCountSize(settings), "(approx file size in bytes = 4,000,000 )");

  settings.timing.SampleRate = 80;
  settings.timing.vAvg = 0;
  EXPECT_EQ(ConvertCountRate(settings), "12.5  Samples per Second.") << "an average below 1 counts as 1";
  settings.timing.vAvg = 25;
  EXPECT_EQ(ConvertCountRate(settings), "2  Seconds per Sample.");
  settings.timing.SampleRate = 0;
  EXPECT_EQ(ConvertCountRate(settings), "");
}

TEST(SourceTable, HintsTellOfTheFirstNoneAndOfMissingEquations) {
  Settings settings = RowsOf({41, 40, 0});
  settings.channels.Equ = {};
  settings.channels.Equ[0] = "CH2*2";
  settings.channels.Equ[1] = " ";
  EXPECT_EQ(DsrcToolTip(settings, 0), "Equation: CH2*2");
  EXPECT_EQ(DsrcToolTip(settings, 1), "Equation Not Defined - be sure to define it before charting.");
  EXPECT_EQ(DsrcToolTip(settings, 2),
            "Data Source for Channel - 3  Note: First occurence of 'none' determines highest channel used.");
  EXPECT_EQ(DsrcToolTip(settings, 8), "");
  EXPECT_EQ(DsrcToolTip(settings, -1), "");
}

}  // namespace
}  // namespace tarvolt
