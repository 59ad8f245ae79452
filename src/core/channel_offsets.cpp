#include "core/channel_offsets.h"

#include <algorithm>

#include "text/number.h"

namespace tarvolt {
namespace {

constexpr int kRepeatMilliseconds = 200;
constexpr int kFiringsAStep = 6;
constexpr int kStepLimit = 500;

}  // namespace

ChannelOffsets::ChannelOffsets(Session& session, ChartWindow& window)
    : window_(window), TimerUtil_(session.host.loop.MakeTimer([this] { TimerUtilFired(); })) {
  TimerUtil_->SetInterval(kRepeatMilliseconds);
}

void ChannelOffsets::cmdOffset() {
  if (window_.view.OffsetFrameShown) return Close();
  if (!window_.view.OffsetCommand) return;
  window_.view.OffsetFrameShown = true;
  UpdateChannelOffsetControls();
}

void ChannelOffsets::Close() {
  ButtonUp();
  window_.view.OffsetFrameShown = false;
}

void ChannelOffsets::cmdChUp() {
  const int last = std::clamp(window_.run.ChannelCount, 1, kChannels) - 1;
  window_.view.OffsetChannel = std::min(window_.view.OffsetChannel + 1, last);
  UpdateChannelOffsetControls();
}

void ChannelOffsets::cmdCHDown() {
  window_.view.OffsetChannel = std::max(window_.view.OffsetChannel - 1, 0);
  UpdateChannelOffsetControls();
}

void ChannelOffsets::UpdateChannelOffsetControls() {
  WindowState& view = window_.view;
  view.OffsetChannel = std::clamp(view.OffsetChannel, 0, std::clamp(window_.run.ChannelCount, 1, kChannels) - 1);
  view.OffsetText = NumberText(window_.run.ChannelOffset[view.OffsetChannel]);
}

void ChannelOffsets::Add(double difference) {
  window_.run.ChannelOffset[window_.view.OffsetChannel] += difference;
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
}

// The step doubles while it is below 500, so the largest is 512.
void ChannelOffsets::TimerUtilFired() {
  Add(direction_ * step_);
  if (++firings_ < kFiringsAStep) return;
  firings_ = 0;
  if (step_ < kStepLimit) step_ *= 2;
}

void ChannelOffsets::TxtOffset(const std::string& text) {
  window_.run.ChannelOffset[window_.view.OffsetChannel] = Val(text);
  window_.run.OffsetsChanged = true;
  UpdateChannelOffsetControls();
}

}  // namespace tarvolt
