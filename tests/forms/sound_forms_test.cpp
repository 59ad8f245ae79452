// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QListWidget>
#include <QRadioButton>
#include <QSlider>
#include <cmath>
#include <numbers>

#include "forms/desk.h"
#include "forms/sound/form_mixer.h"
#include "forms/sound/form_sound_format.h"

namespace tarvolt {
namespace {

using namespace std::chrono_literals;

constexpr const char* kCard = "USB,0: Receiver, Line";
constexpr double kTone = 1000;  // hertz

// 1000 Hz at a tenth of full scale on the left, silence on the right.
std::pair<int, int> Tone(std::int64_t frame) {
  return {static_cast<int>(std::lround(3276.8 * std::sin(2 * std::numbers::pi * kTone * frame / 8000))), 0};
}

void Prepare(Station& station) {
  station.host.sound.Plug(kCard, Tone);
  station.Set("Dsrc0", 1).Set("Dsrc1", 2).Set("sWavFormat", 8).Set("TimerType", 1).Set("SampleRate", 250);
}

TEST(SoundForms, TheToneOfARunIsSeenInTheSpectrumAndTheMeters) {
  Desk desk(Prepare);
  const SpectrumFeed& feed = desk.station.Form().Sound().Spectrum();
  EXPECT_FALSE(feed.SpectrumActive);
  SettingsStore& store = desk.station.TheSession().store;
  store.SaveSetting(Section::Settings, "SpectrumPlace", "50 60 640 420");
  store.SaveSetting(Section::Settings, "SpectrumAverage", "3");
  store.SaveSetting(Section::Settings, "SpectrumSamples", "nonsense");
  desk.Choose("mnuMeters");
  desk.Choose("mnuSpectrum");
  EXPECT_TRUE(feed.SpectrumActive);
  EXPECT_EQ(desk.Find<QWidget>("FormSpectrum")->pos(), QPoint(50, 60)) << "as it was left";
  EXPECT_EQ(desk.Find<QWidget>("FormSpectrum")->size(), QSize(640, 420));
  EXPECT_EQ(desk.Find<QSpinBox>("SpnAverage")->value(), 3);
  EXPECT_EQ(feed.SpectrumSize, 1024) << "the first of the list";
  EXPECT_EQ(desk.LabelText("LblSpectrumState"), "No sound is being recorded.  ");
  desk.station.StartChart();
  for (int i = 0; i < 20; ++i) {
    desk.station.RunFor(500ms);
    desk.Settle();
  }
  EXPECT_TRUE(desk.LabelText("LblStrongest").starts_with("Left: strongest at 1000.0 Hz, -20.0 dB"))
      << desk.LabelText("LblStrongest");
  EXPECT_EQ(desk.LabelText("LblPeakL"), "-20.0 dB\n3277");
  EXPECT_EQ(desk.LabelText("LblPeakR"), "silent\n0");
  EXPECT_FALSE(desk.Find<QLabel>("LblSoundState")->isVisible());

  desk.Find<QWidget>("FormSpectrum")->move(30, 40);
  desk.Find<QWidget>("FormSpectrum")->resize(700, 400);
  desk.Find<QWidget>("FormSpectrum")->close();
  EXPECT_FALSE(feed.SpectrumActive) << "nothing is gathered for a window that is closed";
  desk.Choose("mnuSpectrum");
  EXPECT_TRUE(feed.SpectrumActive);
  desk.Find<QComboBox>("CboSize")->setCurrentIndex(1);
  EXPECT_EQ(feed.SpectrumSize, 2048);
  EXPECT_EQ(store.GetSetting(Section::Settings, "SpectrumSamples"), "2048");
  EXPECT_EQ(store.GetSetting(Section::Settings, "SpectrumPlace"), "30 40 700 400");
  desk.station.RunFor(1s);
  desk.Settle();
  EXPECT_TRUE(desk.LabelText("LblStrongest").starts_with("Left: strongest at 1000.0 Hz"));
  desk.station.StopChart();
  desk.Settle();
  EXPECT_EQ(desk.LabelText("LblPeakL"), "-\n");
}

TEST(SoundForms, TheirCommandsNeedASoundInput) {
  Desk without;
  Desk with(Prepare);
  for (const char* name : {"mnuMeters", "mnuSpectrum", "mnuMixer"}) {
    EXPECT_FALSE(without.Action(name)->isEnabled()) << name;
    EXPECT_TRUE(with.Action(name)->isEnabled()) << name;
  }
}

TEST(SoundForms, TheFormatsOfTheInputAreChosenFromAndOnesOf8BitAreNot) {
  Desk desk(Prepare);
  Session& session = desk.station.TheSession();
  session.settings.sound.sWavFormat = 20;
  session.overrides.clear();
  session.settings.program.ShowMsgBox = true;
  desk.station.StartChart();
  EXPECT_FALSE(desk.station.Running());
  auto* list = desk.Find<QListWidget>("LstFormats");
  ASSERT_GT(list->count(), 0);
  auto& ok = Find<QAbstractButton>(*list->window(), "cmdOK");
  EXPECT_FALSE(ok.isEnabled()) << "the format in use is none to keep";
  int usable = 0;
  for (int row = 0; row < list->count(); ++row) {
    const bool isOf8 = list->item(row)->text().contains(QStringLiteral(" 8 Bit"));
    EXPECT_EQ(list->item(row)->flags().testFlag(Qt::ItemIsEnabled), !isOf8);
    usable += isOf8 ? 0 : 1;
  }
  EXPECT_GT(usable, 1);
  list->setCurrentItem(list->findItems(QStringLiteral("22050 Hz 16 Bit Mono"), Qt::MatchExactly).value(0));
  ok.click();
  EXPECT_EQ(session.store.GetSetting(Section::Settings, "sWavFormat"), "5");
  desk.station.StartChart();
  EXPECT_TRUE(desk.station.Running());
}

TEST(SoundForms, TheMixerPanelSetsWhatTheCardHasAndClosesOnOk) {
  Desk desk(Prepare);
  MixerInputs inputs;
  inputs[0] = {true, "Line In", true, 31};
  inputs[3] = {true, "Mix", false, 0};
  desk.station.host.mixer.Fit(kCard, inputs);
  desk.Choose("mnuMixer");
  EXPECT_TRUE(desk.Find<QRadioButton>("OptLine")->isChecked());
  EXPECT_EQ(desk.LabelText("LblLineVol"), "31");
  EXPECT_FALSE(desk.Find<QRadioButton>("OptMic")->isEnabled());
  EXPECT_FALSE(desk.Find<QSlider>("SldMicVol")->isEnabled());
  EXPECT_TRUE(desk.Find<QRadioButton>("OptStereoMix")->isEnabled());
  EXPECT_FALSE(desk.Find<QSlider>("SldStereoMixVol")->isEnabled()) << "it has no volume";
  EXPECT_EQ(desk.station.TheSession().settings.sound.MixerLineVol, 50) << "looking stores nothing";

  EXPECT_EQ(desk.LabelText("LblMicVol"), "-");
  desk.Find<QSlider>("SldLineVol")->setValue(60);
  desk.Find<QSlider>("SldLineVol")->setValue(64);
  desk.Find<QRadioButton>("OptStereoMix")->click();
  EXPECT_EQ(desk.station.host.mixer.Inputs(kCard)[0].volume, 64);
  EXPECT_EQ(desk.station.host.mixer.Selected(kCard), 3);
  EXPECT_EQ(desk.station.TheSession().settings.card.MixerSource, 3);
  inputs[0].volume = 12;
  desk.station.host.mixer.Fit(kCard, inputs);
  auto* panel = static_cast<FormMixer*>(desk.Find<QWidget>("FormMixer"));
  panel->Refresh();
  EXPECT_EQ(desk.LabelText("LblLineVol"), "12") << "turned by another program";

  auto* ok = panel->findChild<QAbstractButton*>(QStringLiteral("cmdOK"));
  panel->ShowOk(false);
  EXPECT_FALSE(ok->isVisible());
  panel->ShowOk(true);
  ok->click();
  EXPECT_FALSE(panel->isVisible());
}

}  // namespace
}  // namespace tarvolt
