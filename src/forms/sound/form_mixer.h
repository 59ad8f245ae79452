// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTimer>
#include <array>

#include "core/sound/sound_desk.h"

class QGridLayout;

namespace tarvolt {

/// The mixer panel: the input that is recorded from and the volumes. What another program changes on the card is seen
/// within a second.
class FormMixer final : public QDialog {
 public:
  /// Both outlive it.
  FormMixer(Session& session, SoundDesk& desk, QWidget* owner);

  /// Who leads through several steps and closes the panel itself hides its OK.
  void ShowOk(bool shown) { ok_->setVisible(shown); }

  /// Shows the mixer as it is now.
  void Refresh();

 protected:
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  struct Row {
    QRadioButton* chosen = nullptr;
    QSlider* volume = nullptr;
    QLabel* number = nullptr;
  };

  void AddRow(QGridLayout& grid, int source);
  void ShowRow(int source, const MixerView& view);
  void SetTurned();

  Session& session_;
  SoundDesk& desk_;
  std::array<Row, kMixerSources> rows_;
  QLabel* card_;
  QLabel* words_;
  QCheckBox* enabled_;
  QPushButton* ok_;
  QTimer look_;
  QTimer settle_;
  int turned_ = -1;       ///< the input whose slider was moved and not yet set; -1 for none
  bool showing_ = false;  ///< what changes now is not a person's doing
};

}  // namespace tarvolt
