// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <optional>
#include <string>

#include "display/sample_store.h"

namespace tarvolt {

/// What the chart is doing with the mouse and the newest sample.
enum class ChartMode { Tracking = 0, Cursor = 1, Zoom = 2, Browsing = 3, Drag = 5 };

/// What is on display of the samples, and how.
struct ChartDisplay {
  static constexpr int kMaxChannels = SampleStore::kMaxChannels;
  static constexpr std::array<int, kMaxChannels> kOwnPens{0, 1, 2, 3, 4, 5, 6, 7, 8};

  double XAxisMin = 0;
  double XAxisMax = 1;
  double YAxisMin = 0;
  double YAxisMax = 1;
  bool AutoScale = true;
  bool AutoScroll = false;
  ChartMode Mode = ChartMode::Browsing;
  std::array<bool, kMaxChannels> ChannelVisible{true, true, true, true, true, true, true, true, true};
  std::array<std::string, kMaxChannels> ChannelName;
  std::array<int, kMaxChannels> ChannelPen = kOwnPens;  ///< the channel whose colour and line style this one has
  std::string Title;
  std::string XAxisLabel;
  std::string YAxisLabel;
  bool LegendShown = true;
  bool NotationsShown = true;
  std::optional<TimeStamp> TimeMarker;  ///< a line across the chart that the cursor measures from

  // The cursor's read-out, while Mode is Cursor; CursorChannel counts from 0 and is -1 when it stands on no sample.
  double CursorX = 0;
  double CursorY = 0;
  int CursorChannel = -1;
};

/// The strip chart: the store of the samples, and beside it the state of their display.
struct StripChart : SampleStore, ChartDisplay {
  using SampleStore::kMaxChannels;

  /// Sets the y axis to the lowest and highest stored value; a chart whose values are all equal gets 0.1 on each side,
  /// so that it still has a range. Does nothing without data.
  void ScaleYToData();
};

}  // namespace tarvolt
