// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <array>

#include "display/chart_look.h"

class QComboBox;
class QSpinBox;

namespace tarvolt {

/// Ticks of both axes, and the line styles of grid and channels.
class FormTickGrid final : public QDialog {
 public:
  FormTickGrid(const TickGrid& ticks, QWidget* parent);

  void LoadIntoControls(const TickGrid& ticks);
  TickGrid GetFromControls() const;

 private:
  std::array<QSpinBox*, 4> counts_{};
  std::array<QComboBox*, 2> styles_{};
};

}  // namespace tarvolt
