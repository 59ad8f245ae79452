// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "model/chart_window.h"
#include "model/session.h"
#include "platform/event_loop.h"
#include "timebase/time_base.h"

namespace tarvolt {

/// True for an offset that leaves the values it is added to readable.
bool IsUsableOffset(double offset);

/// The offset frame of a window. What it changes counts for the samples to come; stored samples stay as they are. Each
/// change is logged, and stands in the metadata with its time.
class ChannelOffsets {
 public:
  /// Both outlive it.
  ChannelOffsets(Session& session, ChartWindow& window);

  /// Shows or hides the frame; shown only while the command is enabled.
  void cmdOffset();
  void Close();

  void cmdChUp();
  void cmdCHDown();
  void UpdateChannelOffsetControls();

  /// cmdOffSetUp and cmdOffsetDown: one step at once, then one with each firing of TimerUtil until the button is let
  /// go.
  void ButtonDown(int direction);
  void ButtonUp();

  /// A typed value. What is no usable number is refused in words, and the offset stays.
  void TxtOffset(const std::string& text);

  /// Notes what the button held down has moved so far, as at the end of a log.
  void NoteHeld();

 private:
  /// Where a button that is held down began.
  struct Held {
    double offset = 0;
    TimeStamp time = 0;
  };

  void TimerUtilFired();
  void Add(double difference);
  void Note(double before, TimeStamp since);
  double& Chosen() { return window_.run.ChannelOffset[window_.view.OffsetChannel]; }
  TimeStamp LogTime() const { return CalcTime(session_.host.clock, window_.run.time); }

  Session& session_;
  ChartWindow& window_;
  std::unique_ptr<Timer> TimerUtil_;
  std::optional<Held> held_;
  int direction_ = 1;
  int step_ = 1;
  int firings_ = 0;
};

}  // namespace tarvolt
