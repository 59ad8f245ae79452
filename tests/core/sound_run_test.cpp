#include <gtest/gtest.h>

#include <cmath>

#include "station/station.h"
#include "timebase/time_base.h"

namespace tarvolt {
namespace {

using namespace std::chrono_literals;

constexpr const char* kCard = "USB,0: Receiver, Line";
constexpr double kMillisecond = 1.0 / 86400000;

std::pair<int, int> Steady(std::int64_t frame) {
  return frame % 2 == 0 ? std::pair(1000, -300) : std::pair(-1000, 300);
}

// A station whose only sources are the sides of a sound card, at 8000 Hz so that hours of it pass quickly.
class SoundRun : public ::testing::Test {
 protected:
  SoundRun() {
    station.host.sound.Plug(kCard, Steady);
    station.Set("Dsrc0", 1).Set("Dsrc1", 2).Set("Detection0", 2).Set("Detection1", 1).Set("sWavFormat", 8);
    station.Set("SampleRate", 100).Set("Pbuffer", 800).Set("ShowMsgBox", true);
  }

  std::vector<Sample> Stored() {
    std::vector<Sample> samples;
    const StripChart& chart = station.Form().Window().chart;
    for (std::int32_t i = 0; i < chart.Count(); ++i) {
      samples.push_back({chart.GetTime(i), {chart.GetValue(0, i), chart.GetValue(1, i)}});
    }
    return samples;
  }

  int LogLines(const std::string& words) const {
    int count = 0;
    const std::string log = station.Log();
    for (auto at = log.find(words); at != std::string::npos; at = log.find(words, at + 1)) ++count;
    return count;
  }

