// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointer>

#include "core/sound/sound_desk.h"
#include "forms/chart/menu_items.h"
#include "forms/sound/form_meters.h"
#include "forms/sound/form_mixer.h"
#include "forms/sound/form_sound_format.h"
#include "forms/sound/form_spectrum.h"

namespace tarvolt {

/// The windows about the sound input that belong to one main window, and their menu items.
class SoundWindows {
 public:
  /// All outlive it. The windows are `owner`'s children, made when they are first asked for.
  SoundWindows(Session& session, SoundDesk& desk, QWidget* owner);
  SoundWindows(const SoundWindows&) = delete;
  SoundWindows& operator=(const SoundWindows&) = delete;

  void AddMenus(QMenu& menu, MenuItems& items);

  /// Opens the chooser of formats, and does not wait for it.
  void ShowFormats();

  /// Brings those on the screen up to date.
  void Refresh();

 private:
  void ShowMeters();
  void ShowSpectrum();
  void ShowMixer();

  Session& session_;
  SoundDesk& desk_;
  QWidget* owner_;
  FormMeters* meters_ = nullptr;
  FormSpectrum* spectrum_ = nullptr;
  FormMixer* mixer_ = nullptr;
  QPointer<FormSoundFormat> formats_;
};

}  // namespace tarvolt
