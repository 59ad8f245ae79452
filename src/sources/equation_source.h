// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "sources/channel_source.h"

namespace tarvolt {

/// Rows that have no input: their equations fill them when the sample is finished.
class EquationSource final : public ChannelSource {
 public:
  bool Owns(DataSourceId id) const override { return IsEquation(id); }
  bool Read(int, TickReadings&) override { return true; }
};

}  // namespace tarvolt
