// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <array>
#include <functional>

#include "forms/look/color_button.h"

namespace tarvolt {

/// The colours of the charts: a row of labels, one an item.
class FormColors final : public QDialog {
 public:
  using Save = std::function<void(const ChartColors&)>;

  /// `save` is called by CmdSave with the colours of the labels.
  FormColors(const ChartColors& colors, Save save, QWidget* parent);

  void LoadIntoLabels(const ChartColors& colors);
  ChartColors GetColorsFromLabels() const;

 private:
  static constexpr std::size_t kItems = 16;

  std::array<ColorButton*, 8> pens_{};
  std::array<ColorButton*, kItems> labels_{};
};

}  // namespace tarvolt
