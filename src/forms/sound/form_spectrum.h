#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QSpinBox>
#include <QWidget>
#include <array>
#include <memory>
#include <vector>

#include "model/sound_state.h"
#include "sources/sound/spectrum.h"

class QCustomPlot;
class QCPGraph;

namespace tarvolt {

/// The spectrum of the sound input. Samples are gathered for it only while it is on the screen; they are transformed
/// when it is refreshed, never where they are recorded, so a slow screen costs transforms and no samples.
class FormSpectrum final : public QWidget {
 public:
  /// `feed` outlives it.
  FormSpectrum(SpectrumFeed& feed, QWidget* owner);
  ~FormSpectrum() override;

  /// Transforms what has come since the last time and draws it on an axis up to half of that sample rate. `live` is
  /// false while nothing is recorded.
  void Refresh(double samplesPerSecond, bool live);

 protected:
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  struct Side {
    std::unique_ptr<Spectrum> spectrum;
    std::vector<double> waiting;  ///< the newest samples not yet transformed; empty for none
    QCPGraph* level = nullptr;
    QCPGraph* peak = nullptr;
  };

  void MakeControls();
  void MakePlot();
  void MakeAnew();
  void TakeSettings();
  void Take(int side, const std::vector<double>& left, const std::vector<double>& right);
  void Clear();
  void Draw();
  void ShowStrongest(bool live);

  SpectrumFeed& feed_;
  std::array<Side, 2> sides_;
  QCustomPlot* plot_;
  QComboBox* size_;
  QComboBox* weights_;
  QSpinBox* average_;
  QCheckBox* peakHold_;
  QLabel* strongest_;
  double rate_ = 0;
};

}  // namespace tarvolt
