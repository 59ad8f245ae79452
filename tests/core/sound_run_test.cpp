// SPDX-License-Identifier: GPL-3.0-or-later
#include <cmath>

#include "core/sound_station.h"

namespace tarvolt {
namespace {

using namespace std::chrono_literals;

using SoundRun = SoundStation;

TEST_F(SoundRun, TheTimerReadsWhatTheBuffersHaveGathered) {
  station.StartChart();
  ASSERT_TRUE(station.Running()) << station.Log();
  EXPECT_EQ(station.host.sound.LastBufferBytes(), 800);
  station.RunFor(10s);
  const std::vector<Sample> samples = Stored();
  ASSERT_GE(samples.size(), 98u);
  for (const Sample& sample : samples) EXPECT_EQ(sample.values, (std::vector<double>{1000, 300}));
  station.StopChart();
  EXPECT_EQ(station.host.sound.OpenNow(), 0);
  for (const char* row : {"Sound Card Left", "Detection Method: CH 2\xC8Peak", "8000 Hz 16 Bit Stereo Buffer:800",
                          "Source:Line Vol:50", "Sound Card Device\xC8USB,0: Receiver, Line",
                          "Last Sound Card Calibration\xC8None", "Timing Method: \xC8Timer"}) {
    EXPECT_TRUE(station.LastFileHolds(row)) << row;
  }
}

TEST_F(SoundRun, BuffersAreTheClockAndTheFirstBeginsTheLog) {
  station.Set("TimerType", 1).Set("SampleRate", 250).Set("StartOnSecondBoundary", true);
  station.host.clock.AdvanceTo(137);
  station.StartChart();
  EXPECT_EQ(station.host.sound.LastBufferBytes(), 250 * 8 * 4);
  station.RunFor(20s);
  const std::vector<Sample> samples = Stored();
  ASSERT_GE(samples.size(), 70u);
  EXPECT_LE(FieldsOf(station.Run().time.firstStamp).millisecond, 2) << "the simulated clock runs while it is spun on";
  for (std::size_t i = 0; i < samples.size(); ++i) {
    EXPECT_NEAR(samples[i].stamp, station.Run().time.firstStamp + (i + 1) * 250 * kMillisecond, 1.5 * kMillisecond);
    EXPECT_EQ(samples[i].values[0], 1000);
  }
  EXPECT_EQ(station.Chart().XAxisMin, station.Run().time.firstStamp);
  EXPECT_NEAR(station.Run().log.ChartEndTime, station.Run().time.firstStamp + 1, kMillisecond);
}

TEST_F(SoundRun, ALongPeriodIsSplitAndAveragedAndTheMetadataTellOneThatIsNotKept) {
  station.Set("TimerType", 1).Set("SampleRate", 5000).StartChart().RunFor(101s);
  EXPECT_EQ(station.Run().EffectiveAvg, 10);
  EXPECT_EQ(station.host.sound.LastBufferBytes(), 500 * 8 * 4);
  EXPECT_EQ(Stored().size(), 20u);
  station.StopChart();
  EXPECT_FALSE(station.LastFileHolds("Actual Sample Period"));

  station.Set("SampleRate", 7001).Set("SCTadjust", "1.25").StartChart();
  EXPECT_EQ(station.host.sound.LastBufferBytes(), std::lround(7001 / 8.0 * 8 * 1.25) * 4);
  station.RunFor(60s).StopChart();
  for (const char* row : {"Timing Method: \xC8Sound Card",
                          "Sound Card Timing Correction\xC8"
                          "1.25",
                          "Actual Sample Period: \xC8"
                          "7001"}) {
    EXPECT_TRUE(station.LastFileHolds(row)) << row;
  }
}

TEST_F(SoundRun, AMonoStreamServesBothSidesAndCorrelationIsOfTheLastFrame) {
  station.Set("sWavFormat", 9).Set("Detection1", 2).StartChart().RunFor(2s);
  EXPECT_EQ(Stored().at(5).values, (std::vector<double>{1000, 1000}));
  station.StopChart();
  station.Set("sWavFormat", 8).Set("Dsrc1", 71).StartChart().RunFor(2s);
  EXPECT_EQ(Stored().at(5).values[1], 1000.0 * 300 / 200);
}

TEST_F(SoundRun, EscapeOrAStopEndsTheWaitForSound) {
  station.host.sound.Stall(kCard);
  station.Boot();
  for (const bool escape : {true, false}) {
    station.Set("ShowMsgBox", escape);
    station.host.loop.After(30s, [&] {
      EXPECT_FALSE(station.States().cmdStart || station.States().ModeMenus);
      station.Form().EnterMode(SessionMode::Server);
      escape ? station.Form().Escape() : station.Form().StopChart();
    });
    station.StartChart();
    EXPECT_FALSE(station.Running());
    EXPECT_EQ(station.Form().Window().Mode, SessionMode::StandAlone);
    EXPECT_EQ(station.View().Status.Text(), "Start Aborted");
    EXPECT_TRUE(station.States().cmdStart);
    EXPECT_EQ(station.host.sound.OpenNow(), 0);
  }
  EXPECT_TRUE(station.host.dialogs.HasShown("No sound was detected from:\n\n" + std::string(kCard) +
                                            "\n\nCheck your input and you mixer settings."));
  EXPECT_TRUE(station.Logged("was lost: it delivers nothing."));
  EXPECT_FALSE(station.Logged("The run goes on without it.")) << "none runs yet";
}

TEST_F(SoundRun, APushingSourceTakesTheClockAndTheSoundInput) {
  station.Set("TimerType", 1).Set("SampleRate", 5000).Set("Dsrc0", 20).Set("Dsrc1", 1).Set("UDSpush", true);
  station.Set("MetaDataActive", 1).StartChart().RunForSets(30);
  EXPECT_EQ(Stored().size(), 30u) << "each set is a sample, whatever the period of a clock that is not used";
  EXPECT_EQ(station.host.sound.Openings(), 0);
  const SoundRing& ring = station.Form().Window().sound.ring;
  const std::size_t entries = ring.PreBufferRing.size();
  EXPECT_GT(entries, 1u);
  station.uds.Send("^^5001x");
  station.RunFor(2s);
  EXPECT_GT(ring.RingWrite, 0);
  EXPECT_EQ(ring.PreBufferRing.size(), entries) << "a level meter leaves it";
  station.StopChart();
  EXPECT_FALSE(station.LastFileHolds("Sound Card Timing Correction"));
  station.host.sound.Unplug(kCard);
  station.TheSession().settings.sound.SoundCardName = kNoSoundCard;
  station.Set("Dsrc1", 0).StartChart();
  EXPECT_TRUE(station.Running()) << "no card is needed: " << station.Log();
}

TEST_F(SoundRun, ADataSourceThatCountsItsOwnChannelsLeavesTheRowsOfOthers) {
  station.uds.Channels(1);
  station.Set("Dsrc0", 20).Set("Dsrc1", 1).Set("Detection1", 2).Set("UDSpush", false).StartChart().RunFor(5s);
  EXPECT_EQ(station.Run().ChannelCount, 2);
  EXPECT_EQ(Stored().at(20).values, (std::vector<double>{20, 1000}));
}

TEST_F(SoundRun, APollThatIsGivenUpLeavesNothingOfItsTickInTheSums) {
  station.uds.AnswersAfter(500ms);
  station.Set("Dsrc0", 1).Set("Detection0", 2).Set("Dsrc1", 20).Set("UDSpush", false).StartChart();
  for (int i = 1; i < 6; ++i) station.host.loop.After(i * 1s, [&] { station.Form().Escape(); });
  station.RunFor(8s);
  EXPECT_GT(Stored().size(), 5u);
  for (const Sample& sample : Stored()) EXPECT_LE(sample.values.at(0), 1000.5);
}

TEST_F(SoundRun, ADataSourceUsesTheCardAsALevelMeter) {
  station.host.sound.Fix(kCard, {8000, 16, true});
  station.Set("sWavFormat", 9).Set("Dsrc0", 20).Set("Dsrc1", 0).Set("UDSpush", true).Set("Pbuffer", 4000).StartChart();
  station.uds.Send("^^5004x");
  station.uds.Send("^^5001x");
  station.RunFor(3s);
  EXPECT_EQ(station.host.sound.OpenNow(), 1);
  EXPECT_EQ(station.host.sound.LastBufferBytes(), 4000);
  station.uds.Send("^^5003x");
  station.uds.Send("^^5002x");
  station.RunFor(1s);
  std::vector<std::string> replies;
  for (const std::string& word : station.uds.Received()) {
    if (word.starts_with("PEAK") || word.starts_with("WAVG")) replies.push_back(word);
  }
  EXPECT_EQ(replies, (std::vector<std::string>{"WAVG 0 0", "PEAK  300  1000"}));
  station.StopChart();
  EXPECT_EQ(station.host.sound.OpenNow(), 0);
}

TEST_F(SoundRun, EachCardHasItsOwnCalibration) {
  station.Boot();
  const auto card = [this] { return station.TheSession().settings.sound.SoundCardName; };
  const auto factor = [this] { return station.TheSession().settings.card.PwrMultiL; };
  EXPECT_EQ(card(), kCard);
  Settings& settings = station.TheSession().settings;
  settings.card.PwrMultiL = 7;
  SaveRegistrySettings(station.TheSession().store, station.TheSession().overrides, "/station", settings);
  station.ShutDown();
  station.host.sound.Unplug(kCard);
  station.host.sound.Plug("PCH,0: Another card", Steady);
  station.Boot();
  EXPECT_EQ(card(), "PCH,0: Another card");
  EXPECT_EQ(factor(), 2000);
  EXPECT_TRUE(station.Logged("The sound input USB,0: Receiver, Line is not there."));
  station.ShutDown();
  station.host.sound.Unplug("PCH,0: Another card");
  station.Boot();
  EXPECT_EQ(card(), kNoSoundCard);
  station.ShutDown();
  station.host.sound.Plug(kCard, Steady);
  station.Boot();
  EXPECT_EQ(factor(), 7);
  station.ShutDown().Set("SoundCardName", "Nothing,0: at all").StartChart();
  EXPECT_EQ(card(), "Nothing,0: at all") << "one that is asked for is never another";
  EXPECT_FALSE(station.Running());
}

}  // namespace
}  // namespace tarvolt
