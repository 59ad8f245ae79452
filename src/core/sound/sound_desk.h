// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/run/recorder.h"
#include "core/sound/sound_card.h"
#include "sources/sound/mixer_control.h"

namespace tarvolt {

/// What a person looks at of a window's sound input.
class SoundDesk {
 public:
  /// Works on the parts of `recorder`, which outlives it.
  explicit SoundDesk(Recorder& recorder) : recorder_(recorder) {}

  /// True when the station has a sound input to look at.
  bool HasInput() const { return HasSoundCard(recorder_.session.settings); }

  /// Takes a sound input that has come since a station without one began, unless a chart is running.
  void LookForCard() {
    if (!HasInput() && recorder_.window.AtRest()) MatchSoundCard(recorder_.session);
  }

  /// Chooses the input of the mixer, as SelectMixerSource does: also for the run that is going on, whose sound is that
  /// of the new input from now on.
  void ChooseMixerSource(int source) {
    SelectMixerSource(recorder_.session, source);
    recorder_.window.run.plan.card.MixerSource = recorder_.session.settings.card.MixerSource;
  }

  /// The levels of the sound input now.
  SoundLevels Levels() const { return LevelsNow(recorder_.window, recorder_.sound); }

  /// Frames a second of the sound input, as it was opened last.
  double Rate() const { return recorder_.sound.Format().samplesPerSecond; }

  /// Where a level meter asks for the highest samples, and a spectrum window for samples.
  LevelFeed& HighestSamples() { return recorder_.window.sound.levels; }
  SpectrumFeed& Spectrum() { return recorder_.window.sound.spectrum; }

 private:
  Recorder& recorder_;
};

}  // namespace tarvolt
