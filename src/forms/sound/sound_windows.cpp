// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/sound/sound_windows.h"

#include "forms/window_place.h"

namespace tarvolt {
namespace {

void BringToFront(QWidget& window) {
  window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
  window.show();
  window.raise();
  window.activateWindow();
}

}  // namespace

SoundWindows::SoundWindows(Session& session, SoundDesk& desk, QWidget* owner)
    : session_(session), desk_(desk), owner_(owner) {}

void SoundWindows::AddMenus(QMenu& menu, MenuItems& items) {
  const auto hasInput = [this] { return desk_.HasInput(); };
  QObject::connect(&menu, &QMenu::aboutToShow, owner_, [this, &items] {
    desk_.LookForCard();
    items.Refresh();
  });
  items.Add(
      menu, "mnuMeters", QStringLiteral("Sound &Levels"), {}, [this] { ShowMeters(); }, hasInput);
  items.Add(
      menu, "mnuSpectrum", QStringLiteral("Sound S&pectrum"), {}, [this] { ShowSpectrum(); }, hasInput);
  items.Add(
      menu, "mnuMixer", QStringLiteral("Mi&xer (Input Sound Settings)"), {}, [this] { ShowMixer(); }, hasInput);
}

void SoundWindows::ShowMeters() {
  if (meters_ == nullptr) {
    meters_ = new FormMeters(desk_.HighestSamples(), owner_);
    new WindowPlace(*meters_, session_.store, "SoundLevelsPlace");
  }
  BringToFront(*meters_);
}

void SoundWindows::ShowSpectrum() {
  if (spectrum_ == nullptr) {
    spectrum_ = new FormSpectrum(desk_.Spectrum(), session_.store, owner_);
    new WindowPlace(*spectrum_, session_.store, "SpectrumPlace");
  }
  BringToFront(*spectrum_);
}

void SoundWindows::ShowMixer() {
  if (mixer_ == nullptr) {
    mixer_ = new FormMixer(session_, desk_, owner_);
    new WindowPlace(*mixer_, session_.store, "MixerPlace");
  }
  BringToFront(*mixer_);
}

// Beside the other windows: nobody may be there to close it.
void SoundWindows::ShowFormats() {
  delete formats_;
  const Settings& settings = session_.settings;
  formats_ = new FormSoundFormat(
      session_, settings.sound.SoundCardName, settings.sound.sWavFormat,
      [this](int row) { ChooseSoundFormat(session_, row); }, owner_);
  BringToFront(*formats_);
}

void SoundWindows::Refresh() {
  const bool showsMeters = meters_ != nullptr && meters_->isVisible();
  const bool showsSpectrum = spectrum_ != nullptr && spectrum_->isVisible();
  if (!showsMeters && !showsSpectrum) return;
  const SoundLevels levels = desk_.Levels();
  if (showsMeters) meters_->Refresh(levels, session_.host.clock.MonotonicMilliseconds());
  if (showsSpectrum) spectrum_->Refresh(desk_.Rate(), levels);
}

}  // namespace tarvolt
