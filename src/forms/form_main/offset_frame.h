// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFrame>
#include <QLabel>
#include <QLineEdit>

#include "core/chart/channel_offsets.h"

namespace tarvolt {

/// The frame that moves the offset of a channel during a run. A button held down repeats, ever faster.
class OffsetFrame final : public QFrame {
 public:
  OffsetFrame(const ChartWindow& window, ChannelOffsets& offsets, QWidget* parent);
  void Refresh();

 private:
  const ChartWindow& window_;
  ChannelOffsets& offsets_;
  QLabel* channel_;
  QLineEdit* value_;
};

}  // namespace tarvolt
