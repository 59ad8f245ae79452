// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLabel>
#include <QStatusBar>

#include "model/window_state.h"

namespace tarvolt {

/// The three status labels of a chart window: rate and samples, the status line, the time.
class ChartStatusBar final : public QStatusBar {
 public:
  explicit ChartStatusBar(QWidget* parent);
  void Refresh(const WindowState& view);

 private:
  QLabel* Label(const char* name, int stretch);

  QLabel* left_;
  QLabel* status_;
  QLabel* right_;
};

}  // namespace tarvolt