  Station station;
};

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
  const std::string bytes = *station.host.disk.Contents(station.FilesSaved().at(0));
  for (const char* row : {"Sound Card Left", "Detection Method: CH 2\xC8Peak", "8000 Hz 16 Bit Stereo Buffer:800",
                          "Source:Line Vol:50", "Sound Card Device\xC8USB,0: Receiver, Line",
                          "Last Sound Card Calibration\xC8None", "Timing Method: \xC8Timer"}) {
    EXPECT_NE(bytes.find(row), std::string::npos) << row;
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
  EXPECT_EQ(station.Form().Window().chart.XAxisMin, station.Run().time.firstStamp);
  EXPECT_NEAR(station.Run().ChartEndTime, station.Run().time.firstStamp + 1, kMillisecond);
}

TEST_F(SoundRun, ALongPeriodIsSplitAndAveraged) {
  station.Set("TimerType", 1).Set("SampleRate", 5000).StartChart();
  station.RunFor(101s);
  EXPECT_EQ(station.Run().EffectiveAvg, 10);
  EXPECT_EQ(station.host.sound.LastBufferBytes(), 500 * 8 * 4);
  EXPECT_EQ(Stored().size(), 20u);
  station.StopChart();
  EXPECT_EQ(station.host.disk.Contents(station.FilesSaved().at(0))->find("Actual Sample Period"), std::string::npos);
}

TEST_F(SoundRun, TheCorrectionStretchesTheBufferAndTheMetadataTellIt) {
  station.Set("TimerType", 1).Set("SampleRate", 7001).Set("SCTadjust", "1.25").StartChart();
  EXPECT_EQ(station.host.sound.LastBufferBytes(), std::lround(7001 / 8.0 * 8 * 1.25) * 4);
  station.RunFor(60s);
  station.StopChart();
  const std::string bytes = *station.host.disk.Contents(station.FilesSaved().at(0));
  for (const char* row : {"Timing Method: \xC8Sound Card",
                          "Sound Card Timing Correction\xC8"
                          "1.25",
                          "Actual Sample Period: \xC8"
                          "7001"}) {
    EXPECT_NE(bytes.find(row), std::string::npos) << row;
  }
}

TEST_F(SoundRun, AMonoStreamServesBothSidesAndCorrelationIsOfTheLastFrame) {
  station.Set("sWavFormat", 9).Set("Detection1", 2).StartChart();
  station.RunFor(2s);
  EXPECT_EQ(Stored().at(5).values, (std::vector<double>{1000, 1000}));
  station.StopChart();
  station.Set("sWavFormat", 8).Set("Dsrc1", 71).StartChart();
  station.RunFor(2s);
  EXPECT_EQ(Stored().at(5).values[1], 1000.0 * 300 / 200);
}

TEST_F(SoundRun, EscapeEndsTheWaitForSound) {
  station.host.sound.Stall(kCard);
  station.Boot();
  station.host.loop.After(30s, [&] { station.Form().Escape(); });
  station.StartChart();
  EXPECT_FALSE(station.Running());
  EXPECT_TRUE(station.host.dialogs.HasShown("No sound was detected from:\n\n" + std::string(kCard) +
                                            "\n\nCheck your input and you mixer settings."));
  EXPECT_EQ(station.View().StatusText, "Start Aborted");
  EXPECT_TRUE(station.View().cmdStart);
  EXPECT_EQ(station.host.sound.OpenNow(), 0);
}

TEST_F(SoundRun, AStopEndsTheWaitForSound) {
  station.host.sound.Stall(kCard);
  station.Set("ShowMsgBox", false).Boot();
  station.host.loop.After(30s, [&] { station.Form().StopChart(); });
  station.StartChart();
  EXPECT_FALSE(station.Running());
  EXPECT_TRUE(station.Logged("Start Aborted"));
  EXPECT_TRUE(station.Logged("was lost: it delivers nothing."));
  EXPECT_FALSE(station.Logged("The run goes on without it.")) << "none runs yet";
}

TEST_F(SoundRun, RefusalsNameWhatIsWrong) {
  const struct {
    const char* key;
    const char* value;
    const char* words;
  } cases[] = {{"sWavFormat", "20", "Tarvolt requires a 16 bit sound format to function properly.\n\nSelect a 16 bit"},
               {"SoundCardName", "Nothing,0: at all", "cannot be opened"}};
  for (const auto& c : cases) {
    Station other;
    other.host.sound.Plug(kCard, Steady);
    other.Set("Dsrc0", 1).Set("Dsrc1", 0).Set(c.key, c.value).StartChart();
    EXPECT_TRUE(other.host.dialogs.HasShown(c.words)) << c.key;
    EXPECT_FALSE(other.Running()) << c.key;
  }
}

TEST_F(SoundRun, ACardThatIsAwayAtAStartStaysTheOneChosen) {
  station.Boot();
  station.host.sound.Unplug(kCard);
  station.host.sound.Plug("PCH,0: Another card", Steady);
  station.StartChart();
  EXPECT_FALSE(station.Running());
  EXPECT_TRUE(station.Logged(std::string("The sound input ") + kCard + " cannot be opened"));
  station.ShutDown();
  station.host.sound.Unplug("PCH,0: Another card");
  station.Boot();
  Session& session = station.TheSession();
  EXPECT_EQ(session.settings.SoundCardName, kNoSoundCard);
  SaveRegistrySettings(session.store, session.overrides, "/station", session.settings);
  station.host.sound.Plug("PCH,0: Another card", Steady);
  station.host.sound.Plug(kCard, Steady);
  station.StartChart();
  EXPECT_TRUE(station.Running());
  EXPECT_EQ(session.settings.SoundCardName, kCard);
}

TEST_F(SoundRun, ACardThatIsPulledOutIsOpenedAgainByItsName) {
  station.Set("TimerType", 1).StartChart();
  station.RunFor(60s);
  station.host.sound.Unplug(kCard);
  station.host.sound.Plug("PCH,0: Another card", Steady);
  station.RunFor(90s);
  const std::size_t before = Stored().size();
  EXPECT_TRUE(station.Running());
  EXPECT_TRUE(station.Logged("The sound input USB,0: Receiver, Line was lost: No such device"));
  EXPECT_EQ(station.View().StatusText, "Sound lost: USB,0: Receiver, Line");
  EXPECT_TRUE(station.host.dialogs.HasShown("was lost: No such device"));
  station.host.sound.Plug(kCard, Steady);
  station.RunFor(60s);
  EXPECT_NEAR(static_cast<double>(Stored().size() - before), 590, 21);
  EXPECT_EQ(station.View().StatusText, "");
  EXPECT_TRUE(station.Logged("Sound is back from USB,0: Receiver, Line. The gap is 9")) << station.Log();
  EXPECT_EQ(station.host.sound.OpenNow(), 1);
}

TEST_F(SoundRun, ACardThatStallsOrFallsSilentIsOpenedAgain) {
  station.Set("TimerType", 1).StartChart();
  station.RunFor(10s);
  station.host.sound.Stall(kCard);
  station.RunFor(20s);
  EXPECT_TRUE(station.Logged("was lost: it delivers nothing"));
  station.host.sound.Heal();
  station.RunFor(20s);
  EXPECT_TRUE(station.Logged("The gap is 2"));
  station.host.sound.Plug(kCard, [](std::int64_t) { return std::pair(0, 0); });
  const int openings = station.host.sound.Openings();
  station.RunFor(60s);
  EXPECT_EQ(LogLines("gives zeros alone."), 1);
  EXPECT_EQ(station.host.sound.Openings(), openings + 1) << "once is enough: it may be true silence";
  EXPECT_EQ(Stored().back().values[0], 0) << "zeros are recorded all the same";
  station.host.sound.Plug(kCard, Steady);
  station.RunFor(5s);
  EXPECT_TRUE(station.Logged("of zeros.")) << station.Log();
}

TEST_F(SoundRun, AFileIsNeverBegunAnew) {
  station.host.sound.Plug(kCard, [](std::int64_t) { return std::pair(0, 0); });
  station.host.sound.Fix(kCard, {8000, 16, true});
  station.Set("TimerType", 1).StartChart();
  station.RunFor(30s);
  EXPECT_EQ(LogLines("gives zeros alone."), 1);
  station.host.sound.Stall(kCard);
  station.RunFor(30s);
  station.host.sound.Heal();
  station.RunFor(5s);
  EXPECT_EQ(station.host.sound.Openings(), 1);
  EXPECT_TRUE(station.Running());
}

TEST_F(SoundRun, BuffersThatFillDuringATickAreDroppedAndCounted) {
  station.uds.AnswersAfter(30ms);
  constexpr const char* kWords = "Sound buffer filled while last data was still being processed.";
  station.Set("Dsrc1", 20).Set("UDSpush", false).Set("Pbuffer", 1600).StartChart();
  station.RunFor(10s);
  EXPECT_GT(Stored().size(), 70u);
  for (const Sample& sample : Stored()) EXPECT_EQ(sample.values[0], 1000);
  const int lines = LogLines(kWords);
  EXPECT_GT(lines, 10);
  EXPECT_EQ(station.Form().Window().sound.overRuns, lines);
  station.StopChart();
  EXPECT_TRUE(station.Logged("Sound buffers lost: ")) << station.Log();
  station.Set("Pbuffer", 320).StartChart();
  station.RunFor(10s);
  EXPECT_LE(LogLines(kWords) - lines, 110) << "a flood is told in part";
  EXPECT_GT(station.Form().Window().sound.overRuns, 150);
  station.StopChart();
  EXPECT_TRUE(station.Logged("Sound buffers lost: ")) << station.Log();
}

TEST_F(SoundRun, BuffersThatFillAheadOfTheSoundRowAreKept) {
  station.uds.AnswersAfter(30ms);
  station.Set("Dsrc0", 20).Set("Dsrc1", 1).Set("Detection1", 2).Set("UDSpush", false).Set("Pbuffer", 320).StartChart();
  station.RunFor(10s);
  EXPECT_GT(Stored().size(), 70u);
  for (const Sample& sample : Stored()) EXPECT_EQ(sample.values[1], 1000);
  EXPECT_EQ(LogLines("Sound buffer filled while"), 0) << station.Log();
}

TEST_F(SoundRun, APushingSourceTakesTheClockAndTheSoundInput) {
  station.Set("TimerType", 1).Set("Dsrc0", 20).Set("Dsrc1", 1).Set("UDSpush", true).StartChart();
  station.RunForSets(30);
  EXPECT_EQ(Stored().size(), 30u);
  EXPECT_EQ(station.host.sound.Openings(), 0);
  const SoundRing& ring = station.Form().Window().sound.ring;
  const std::size_t entries = ring.PreBufferRing.size();
  EXPECT_NEAR(static_cast<double>(entries), 10 * 8000 * 2, 2000);
  station.uds.Send("^^5001x");
  station.RunFor(2s);
  EXPECT_GT(ring.RingWrite, 0);
  EXPECT_EQ(ring.PreBufferRing.size(), entries) << "a level meter leaves it";
  station.StopChart();
  station.host.sound.Unplug(kCard);
  station.TheSession().settings.SoundCardName = kNoSoundCard;
  station.Set("Dsrc1", 0).StartChart();
  EXPECT_TRUE(station.Running()) << "no card is needed: " << station.Log();
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

TEST_F(SoundRun, ALevelMeterOutlivesTheLossOfItsCard) {
  station.Set("Dsrc0", 20).Set("Dsrc1", 0).Set("UDSpush", true).StartChart();
  station.host.sound.RefuseOpening("Device or resource busy");
  station.uds.Send("^^5001x");
  station.RunFor(5s);
  EXPECT_EQ(LogLines("cannot be opened: Device or resource busy"), 1);
  EXPECT_EQ(station.host.sound.OpenNow(), 0);
  station.host.sound.Heal();
  station.RunFor(5s);
  EXPECT_EQ(station.host.sound.OpenNow(), 1) << "one that was refused is tried again";
  station.host.sound.Unplug(kCard);
  station.RunFor(3s);
  station.uds.Send("^^5001x");
  station.RunFor(3s);
  EXPECT_EQ(LogLines("was lost"), 2);
  station.host.sound.Plug(kCard, Steady);
  station.RunFor(5s);
  EXPECT_EQ(LogLines("Sound is back"), 2) << "asked for again while it was lost";
  EXPECT_EQ(station.host.sound.OpenNow(), 1);
  station.host.sound.Unplug(kCard);
  station.RunFor(3s);
  station.uds.Send("^^5002x");
  station.RunFor(3s);
  station.host.sound.Plug(kCard, Steady);
  station.RunFor(5s);
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

TEST_F(SoundRun, HoursOfRoughWeatherKeepTheRunItsValuesAndItsClock) {
  constexpr double kPeriod = 5.5;  // seconds of a sample: ten buffers, stretched by the correction
  constexpr int kHours = 3;
  const auto hasWrongSizes = [](double seconds) { return std::fabs(std::fmod(seconds / 60, 60) - 31) < 1.2; };
  const auto silence = [](std::int64_t) { return std::pair(0, 0); };
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
    sound.Unplug(kCard);
    station.RunFor(8min);
    sound.Plug(kCard, silence);
    station.RunFor(5min);
    sound.Plug(kCard, Rising);
    station.RunFor(5min);
    sound.Stall(kCard);
    station.RunFor(6min);
    sound.Heal();
    station.RunFor(4min);
  }
  EXPECT_TRUE(station.Running());
  EXPECT_TRUE(station.host.dialogs.Boxes().empty());
  EXPECT_EQ(LogLines("was lost"), 2 * kHours);
  EXPECT_EQ(LogLines("The gap is "), 2 * kHours);
  EXPECT_EQ(LogLines("gives zeros alone."), kHours);
  EXPECT_EQ(LogLines("of zeros."), kHours);
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
TEST_F(SoundRun, NoTransformSpansAGap) {
  SimSound& sound = station.host.sound;
  sound.Plug(kCard, [](std::int64_t frame) { return std::pair(static_cast<int>(frame % 32768), 0); });
  station.Set("TimerType", 1).Boot();
  SpectrumFeed& feed = station.Form().Spectrum();
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
    station.StartChart();
    station.RunFor(10s + std::chrono::milliseconds(130 * run));
    sound.Unplug(kCard);
    station.RunFor(7s);
    sound.Plug(kCard, [](std::int64_t frame) { return std::pair(static_cast<int>(frame % 32768), 0); });
    station.RunFor(10s);
    station.StopChart();
    station.RunFor(1s);
  }
  EXPECT_GT(arrays, 90);
}

TEST_F(SoundRun, LogsTurnOverWithoutLosingABufferAndKeepTheirClock) {
  station.Set("TimerType", 1).Set("MaxArrayCount", 50).Set("MetaDataActive", 1).StartChart();
  station.RunFor(12s);
  station.TheSession().settings.TimerType = 0;  // as a profile loaded meanwhile would
  station.TheSession().settings.Detection[0] = 3;
  station.RunFor(12s);
  EXPECT_EQ(station.host.sound.Openings(), 1);
  ASSERT_GE(station.FilesSaved().size(), 4u);
  TimeStamp last = 0;
  for (const std::string& file : station.FilesSaved()) {
    const std::vector<Sample> samples = station.SamplesIn(file);
    ASSERT_EQ(samples.size(), 50u);
    for (const Sample& sample : samples) {
      EXPECT_EQ(sample.values[0], 1000);
      if (last > 0) {
        EXPECT_NEAR(sample.stamp - last, 100 * kMillisecond, 1.5 * kMillisecond);
      }
      last = sample.stamp;
    }
    EXPECT_NE(station.host.disk.Contents(file)->find("8000 Hz 16 Bit Stereo Buffer:3200"), std::string::npos) << file;
  }
}

TEST_F(SoundRun, EachCardHasItsOwnCalibration) {
  station.Boot();
  Settings& settings = station.TheSession().settings;
  EXPECT_EQ(settings.SoundCardName, kCard);
  settings.PwrMultiL = 7;
  settings.LCHbkgnd[2] = 42;
  SaveRegistrySettings(station.TheSession().store, station.TheSession().overrides, "/station", settings);
  station.ShutDown();
  station.host.sound.Unplug(kCard);
  station.host.sound.Plug("PCH,0: Another card", Steady);
  station.Boot();
  EXPECT_EQ(station.TheSession().settings.SoundCardName, "PCH,0: Another card");
  EXPECT_EQ(station.TheSession().settings.PwrMultiL, 2000);
  EXPECT_TRUE(station.Logged("The sound input USB,0: Receiver, Line is not there."));
  station.ShutDown();
  station.host.sound.Unplug("PCH,0: Another card");
  station.Boot();
  EXPECT_EQ(station.TheSession().settings.SoundCardName, "None Available");
  station.ShutDown();
  station.host.sound.Plug(kCard, Steady);
  station.Boot();
  EXPECT_EQ(station.TheSession().settings.PwrMultiL, 7);
  EXPECT_EQ(station.TheSession().settings.LCHbkgnd[2], 42);
}

}  // namespace
}  // namespace tarvolt
