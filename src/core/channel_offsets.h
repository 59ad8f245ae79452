#pragma once

#include <memory>

#include "model/chart_window.h"
#include "model/session.h"
#include "platform/event_loop.h"

namespace tarvolt {

/// The offset frame of a window. What it changes counts for the samples to come; stored samples stay as they are.
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

  /// A typed value; what is no number reads as the lenient conversion has it.
  void TxtOffset(const std::string& text);

 private:
  void TimerUtilFired();
  void Add(double difference);

  ChartWindow& window_;
  std::unique_ptr<Timer> TimerUtil_;
  int direction_ = 1;
  int step_ = 1;
  int firings_ = 0;
};

}  // namespace tarvolt
