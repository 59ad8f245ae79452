// SPDX-License-Identifier: GPL-3.0-or-later
// What becomes of a run when its sound input is lost, late, silent or rough.

#include <cmath>

#include "core/sound_station.h"
#include "timebase/time_base.h"

namespace tarvolt {
namespace {

using namespace std::chrono_literals;

constexpr const char* kOther = "PCH,0: Another card";

std::pair<int, int> Silence(std::int64_t) {
  return {0, 0};
}

class SoundTrouble : public SoundStation {
 protected:
  /// From here on the disk is slow.
  void TakeTimeToSync(std::chrono::milliseconds time) {
    SimClock& clock = station.host.clock;
    station.host.disk.OnSync([&clock, time] { clock.AdvanceTo(clock.Now() + time.count()); });
  }

  void Pull(std::chrono::milliseconds wait) {
    station.host.sound.Unplug(kCard);
    station.RunFor(wait);
  }
  void PlugIn(std::chrono::milliseconds wait) {
    station.host.sound.Plug(kCard, Steady);
    station.RunFor(wait);
  }
  void StallFor(std::chrono::milliseconds wait) {
    station.host.sound.Stall(kCard);
    station.RunFor(wait);
    station.host.sound.Heal();
  }
  void Send(std::string_view word, std::chrono::milliseconds wait) {
    station.uds.Send(word);
    station.RunFor(wait);
  }

  double Seconds() { return static_cast<double>(station.host.clock.Now()) / 1000; }

