// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "station/on_a_station.h"

namespace tarvolt {
namespace {

using namespace std::chrono_literals;

using DiskFaults = OnAStation;

TEST_F(DiskFaults, AFullDiskIsToldOnceAndTheRunGoesOnUntilThereIsRoom) {
  station.Set("MaxArrayCount", 50).StartChart().RunForSets(20);
  station.host.disk.SetCapacity(station.host.disk.Used() + 100);
  station.RunForSets(130);  // two turnovers without room
  EXPECT_TRUE(station.Running());
  EXPECT_TRUE(station.FilesSaved().empty());
  EXPECT_TRUE(station.Logged("Could Not Save")) << station.Log();
  station.host.disk.SetCapacity(SimDisk::kUnlimited);
  station.RunForSets(600).StopChart();
  EXPECT_EQ(station.FirstChannelInFilesAndStore(), Ramp(600));
}

TEST_F(DiskFaults, TheBackupCatchesUpWithWhatAFullDiskRefused) {
  station.StartChart().RunForSets(20);
  station.host.disk.SetCapacity(station.host.disk.Used() + 30);
  station.RunForSets(60);
  EXPECT_LE(station.LogLines("Back"), 3) << station.Log();
  station.host.disk.SetCapacity(SimDisk::kUnlimited);
  station.RunForSets(100).Kill().Boot();
  EXPECT_EQ(station.OnlyRescued(), Ramp(100));
}

TEST_F(DiskFaults, AMiniChartIsNotClearedAheadOfItsBackup) {
  station.Set("MiniServer", true).Set("ChartWidth", 1).StartChart().RunForSets(20);
  station.host.disk.SetCapacity(station.host.disk.Used() + 30);
  station.RunForSets(60);
  station.host.disk.SetCapacity(SimDisk::kUnlimited);
  station.RunForSets(100).StopChart();
  EXPECT_EQ(station.OnlySaved(), Ramp(100));
}

TEST_F(DiskFaults, AReadOnlyFolderAtTheStopKeepsTheDataUntilItCanBeWritten) {
  station.StartChart().RunForSets(40);
  station.host.disk.SetReadOnly("/station/Data", true);
  station.RunForSets(60).StopChart();
  EXPECT_TRUE(station.FilesSaved().empty());
  EXPECT_TRUE(station.host.dialogs.HasShown("Could Not Save"));
  EXPECT_EQ(station.Setting("LocalRun"), "Running");
  station.host.disk.SetReadOnly("/station/Data", false);
  station.RunFor(60s);
  EXPECT_EQ(station.OnlySaved(), Ramp(60));
  EXPECT_EQ(station.Setting("LocalRun"), "OK");
}

TEST_F(DiskFaults, ANewRunDoesNotCostTheDataOfOneThatCouldNotBeSaved) {
  station.StartChart().RunForSets(40);
  station.host.disk.SetReadOnly("/station/Data/unknown", true);
  station.Set("OrganizeByMonth", true).StopChart().StartChart().RunForSets(80);
  station.host.disk.SetReadOnly("/station/Data/unknown", false);
  station.StopChart().RunFor(2min);
  const std::vector<double> values = station.FirstChannelInFilesAndStore();
  EXPECT_EQ(values, Ramp(static_cast<int>(values.size())));
  EXPECT_GE(values.size(), 79u);
}

TEST_F(DiskFaults, WhatCannotBeSavedAtTheEndIsRescuedAtTheNextStart) {
  station.StartChart().RunForSets(40);
  station.host.disk.SetCapacity(station.host.disk.Used() + 500);
  station.ShutDown();
  station.host.disk.SetCapacity(SimDisk::kUnlimited);
  station.Boot();
  EXPECT_EQ(station.OnlyRescued(), Ramp(40));
}

TEST_F(DiskFaults, AnEarlyRefusalOfAStartLeavesAnUnsavedChartInSafety) {
  station.StartChart().RunForSets(40);
  station.host.disk.SetCapacity(station.host.disk.Used() + 100);
  station.StopChart();
  station.Set("vAvg", 0).StartChart();
  EXPECT_FALSE(station.Running());
  station.host.disk.SetCapacity(SimDisk::kUnlimited);
  station.RunFor(3min);
  EXPECT_EQ(station.OnlySaved(), Ramp(40));
}

// Each operation of a run fails once, and then the disk is well again.
TEST_F(DiskFaults, AnySingleFailureOfTheDiskCostsNothing) {
  for (std::uint64_t operation = 1; operation < 250; ++operation) {
    Station other(operation);
    other.Set("MaxArrayCount", 15).StartChart();
    other.host.disk.FailOperation(operation, SimDisk::Repeat::Once, std::errc::io_error);
    other.RunForSets(50);
    EXPECT_TRUE(other.Running()) << operation;
    other.StopChart().RunFor(3min);
    EXPECT_EQ(other.FirstChannelInFilesAndStore(), Ramp(50)) << operation;
  }
}

}  // namespace
}  // namespace tarvolt
