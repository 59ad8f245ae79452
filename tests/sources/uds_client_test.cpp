// SPDX-License-Identifier: GPL-3.0-or-later
#include "sources/uds_client.h"

#include <gtest/gtest.h>

#include <chrono>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "sources/uds_bench.h"

namespace tarvolt {
namespace {

using namespace std::chrono_literals;
using Words = std::vector<std::string>;

TEST(UdsConnect, TellsTheSourceTheModeAndTakesItsChannels) {
  for (const bool push : {false, true}) {
    UdsBench bench;
    bench.settings.uds.TVudsIP = "10.0.0.5";
    bench.settings.uds.TVudsPort = "4711";
    ASSERT_TRUE(bench.StartRun(push));
    EXPECT_TRUE(bench.client.IsReady());
    EXPECT_EQ(bench.source->heard, (Words{"INIT", push ? "PUSH" : "POLL", "STAT"}));
    EXPECT_EQ(bench.source->peer->RemoteEnd().address, "10.0.0.5");
    EXPECT_EQ(bench.source->peer->RemoteEnd().port, 4711);
    EXPECT_EQ(bench.run.ChannelCount, 2);
    EXPECT_EQ(bench.window.header.channels, 2);
    EXPECT_EQ(bench.window.chart.ChannelCount(), 2);
    EXPECT_EQ(bench.window.view.Status.Text(), "");
    EXPECT_EQ(bench.LogLines("Connecting to UDS on :127.0.0.1:1735"), 1);
  }
}

TEST(UdsConnect, ASecondRunStartsAtTheTop) {
  UdsBench bench;
  ASSERT_TRUE(bench.StartRun());
  bench.StopChart();
  EXPECT_FALSE(bench.client.IsReady());
  bench.source->statusAnswer = "^^20131\xFF";
  EXPECT_FALSE(bench.StartRun()) << "the end of the last status exchange must not count for this one";
}

// One way for the opening to fail: what goes wrong, how long it takes, and the words for it.
struct Failure {
  std::string name;
  void (*arrange)(UdsBench& bench);
  std::chrono::milliseconds least;
  std::chrono::milliseconds most;
  std::string words;
  bool onStatusLine;
};

std::ostream& operator<<(std::ostream& stream, const Failure& failure) {
  return stream << failure.name;
}

class UdsConnectFails : public testing::TestWithParam<Failure> {};

TEST_P(UdsConnectFails, InTimeAndInTheRightWords) {
  UdsBench bench;
  GetParam().arrange(bench);
  const auto begin = bench.host.clock.Now();
  bench.run.plan = PlanOfRun(bench.settings);
  EXPECT_FALSE(bench.client.UDSConnect());
  const std::chrono::milliseconds taken(bench.host.clock.Now() - begin);
  EXPECT_GE(taken, GetParam().least);
  EXPECT_LE(taken, GetParam().most);
  EXPECT_EQ(bench.LogLines(GetParam().words), 1) << bench.session.log.Text();
  EXPECT_EQ(bench.window.view.Status.Text(), GetParam().onStatusLine ? GetParam().words : "");
  EXPECT_FALSE(bench.run.AbortFlag);
  EXPECT_FALSE(bench.client.IsReady());
  EXPECT_EQ(bench.stops, 0);
  bench.host.loop.RunFor(1min);  // nothing that is left over wakes up
}

void ListenWithStatus(UdsBench& bench, const std::string& answer) {
  bench.source.emplace(bench.host, std::uint16_t{1735});
  bench.source->statusAnswer = answer;
}

INSTANTIATE_TEST_SUITE_P(
    Opening, UdsConnectFails,
    testing::Values(Failure{"Unreachable",
                            [](UdsBench& bench) { bench.host.network.SetUnreachable("127.0.0.1", 1735, true); }, 30s,
                            30010ms, "Timed Out waiting for UDS connection.", true},
                    Failure{"Refused", [](UdsBench&) {}, 0ms, 1s, "UDS Connection failed. Connection refused", true},
                    Failure{"EscapeWhileConnecting",
                            [](UdsBench& bench) {
                              bench.host.network.SetUnreachable("127.0.0.1", 1735, true);
                              bench.PressEscapeAfter(5s);
                            },
                            5s, 5010ms, "UDS Connection attempt manually aborted.", false},
                    Failure{"Silent", [](UdsBench& bench) { ListenWithStatus(bench, ""); }, 30s, 30010ms,
                            "Timed Out waiting for UDS Initialization.", true},
                    Failure{"HalfMessage", [](UdsBench& bench) { ListenWithStatus(bench, "^^20132\xFF^^1001"); }, 30s,
                            30010ms, "Timed Out waiting for UDS Initialization.", true},
                    Failure{"EscapeWhileInitialising",
                            [](UdsBench& bench) {
                              ListenWithStatus(bench, "");
                              bench.PressEscapeAfter(7s);
                            },
                            7s, 7010ms, "Manually aborted waiting for UDS Initialization.", true},
                    Failure{"Dropped",
                            [](UdsBench& bench) {
                              ListenWithStatus(bench, "");
                              bench.source->onStat = [&bench] { bench.source->peer->Disconnect(); };
                            },
                            0ms, 1s, "Manually aborted waiting for UDS Initialization.", true},
                    Failure{"AnsweredAndHungUp",
                            [](UdsBench& bench) {
                              ListenWithStatus(bench, "");
                              bench.source->onStat = [&bench] {
                                bench.source->peer->Write("^^1001\xFF");
                                bench.source->peer->Disconnect();
                              };
                            },
                            0ms, 1s, "Manually aborted waiting for UDS Initialization.", true},
                    Failure{"Broken",
                            [](UdsBench& bench) {
                              ListenWithStatus(bench, "");
                              bench.source->onStat = [&bench] { bench.BreakLink(); };
                            },
                            0ms, 1s, "Manually aborted waiting for UDS Initialization.", true},
                    Failure{"NineChannels", [](UdsBench& bench) { ListenWithStatus(bench, "^^20139\xFF^^1001\xFF"); },
                            0ms, 1s, "Fatal Stream Error! There was an error in the number of channels received!",
                            false},
                    Failure{"NoCount", [](UdsBench& bench) { ListenWithStatus(bench, "^^2013\xFF"); }, 0ms, 1s,
                            "Fatal Stream Error! There was an error in the number of channels received!", false}),
    [](const auto& failing) { return failing.param.name; });

TEST(UdsStart, StartsTheProgramAndWaitsForItsWindowWithoutALimit) {
  UdsBench bench;
  bench.settings.uds.StartUDS = true;
  bench.settings.uds.UDSexe = "\"/opt/my source/receiver\" --quiet /tmp/x";
  bench.host.processes.onStart = [&](const std::string&) {
    bench.host.loop.After(20min, [&] { bench.host.processes.OpenWindow("My User Data Source 1"); });
  };
  ASSERT_TRUE(bench.StartRun());
  EXPECT_EQ(bench.host.processes.Started(), Words{bench.settings.uds.UDSexe});
  EXPECT_EQ(bench.LogLines("Trying to Start UDS: receiver\r"), 1);
  EXPECT_GE(bench.host.clock.Now(), 20 * 60 * 1000);

  bench.StopChart();
  ASSERT_TRUE(bench.StartRun());
  EXPECT_EQ(bench.host.processes.Started().size(), 1u) << "it runs already";
}

TEST(UdsStart, EscapeEndsTheWaitForTheProgramAndTheConnectionIsStillTried) {
  UdsBench bench;
  bench.settings.uds.StartUDS = true;
  bench.settings.uds.UDSexe = "C:\\uds\\receiver.exe";
  bench.host.loop.After(
      1s, [&] { EXPECT_EQ(bench.window.view.Status.Text(), "Trying to Start: receiver.exe  - Esc to quit trying."); });
  bench.PressEscapeAfter(3s);
  EXPECT_TRUE(bench.StartRun());
  EXPECT_LT(bench.host.clock.Now(), 4000);
}

TEST(UdsStart, AProgramThatCannotBeStartedIsToldAndNotWaitedFor) {
  UdsBench bench;
  bench.settings.uds.StartUDS = true;
  bench.settings.uds.UDSexe = "receiver";
  bench.host.processes.RefuseStarts("No such file");
  EXPECT_TRUE(bench.StartRun());
  EXPECT_EQ(bench.LogLines("UDS cannot be started: No such file"), 1);
}

TEST(UdsPoll, OneRequestBringsAllChannelsHoweverLongItTakes) {
  UdsBench bench;
  ASSERT_TRUE(bench.StartRun());
  bench.source->dataAnswer = "#0 1.5\xFF#1-2\xFF^^3001\xFF";
  EXPECT_EQ(bench.client.Poll(), UdsClient::PollResult::Answered);
  EXPECT_EQ(bench.client.TakeSet(), (UdsSet{1.5, -2}));
  EXPECT_TRUE(bench.sets.empty()) << "a polled set does not drive the run";

  bench.source->dataAnswer = "";
  bench.host.loop.After(2h, [&] { bench.source->peer->Write("#0 1\xFF^^300040000.5\xFF"); });
  EXPECT_EQ(bench.client.Poll(), UdsClient::PollResult::Answered);
  EXPECT_EQ(bench.client.TakeSet()[0], 1);
  EXPECT_EQ(bench.source->heard.back(), "GETD");
  EXPECT_GE(bench.host.clock.Now(), 2 * 60 * 60 * 1000);
}

TEST(UdsPoll, EscapeEndsTheWaitAndTheNextPollWaitsAgain) {
  UdsBench bench;
  ASSERT_TRUE(bench.StartRun());
  bench.PressEscapeAfter(90s);
  EXPECT_EQ(bench.client.Poll(), UdsClient::PollResult::GivenUp);
  const auto begin = bench.host.clock.Now();
  bench.host.loop.After(10s, [&] { bench.source->peer->Write("^^3001\xFF"); });
  EXPECT_EQ(bench.client.Poll(), UdsClient::PollResult::Answered);
  EXPECT_GE(bench.host.clock.Now() - begin, 10000);
}

TEST(UdsPoll, AnAnswerDuringATurnoverOfTheLogStillEndsTheWait) {
  UdsBench bench;
  ASSERT_TRUE(bench.StartRun());
  bench.run.phase = RunPhase::TurningOver;
  bench.source->dataAnswer = "^^3001\xFF";
  EXPECT_EQ(bench.client.Poll(), UdsClient::PollResult::Answered);
}

TEST(UdsPoll, ALinkLostInTheMiddleOfASetStopsTheRunOnce) {
  for (const bool broken : {false, true}) {
    UdsBench bench;
    ASSERT_TRUE(bench.StartRun());
    bench.host.loop.After(1s, [&] {
      bench.source->peer->Write("#0 1\xFF");
      broken ? bench.BreakLink() : bench.source->peer->Disconnect();
    });
    EXPECT_EQ(bench.client.Poll(), UdsClient::PollResult::LinkLost);
    EXPECT_EQ(bench.stops, 1);
    EXPECT_EQ(bench.LogLines("Lost UDS Connection Stopping Chart."), 1);
    EXPECT_EQ(bench.LogLines("UDS link: Connection reset by peer"), broken ? 1 : 0);
    EXPECT_TRUE(bench.host.dialogs.HasShown("Connection Lost with UDS"));
    EXPECT_EQ(bench.client.Poll(), UdsClient::PollResult::LinkLost) << "without a link at once";
    EXPECT_EQ(bench.LogLines("Lost UDS"), 1) << "to be told by who polled";
  }
}

TEST(UdsPoll, AStopDuringTheWaitEndsItWithoutAWord) {
  UdsBench bench;
  ASSERT_TRUE(bench.StartRun());
  bench.host.loop.After(1s, [&] { bench.StopChart(); });
  EXPECT_EQ(bench.client.Poll(), UdsClient::PollResult::LinkLost);
  EXPECT_EQ(bench.LogLines("Lost UDS"), 0);
  EXPECT_TRUE(bench.host.dialogs.Boxes().empty());
}

TEST(UdsClient, GoesWithItsLinkUp) {
  SimHost host{1};
  Session session{host.Record(), "/station"};
  session.settings.uds.UDSip = "127.0.0.1";
  session.settings.uds.UDSport = 1735;
  ScriptedSource source{host, 1735};
  UdsBench control;
  ChartWindow window;
  window.run.plan = PlanOfRun(session.settings);
  {
    SoundInput sound{session, window};
    UdsClient client{session, window, control, sound, nullptr};
    ASSERT_TRUE(client.UDSConnect());
    source.peer->Write("^^1002/x\xFF");
  }
  host.loop.RunFor(1min);
  EXPECT_TRUE(control.commands.empty());
  EXPECT_FALSE(source.peer->IsConnected());
}

}  // namespace
}  // namespace tarvolt