  /// The samples of all logs, which must be so many milliseconds apart from each other.
  std::size_t SamplesApart(double period) {
    std::vector<Sample> all;
    for (const std::string& file : station.FilesSaved()) {
      const std::vector<Sample> samples = station.SamplesIn(file);
      all.insert(all.end(), samples.begin(), samples.end());
    }
    const std::vector<Sample> unsaved = Stored();
    all.insert(all.end(), unsaved.begin(), unsaved.end());
    for (const Sample& sample : all) EXPECT_EQ(sample.values[0], 1000);
    for (std::size_t i = 1; i < all.size(); ++i) {
      EXPECT_NEAR((all[i].stamp - all[i - 1].stamp) / kMillisecond, period, 1.5) << "when it was heard";
    }
    return all.size();
  }
};

TEST_F(SoundTrouble, ACardThatIsAwayAtAStartStaysTheOneChosen) {
  station.Boot();
  station.host.sound.Unplug(kCard);
  station.host.sound.Plug(kOther, Steady);
  station.StartChart();
  EXPECT_FALSE(station.Running());
  EXPECT_TRUE(station.Logged(std::string("The sound input ") + kCard + " cannot be opened"));
  station.ShutDown();
  station.host.sound.Unplug(kOther);
  station.Boot();
  Session& session = station.TheSession();
  EXPECT_EQ(session.settings.sound.SoundCardName, kNoSoundCard);
  SaveRegistrySettings(session.store, session.overrides, "/station", session.settings);
  station.host.sound.Plug(kOther, Steady);
  station.host.sound.Plug(kCard, Steady);
  station.StartChart();
  EXPECT_TRUE(station.Running());
  EXPECT_EQ(session.settings.sound.SoundCardName, kCard);
}

TEST_F(SoundTrouble, ACardThatIsPulledOutOrSilentIsToldAndOpenedAgainByItsName) {
  SimSound& sound = station.host.sound;
  station.Set("TimerType", 1).StartChart().RunFor(60s);
  sound.Plug(kOther, Steady);
  Pull(90s);
  EXPECT_TRUE(station.Logged("The sound input USB,0: Receiver, Line was lost: No such device"));
  EXPECT_EQ(station.View().Status.Text(), "Sound lost: USB,0: Receiver, Line");
  EXPECT_TRUE(station.host.dialogs.HasShown("was lost: No such device"));
  EXPECT_EQ(station.Form().Window().sound.LastAvgL, 0) << "no stale reading";
  PlugIn(60s);
  EXPECT_EQ(station.View().Status.Text(), "");
  EXPECT_TRUE(station.Logged("Sound is back from USB,0: Receiver, Line. The gap is 9")) << station.Log();
  EXPECT_EQ(sound.OpenNow(), 1);
  const int openings = sound.Openings();
  sound.Plug(kCard, Silence);
  station.RunFor(60s);
  EXPECT_EQ(station.View().Status.Text(), "Sound gives zeros alone: USB,0: Receiver, Line");
  EXPECT_EQ(sound.Openings(), openings + 1) << "once is enough: it may be true silence";
}

TEST_F(SoundTrouble, AFileIsNeverBegunAnew) {
  station.host.sound.Plug(kCard, Silence);
  station.host.sound.Fix(kCard, {8000, 16, true});
  station.Set("TimerType", 1).StartChart().RunFor(30s);
  EXPECT_EQ(LogLines("gives zeros alone."), 1);
  StallFor(30s);
  station.RunFor(5s);
  EXPECT_EQ(station.host.sound.Openings(), 1);
  EXPECT_TRUE(station.Running());
}

TEST_F(SoundTrouble, BuffersThatFillDuringATickAreDroppedAndCounted) {
  station.uds.AnswersAfter(30ms);
  constexpr const char* kWords = "Sound buffer filled while last data was still being processed.";
  station.Set("Dsrc1", 20).Set("UDSpush", false).Set("Pbuffer", 1600).StartChart().RunFor(10s);
  EXPECT_GT(Stored().size(), 70u);
  for (const Sample& sample : Stored()) EXPECT_EQ(sample.values[0], 1000);
  const int lines = LogLines(kWords);
  EXPECT_GT(lines, 10);
  EXPECT_EQ(station.Form().Window().sound.overRuns, lines);
  station.StopChart();
  EXPECT_TRUE(station.Logged("Sound buffers lost: ")) << station.Log();
  station.Set("Pbuffer", 320).StartChart().RunFor(10s);
  EXPECT_LE(LogLines(kWords) - lines, 110) << "a flood is told in part";
  EXPECT_GT(station.Form().Window().sound.overRuns, 150);
  station.StopChart();
  EXPECT_TRUE(station.Logged("Sound buffers lost: ")) << station.Log();
}

TEST_F(SoundTrouble, BuffersThatHadToWaitAreAllSamples) {
  station.Set("TimerType", 1).Set("SampleRate", 10).StartChart();
  station.host.sound.Jitter(400ms);
  station.RunFor(20s);
  const std::vector<Sample> samples = Stored();
  EXPECT_NEAR(static_cast<double>(samples.size()), 2000, 60);
  for (std::size_t i = 1; i < samples.size(); ++i) {
    ASSERT_NEAR(samples[i].stamp - samples[i - 1].stamp, 10 * kMillisecond, 1.5 * kMillisecond)
        << "not when it was taken";
  }
  station.host.clock.StepWall(-5s);
  station.RunFor(3s);
  EXPECT_NEAR(static_cast<double>(Stored().size() - samples.size()), 0, 60) << "a clock that is set back is waited for";
  station.StopChart();
  EXPECT_TRUE(station.Logged("The clock stood or went back: ")) << station.Log();
}

TEST_F(SoundTrouble, ASaveThatHoldsTheProgramUpIsNoLossAndNoSettingOfTheMomentChangesTheLogs) {
  station.Set("TimerType", 1).Set("MaxArrayCount", 150).Set("MetaDataActive", 1).StartChart();
  TakeTimeToSync(3s);
  station.RunFor(60s);
  station.TheSession().settings.timing.TimerType = 0;  // as a profile loaded meanwhile would
  station.TheSession().settings.channels.Detection[0] = 3;
  station.RunFor(60s);
  EXPECT_GE(station.FilesSaved().size(), 6u);
  EXPECT_NEAR(static_cast<double>(SamplesApart(100)), 10 * Seconds(), 70);
  EXPECT_EQ(LogLines("was lost") + LogLines("is missing from") + LogLines("gives zeros") + LogLines("Sound buffer"), 0)
      << station.Log();
  EXPECT_EQ(station.host.sound.Openings(), 1);
  EXPECT_TRUE(station.LastFileHolds("8000 Hz 16 Bit Stereo Buffer:3200"));
}

TEST_F(SoundTrouble, ALogBeginsWhereTheOneBeforeItEndedHoweverLongItsSaveTakes) {
  station.Set("TimerType", 1).Set("MaxArrayCount", 40).Set("TimeRefZero", true).StartChart();
  TakeTimeToSync(150ms);
  station.RunFor(30s);
  ASSERT_GE(station.FilesSaved().size(), 6u);
  for (const std::string& file : station.FilesSaved()) {
    const TimeStamp begin = station.SamplesIn(file).front().stamp;
    EXPECT_NEAR(begin - WholeDay(begin), 100 * kMillisecond, 2 * kMillisecond) << file;
  }
}

TEST_F(SoundTrouble, AGapThatNobodyTellsOfIsFoundAndKeptWithTheData) {
  station.Set("TimerType", 1).Set("MetaDataActive", 1).StartChart().RunFor(20s);
  StallFor(1500ms);
  station.RunFor(20s);
  EXPECT_EQ(LogLines("was lost"), 0);
  EXPECT_TRUE(station.Logged("Sound of 1.5 seconds is missing from USB,0: Receiver, Line.")) << station.Log();
  Pull(10s);
  PlugIn(10s);
  Pull(4s);
  station.StopChart();
  EXPECT_TRUE(station.Logged("did not come back. The gap is 4.")) << station.Log();
  EXPECT_TRUE(station.LastFileHolds("3 since the start, 1"));
  station.StartChart();
  EXPECT_FALSE(station.Running());
  station.host.sound.Plug(kCard, Steady);
  station.StartChart().RunFor(10s);
  StallFor(5s);
  station.RunFor(10s).StopChart();
  EXPECT_TRUE(station.LastFileHolds("1 since the start, 5."));
}

TEST_F(SoundTrouble, BuffersThatFillAheadOfTheSoundRowAreKept) {
  station.uds.AnswersAfter(30ms);
  station.Set("Dsrc0", 20).Set("Dsrc1", 1).Set("Detection1", 2).Set("UDSpush", false).Set("Pbuffer", 320);
  station.StartChart().RunFor(10s);
  EXPECT_GT(Stored().size(), 70u);
  for (const Sample& sample : Stored()) EXPECT_EQ(sample.values[1], 1000);
  EXPECT_EQ(LogLines("Sound buffer filled while"), 0) << station.Log();
}

TEST_F(SoundTrouble, ALevelMeterOutlivesTheLossOfItsCard) {
  station.Set("Dsrc0", 20).Set("Dsrc1", 0).Set("UDSpush", true).StartChart();
  station.host.sound.RefuseOpening("Device or resource busy");
  Send("^^5001x", 5s);
  EXPECT_EQ(LogLines("cannot be opened: Device or resource busy"), 1);
  EXPECT_EQ(station.host.sound.OpenNow(), 0);
  station.host.sound.Heal();
  station.RunFor(5s);
  EXPECT_EQ(station.host.sound.OpenNow(), 1) << "one that was refused is tried again";
  Pull(3s);
  Send("^^5001x", 3s);
  EXPECT_EQ(LogLines("was lost"), 2);
  PlugIn(5s);
  EXPECT_EQ(LogLines("Sound is back"), 2) << "asked for again while it was lost";
  EXPECT_EQ(station.host.sound.OpenNow(), 1);
  Pull(3s);
  Send("^^5002x", 3s);
  PlugIn(5s);
  EXPECT_EQ(station.host.sound.OpenNow(), 0) << "stopped while it was lost";
}

// The signal grows by 1 a second, so that each value tells when it was heard.
int LevelAt(double secondsSincePowerOn) {
  return 1000 + static_cast<int>(secondsSincePowerOn);
}

std::pair<int, int> Rising(std::int64_t frame) {
  const int level = LevelAt(static_cast<double>(frame) / 8000);
  return frame % 2 == 0 ? std::pair(level, -300) : std::pair(-level, 300);
}
TEST_F(SoundTrouble, HoursOfRoughWeatherKeepTheRunItsValuesAndItsClock) {
  constexpr double kPeriod = 5.5;  // seconds of a sample: ten buffers, stretched by the correction
  constexpr int kHours = 3;
  const auto hasWrongSizes = [](double seconds) { return std::fabs(std::fmod(seconds / 60, 60) - 31) < 1.2; };
  SimSound& sound = station.host.sound;
  sound.Plug(kCard, Rising);
  station.Set("TimerType", 1).Set("SampleRate", 5000).Set("SCTadjust", "1.1").Set("ShowMsgBox", false).StartChart();
  const double powerOn = NowPrecise(station.host.clock) - static_cast<double>(station.host.loop.Now()) * kMillisecond;
  for (int hour = 0; hour < kHours; ++hour) {
    sound.Jitter(400ms);
    station.RunFor(30min);
    sound.WrongSizes();
    station.RunFor(2min);
    sound.Heal();
    Pull(8min);
    sound.Plug(kCard, Silence);
    station.RunFor(5min);
    sound.Plug(kCard, Rising);
    station.RunFor(5min);
    StallFor(6min);
    station.RunFor(4min);
  }
  EXPECT_TRUE(station.Running());
  EXPECT_TRUE(station.host.dialogs.Boxes().empty());
  EXPECT_EQ(LogLines("was lost"), 2 * kHours);
  EXPECT_EQ(LogLines("The gap is "), 2 * kHours);
  EXPECT_EQ(LogLines("gives zeros alone."), kHours);
  EXPECT_EQ(LogLines("of zeros."), kHours);
  EXPECT_EQ(LogLines("is missing from"), 0) << "late is not missing";
  const std::vector<Sample> samples = Stored();
  EXPECT_NEAR(static_cast<double>(samples.size()), kHours * 46 * 60 / kPeriod, 3 * kHours) << "no read was lost";
  EXPECT_NEAR(samples.back().stamp, NowPrecise(station.host.clock), kPeriod / 86400);
  int silent = 0;
  int mixed = 0;  // they began before a gap and ended behind it
  for (std::size_t i = 1; i < samples.size(); ++i) {
    ASSERT_GT(samples[i].stamp, samples[i - 1].stamp);
    const double heardAt = (samples[i].stamp - powerOn) * 86400 - kPeriod / 2;
    const double value = samples[i].values[0];
    if (value == 0) {
      ++silent;
    } else if (std::fabs(value - LevelAt(heardAt)) > 2 && !hasWrongSizes(heardAt)) {
      ++mixed;
    }
  }
  EXPECT_NEAR(silent, kHours * 5 * 60 / kPeriod, 2 * kHours);
  EXPECT_LE(mixed, 4 * kHours) << "stamps and sound go together";
}

// A ramp of frames: an array that holds a piece of the signal from each side of a gap is none.
TEST_F(SoundTrouble, NoTransformSpansAGap) {
  const auto ramp = [](std::int64_t frame) { return std::pair(static_cast<int>(frame % 32768), 0); };
  station.host.sound.Plug(kCard, ramp);
  station.Set("TimerType", 1).Boot();
  SpectrumFeed& feed = station.Form().Sound().Spectrum();
  feed.SpectrumActive = true;
  feed.SpectrumSize = 3000;  // several buffers
  feed.SpectrumBufL.resize(3000);
  feed.SpectrumBufR.resize(3000);
  int arrays = 0;
  feed.receive = [&](int, const std::vector<double>& left, const std::vector<double>&) {
    ++arrays;
    for (std::size_t i = 1; i < left.size(); ++i) {
      const double step = left[i] - left[i - 1];
      ASSERT_TRUE(step == 1 || step == -32767) << i << ": " << step;
    }
  };
  for (int run = 0; run < 3; ++run) {
    station.StartChart().RunFor(10s + std::chrono::milliseconds(130 * run));
    Pull(7s);
    station.host.sound.Plug(kCard, ramp);
    station.RunFor(10s).StopChart().RunFor(1s);
  }
  EXPECT_GT(arrays, 90);
}

}  // namespace
}  // namespace tarvolt
