// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/sound/sound_card.h"

#include <gtest/gtest.h>

#include "sources/sound/mixer_control.h"
#include "station/station.h"

namespace tarvolt {
namespace {

using namespace std::chrono_literals;

constexpr const char* kCard = "USB,0: Receiver, Line";
constexpr const char* kOther = "PCH,0: On board";

class SoundCardTest : public ::testing::Test, protected Person {
 protected:
  SoundCardTest() {
    for (const char* card : {kCard, kOther}) {
      station.host.sound.Plug(card, [](std::int64_t frame) { return std::pair(frame % 2 == 0 ? 1000 : -1000, 300); });
    }
    station.Set("Dsrc0", 1).Set("Dsrc1", 2).Set("SampleRate", 100).Set("Pbuffer", 800).Set("ShowMsgBox", true);
    station.For(*this).Boot();
    TheSession().settings.sound.SoundCardName = kCard;
    LoadCardSettings(TheSession().store, TheSession().overrides, "/station", Now());
  }

  void ChooseSoundFormat() override { ++choosersOpened; }

  Session& TheSession() { return station.TheSession(); }
  Settings& Now() { return TheSession().settings; }
  std::string Stored(const char* card, const char* key) { return TheSession().store.GetCardSetting(card, key, "none"); }

  void FitMixer() {
    MixerInputs inputs;
    inputs[0] = {true, "Line", true, 31};
    inputs[1] = {true, "Front Mic", true, 80};
    station.host.mixer.Fit(kCard, inputs);
  }

  std::string MixerRow() {
    station.StartChart().RunFor(2s).StopChart();
    const std::string bytes = *station.host.disk.Contents(station.FilesSaved().back());
    const std::size_t at = bytes.find("Source:");
    return at == std::string::npos ? "" : bytes.substr(at, bytes.find_first_of("\xC8\xFE\xFF\r", at) - at);
  }

  int choosersOpened = 0;
  Station station;
};

TEST_F(SoundCardTest, ARunTellsTheVolumeThatTheMixerHas) {
  Now().sound.MixerLineVol = 44;
  EXPECT_TRUE(MixerRow().starts_with("Source:Line Vol:44")) << "no mixer: as stored";
  FitMixer();
  EXPECT_TRUE(MixerRow().starts_with("Source:Line Vol:31"));
  SelectMixerSource(TheSession(), 1);
  EXPECT_TRUE(MixerRow().starts_with("Source:Mic Vol:80"));
  EXPECT_EQ(Now().sound.MixerLineVol, 44) << "the one set by a person stays";
}

TEST_F(SoundCardTest, TheMixerIsSetAndKeptForItsCardAlone) {
  FitMixer();
  EXPECT_TRUE(SelectMixerSource(TheSession(), 1));
  EXPECT_TRUE(SetMixerVolume(TheSession(), 1, 130));
  EXPECT_EQ(station.host.mixer.Selected(kCard), 1);
  EXPECT_EQ(station.host.mixer.Inputs(kCard)[1].volume, 100);
  EXPECT_EQ(Stored(kCard, "MixerSource"), "1");
  EXPECT_EQ(Stored(kOther, "MixerSource"), "none");
  EXPECT_EQ(Stored(kCard, "MixerMicVol"), "100");
  EXPECT_EQ(Stored(kOther, "MixerMicVol"), "none");

  EXPECT_FALSE(SelectMixerSource(TheSession(), 3)) << "the card has none";
  EXPECT_EQ(Now().card.MixerSource, 3) << "the backgrounds are chosen by it all the same";
  EXPECT_TRUE(station.Logged("refuses the input Stereo Mix"));

  SetMixerEnabled(TheSession(), false);
  EXPECT_TRUE(SelectMixerSource(TheSession(), 0));
  EXPECT_TRUE(SetMixerVolume(TheSession(), 0, 10));
  EXPECT_EQ(station.host.mixer.Selected(kCard), 1) << "left to other programs";
  EXPECT_EQ(station.host.mixer.Inputs(kCard)[0].volume, 31);
}

TEST_F(SoundCardTest, AnotherCardBringsItsOwnCalibration) {
  TheSession().store.SaveCardSetting(kOther, "PwrMultiR", "777");
  Now().card.PwrMultiL = 123;
  Now().card.PwrMultiR = 456;
  EXPECT_FALSE(station.Form().Options().Confirm({{"SoundCardName", kOther}, {"PwrMultiL", "99"}}, {}));
  EXPECT_EQ(Now().sound.SoundCardName, kOther);
  EXPECT_EQ(Now().card.PwrMultiL, 99) << "typed for the new card";
  EXPECT_EQ(Now().card.PwrMultiR, 777) << "not the old card's";
  EXPECT_EQ(Stored(kOther, "PwrMultiR"), "777");
  EXPECT_EQ(Stored("PCH,0: Renamed by its driver", "PwrMultiR"), "777");
  Settings renamed = Now();
  renamed.sound.SoundCardName = "PCH,0: As it was listed before";
  EXPECT_EQ(SoundCardsToChoose(TheSession(), renamed), (std::vector<std::string>{renamed.sound.SoundCardName, kCard}));

  station.StartChart();
  ASSERT_TRUE(station.Running());
  const auto problem = station.Form().Options().Confirm({{"SoundCardName", kCard}}, {});
  ASSERT_TRUE(problem);
  EXPECT_EQ(problem->key, "SoundCardName");
  EXPECT_EQ(Now().sound.SoundCardName, kOther);
}

TEST_F(SoundCardTest, ARefusedFormatOpensTheChooserOnlyWherePersonsAreTold) {
  Now().sound.sWavFormat = 20;
  station.StartChart();
  EXPECT_FALSE(station.Running());
  EXPECT_EQ(choosersOpened, 1);
  EXPECT_TRUE(station.host.dialogs.HasShown("Tarvolt requires a 16 bit sound format to function properly."));
  Now().program.ShowMsgBox = false;
  station.StartChart();
  EXPECT_EQ(choosersOpened, 1);
  tarvolt::ChooseSoundFormat(TheSession(), 4);
  EXPECT_EQ(TheSession().store.GetSetting(Section::Settings, "sWavFormat"), "4");
  station.StartChart();
  EXPECT_TRUE(station.Running());
  EXPECT_EQ(station.Form().Sound().Rate(), 22050);
}

}  // namespace
}  // namespace tarvolt
