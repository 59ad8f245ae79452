// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLabel>
#include <QWidget>
#include <array>

#include "analysis/level_meter.h"
#include "core/sound/sound_card.h"
#include "forms/sound/level_bar.h"
#include "model/sound_state.h"

namespace tarvolt {

/// The levels of the sound input. The bars stand at the highest samples since the last look, whatever the run makes of
/// them; below them are the run's own readings.
class FormMeters final : public QWidget {
 public:
  /// `feed` outlives it.
  FormMeters(LevelFeed& feed, QWidget* owner);
  ~FormMeters() override;

  /// Shows the levels now; `now` are monotonic milliseconds.
  void Refresh(const SoundLevels& levels, double now);

 protected:
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  struct Side {
    LevelBar* bar = nullptr;
    QLabel* peak = nullptr;
    QLabel* average = nullptr;
    PeakMark mark;
    double highest = kLowestDecibels;  ///< of the buffers that came last
    double clippedAt = 0;              ///< 0 for never
  };

  /// What a run reads of a side.
  struct Reading {
    bool live = false;
    double peak = 0;
    double average = 0;
  };

  void AddSide(int side, const QString& title);
  static void TakeHighest(Side& side, std::int32_t highest, double now);
  static void ShowSide(Side& side, const Reading& reading, double now);

  LevelFeed& feed_;
  std::array<Side, 2> sides_;
  QLabel* state_;
};

}  // namespace tarvolt
