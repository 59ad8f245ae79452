// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCheckBox>
#include <QDialog>
#include <array>

#include "files/load_channels.h"

namespace tarvolt {

/// Asks which channels of a file are to be loaded. Channels that the file has not cannot be ticked.
class FormSelectiveLoad final : public QDialog {
 public:
  FormSelectiveLoad(const ChannelQuestion& question, QWidget* parent);

  ChannelAnswer Answer() const;

 private:
  std::array<QCheckBox*, kChannels> channels_{};
  QCheckBox* offsets_;
};

}  // namespace tarvolt
