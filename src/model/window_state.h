// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <string>

#include "model/status_line.h"

namespace tarvolt {

/// What a person would see of a window, as data. Rules write it; forms and tests read it. What can be chosen follows
/// from the rest of the window and is not kept.
struct WindowState {
  std::string Title;
  StatusLine Status;
  std::string LeftStatus;             ///< rate and samples
  std::string RightStatus;            ///< log time
  std::string ValueLabel;             ///< LBLCHVAL; empty when hidden
  bool mnuRecallXY = false;           ///< there is a remembered range
  bool mnuChannelVisibility = false;  ///< more than one channel is on display
  bool ArrowsShown = false;           ///< the scroll and step buttons
  bool ChartViewShown = false;        ///< FormChartView
  bool InfoShown = false;             ///< FormFileInfo
  int InfoOpenings = 0;               ///< how often it was asked for: each shows the chart as it is then
  bool StatusBarShown = true;

  std::array<std::string, 8> Legend;  ///< a name a channel

  // The offset frame.
  bool OffsetFrameShown = false;
  int OffsetChannel = 0;   ///< counted from 0
  std::string OffsetText;  ///< TxtOffset
};

}  // namespace tarvolt
