// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/chart/channel_offsets.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/chart/command_states.h"
#include "text/number.h"
#include "timebase/time_stamp.h"

namespace tarvolt {
namespace {

constexpr int kRepeatMilliseconds = 200;
constexpr int kFiringsAStep = 6;
constexpr int kStepLimit = 500;
constexpr double kLargest = 1E+15;  // beyond it the fraction of a value is lost in the sum

std::string MomentText(TimeStamp stamp) {
  return FormatDate(stamp, "YYYY-MM-DD HH:nn:ss");
}

}  // namespace

bool IsUsableOffset(double offset) {
  return std::fabs(offset) <= kLargest;
}

ChannelOffsets::ChannelOffsets(Session& session, ChartWindow& window)
    : session_(session), window_(window), TimerUtil_(session.host.loop.MakeTimer([this] { TimerUtilFired(); })) {
  TimerUtil_->SetInterval(kRepeatMilliseconds);
}

void ChannelOffsets::cmdOffset() {
  if (window_.view.OffsetFrameShown) return Close();
  if (!StatesOf(window_).OffsetCommand) return;
  window_.view.OffsetFrameShown = true;
  UpdateChannelOffsetControls();
}

void ChannelOffsets::Close() {
  ButtonUp();
  window_.view.OffsetFrameShown = false;
}

void ChannelOffsets::cmdChUp() {
  NoteHeld();
  const int last = std::clamp(window_.run.ChannelCount, 1, kChannels) - 1;
  window_.view.OffsetChannel = std::min(window_.view.OffsetChannel + 1, last);
  UpdateChannelOffsetControls();
}

void ChannelOffsets::cmdCHDown() {
  NoteHeld();
  window_.view.OffsetChannel = std::max(window_.view.OffsetChannel - 1, 0);
  UpdateChannelOffsetControls();
}

void ChannelOffsets::UpdateChannelOffsetControls() {
  WindowState& view = window_.view;
  view.OffsetChannel = std::clamp(view.OffsetChannel, 0, std::clamp(window_.run.ChannelCount, 1, kChannels) - 1);
  view.OffsetText = NumberText(Chosen());
}

void ChannelOffsets::Add(double difference) {
  if (!held_) held_ = Held{Chosen(), LogTime()};
  Chosen() = std::clamp(Chosen() + difference, -kLargest, kLargest);
  window_.run.OffsetsChanged = true;
  UpdateChannelOffsetControls();
}

void ChannelOffsets::ButtonDown(int direction) {
  direction_ = direction < 0 ? -1 : 1;
  step_ = 1;
  firings_ = 0;
  Add(direction_);
  TimerUtil_->SetEnabled(true);
}

void ChannelOffsets::ButtonUp() {
  TimerUtil_->SetEnabled(false);
  NoteHeld();
}

void ChannelOffsets::NoteHeld() {
  if (const std::optional<Held> held = std::exchange(held_, std::nullopt)) Note(held->offset, held->time);
}

// A row for each change, for the values stored between two of them are to be told apart.
void ChannelOffsets::Note(double before, TimeStamp since) {
  const bool inRun = window_.run.ChartRunning() || window_.run.Stopping();
  if (!inRun || before == Chosen()) return;
  const std::string channel = "CH " + NumberText(std::int64_t{window_.view.OffsetChannel + 1});
  const TimeStamp now = LogTime();
  std::string text = "from " + NumberText(before) + " to " + NumberText(Chosen());
  if (MomentText(since) != MomentText(now)) text += ", moving since " + MomentText(since);
  session_.Add2SLog("Offset of " + channel + " changed " + text);
  window_.metadata.Append({"Offset Changed " + MomentText(now) + " " + channel, text, {}, {}});
}

// The step doubles while it is below 500, so the largest is 512.
void ChannelOffsets::TimerUtilFired() {
  Add(direction_ * step_);
  if (++firings_ < kFiringsAStep) return;
  firings_ = 0;
  if (step_ < kStepLimit) step_ *= 2;
}

void ChannelOffsets::TxtOffset(const std::string& text) {
  NoteHeld();
  const std::optional<double> typed = ParseNumber(text);
  if (typed && IsUsableOffset(*typed)) {
    const double before = std::exchange(Chosen(), *typed);
    window_.run.OffsetsChanged = true;
    Note(before, LogTime());
  } else {
    const std::string refusal = "\"" + text + "\" is no number that can be an offset. The offset stays as it is.";
    session_.Add2SLog(refusal);
    session_.Tell("Tarvolt", refusal);
  }
  UpdateChannelOffsetControls();
}

}  // namespace tarvolt
