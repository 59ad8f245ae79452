// SPDX-License-Identifier: GPL-3.0-or-later
#include "sources/uds_messages.h"

#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "sources/uds_bench.h"

namespace tarvolt {
namespace {

using namespace std::chrono_literals;

/// A run that a source pushes, unless a test says otherwise.
struct UdsMessages : testing::Test {
  UdsMessages() { EXPECT_TRUE(bench.StartRun(true)); }
  UdsBench bench;
};

TEST_F(UdsMessages, ValuesAddUpByInput) {
  bench.Send("#3 12.5\xFF#3 12.5\xFF#1 2\xFF#0 9\xFF#x 4\xFF");
  EXPECT_EQ(bench.client.TakeSet(), (UdsSet{9, 2, 0, 25}));
  bench.Send("#1\xFF#1 \xFF#1abc\xFF#1&H10\xFF");
  EXPECT_EQ(bench.client.TakeSet(), (UdsSet{0, 16}));
}

TEST_F(UdsMessages, TornAndEmptyMessagesAreDroppedWithTheRestOfTheirEvent) {
  bench.Send("#0 1\xFF#0 10\xFF#0 1");
  bench.Send("00\xFF#0 1000\xFF");
  EXPECT_EQ(bench.client.TakeSet()[0], 1011) << "the two halves are not joined";
  bench.Send("#0 1\xFF\xFF#0 5\xFF");
  bench.Send("\xFF#0 5\xFF");
  EXPECT_EQ(bench.client.TakeSet()[0], 1);
}

TEST_F(UdsMessages, OverlongAndEndlessMessagesAreIgnored) {
  const std::string longest = "#0 1" + std::string(kUdsLongestMessage - 4, ' ');
  bench.Send(longest + "\xFF" + longest + " \xFF#0 4\xFF");
  EXPECT_EQ(bench.client.TakeSet()[0], 5);
  bench.Send(std::string(3 * SocketControl::kReadLimit, 'x'));
  bench.Send("#0 2\xFF");
  EXPECT_EQ(bench.client.TakeSet()[0], 2);
  EXPECT_TRUE(bench.client.IsReady());
}

TEST_F(UdsMessages, UnknownCodesAndTextsDoNothing) {
  bench.Send("^^2006\xFF^^4001x\xFF^^30x1\xFF^^300\xFF^3001x\xFFhello\xFF^^9999\xFF^^ 3001\xFF");
  EXPECT_TRUE(bench.sets.empty());
  EXPECT_EQ(bench.stops, 0);
  EXPECT_TRUE(bench.client.IsReady());
}

TEST_F(UdsMessages, APushedSetDrivesTheRunWithItsTime) {
  bench.Send("#0 1\xFF^^3000 40000.25\xFF^^3001\xFF");
  bench.run.phase = RunPhase::TurningOver;
  bench.Send("^^3001\xFF");
  bench.run.phase = RunPhase::Idle;
  bench.Send("^^3001\xFF");
  EXPECT_EQ(bench.sets, (std::vector<std::optional<TimeStamp>>{40000.25, std::nullopt}));
}

TEST_F(UdsMessages, ATimeThatIsNoDateGivesTheClocksTimeAndIsLoggedOnce) {
  bench.Send("^^3000\xFF^^3000nan\xFF^^30001e308\xFF^^3000-5\xFF^^30002958466\xFF^^30002958465.9\xFF");
  ASSERT_EQ(bench.sets.size(), 6u);
  for (int i = 0; i < 5; ++i) EXPECT_EQ(bench.sets[i], std::nullopt) << i;
  EXPECT_EQ(bench.sets[5], 2958465.9);
  EXPECT_EQ(bench.LogLines("UDS sent a time that is no date."), 1);
}

TEST_F(UdsMessages, ASetThatStopsTheRunVoidsTheRestOfItsEvent) {
  bench.whileSetEnds = [&] { bench.StopChart(); };
  bench.Send("#0 1\xFF^^3001\xFF#0 5\xFF^^1002/x\xFF");
  EXPECT_EQ(bench.client.TakeSet()[0], 1);
  EXPECT_TRUE(bench.commands.empty());
  EXPECT_EQ(bench.stops, 1);
}

TEST_F(UdsMessages, ASetThatStartsTheNextRunIsNotFollowedByTheOldLink) {
  bench.whileSetEnds = [&] {
    bench.whileSetEnds = nullptr;
    bench.StopChart();
    EXPECT_TRUE(bench.StartRun(true));
  };
  bench.Send("^^3001\xFF#0 5\xFF");
  EXPECT_EQ(bench.client.TakeSet()[0], 0);
  bench.Send("#0 3\xFF^^3001\xFF");
  EXPECT_EQ(bench.client.TakeSet()[0], 3);
  EXPECT_EQ(bench.sets.size(), 2u);
}

TEST_F(UdsMessages, MessagesKeepTheirOrderWhenACommandYields) {
  std::vector<double> sums;
  bench.whileSetEnds = [&] { sums.push_back(bench.client.TakeSet()[0]); };
  bench.whileCommandRuns = [&] {
    bench.source->peer->Write("#0 100\xFF^^3001\xFF");
    bench.host.loop.RunFor(5ms);
  };
  bench.Send("#0 1\xFF^^1002/L file\xFF#0 10\xFF^^3001\xFF");
  EXPECT_EQ(bench.commands, std::vector<std::string>{"/L file"});
  EXPECT_EQ(sums, (std::vector<double>{11, 100}));
}

TEST_F(UdsMessages, AChannelCountSizesTheStoreBeforeTheRunAndNeverInIt) {
  bench.run.phase = RunPhase::Idle;
  bench.Send("^^2013 5\xFF");
  EXPECT_EQ(bench.window.view.Status.Text(), "Channels: 5");
  EXPECT_EQ(bench.run.ChannelCount, 5);
  EXPECT_EQ(bench.window.header.channels, 5);
  EXPECT_EQ(bench.window.chart.ChannelCount(), 5);

  bench.run.phase = RunPhase::Running;
  bench.window.chart.SetValue(4, bench.window.chart.AddTime(40000), 9);
  bench.Send("^^20132\xFF");
  EXPECT_EQ(bench.run.ChannelCount, 5);
  EXPECT_EQ(bench.LogLines("UDS changed its channels to 2"), 1);
  bench.Send("^^20139\xFF");
  EXPECT_EQ(bench.stops, 1);
  EXPECT_EQ(bench.run.ChannelCount, 5) << "what was measured is still to be saved with all its channels";
  EXPECT_EQ(bench.window.chart.GetValue(4, 0), 9);
  EXPECT_TRUE(bench.host.dialogs.HasShown("Fatal Stream Error!"));
}

TEST_F(UdsMessages, AnImpossibleChannelCountInAnEmptyRunLeavesOneChannel) {
  bench.settings.program.ShowMsgBox = false;
  bench.Send("^^20130\xFF");
  EXPECT_EQ(bench.stops, 1);
  EXPECT_EQ(bench.run.ChannelCount, 1);
  EXPECT_TRUE(bench.host.dialogs.Boxes().empty());
}

TEST_F(UdsMessages, TheSourceSetsTheOriginOfTimeUnlessItIsNoDate) {
  bench.Send("^^3002 40000.5\xFF");
  EXPECT_EQ(bench.run.time.firstStamp, 40000.5);
  EXPECT_EQ(bench.window.chart.XAxisMin, 40000.5);
  EXPECT_DOUBLE_EQ(bench.window.chart.XAxisMax, 40000.5 + 120.0 / 86400);
  EXPECT_EQ(bench.run.log.ChartEndTime, 40001.5);
  bench.Send("^^3002\xFF");
  EXPECT_EQ(bench.run.log.ChartEndTime, 40001.5) << "a log that ends at once would turn over with every sample";
}

}  // namespace
}  // namespace tarvolt
