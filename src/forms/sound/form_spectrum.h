// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QSpinBox>
#include <QWidget>
#include <array>
#include <memory>
#include <optional>
#include <vector>

#include "analysis/spectrum.h"
#include "config/settings_store.h"
#include "core/sound/sound_card.h"
#include "model/sound_state.h"

class QCustomPlot;
class QCPGraph;

namespace tarvolt {

/// The spectrum of the sound input. Samples are gathered for it only while it is on the screen; they are transformed
/// when it is refreshed, never where they are recorded, so a slow screen costs transforms and no samples.
class FormSpectrum final : public QWidget {
 public:
  /// Both outlive it; what a person chooses in the window is kept in `store`.
  FormSpectrum(SpectrumFeed& feed, SettingsStore& store, QWidget* owner);
  ~FormSpectrum() override;

  /// Transforms what has come since the last time and draws it on an axis up to half of that sample rate. What was seen
  /// last stays when nothing is recorded any more.
  void Refresh(double samplesPerSecond, const SoundLevels& levels);

 protected:
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Side {
    std::unique_ptr<Spectrum> spectrum;
    std::vector<std::vector<double>> waiting;  ///< samples not yet transformed, the oldest first
    QCPGraph* level = nullptr;
    QCPGraph* peak = nullptr;
  };

  void MakeControls();
  void MakePlot();
  void MakeAnew();
  void TakeSettings();
  void RestoreSettings();
  void StoreSettings();
  void Take(int side, const std::vector<double>& left, const std::vector<double>& right);
  void Clear();
  void Draw();
  void ShowAll();
  void HoldToScale();
  void TurnWheelAndDrag(const QPointF& pointer);
  void ShowState(const SoundLevels& levels);
  void ShowStrongest();
  void ShowPointer();

  SpectrumFeed& feed_;
  SettingsStore& store_;
  std::array<Side, 2> sides_;
  QCustomPlot* plot_;
  QComboBox* size_;
  QComboBox* weights_;
  QSpinBox* average_;
  QCheckBox* peakHold_;
  QLabel* state_;
  QLabel* strongest_;
  QLabel* atPointer_;
  std::optional<double> pointer_;  ///< hertz
  double rate_ = 0;
};

}  // namespace tarvolt
