#pragma once

#include <QLabel>
#include <QWidget>
#include <array>

#include "core/sound_card.h"
#include "forms/sound/level_bar.h"
#include "sources/sound/level_meter.h"

namespace tarvolt {

/// The levels of the sound input: a bar and the readings of each side.
class FormMeters final : public QWidget {
 public:
  explicit FormMeters(QWidget* owner);

  /// Shows the levels now; `now` are monotonic milliseconds.
  void Refresh(const SoundLevels& levels, double now);

 private:
  struct Side {
    LevelBar* bar = nullptr;
    QLabel* peak = nullptr;
    QLabel* average = nullptr;
    PeakMark mark;
  };

  void AddSide(int side, const QString& title);
  void ShowSide(Side& side, const SoundLevels& levels, double peak, double average, double now);

  std::array<Side, 2> sides_;
  QLabel* state_;
};

}  // namespace tarvolt
