// SPDX-License-Identifier: GPL-3.0-or-later
#include "sim/sim_loop.h"

#include <algorithm>
#include <stdexcept>
#include <vector>

namespace tarvolt {

struct SimLoop::TimerState {
  std::function<void()> onTick;
  int interval = 1;
  bool enabled = false;
  bool running = false;
  bool ofProcess = false;
  std::int64_t due = 0;
  Place queued;  // where its tick stands among the events
};

class SimLoop::SimTimer final : public Timer {
 public:
  SimTimer(SimLoop& loop, std::shared_ptr<TimerState> state) : loop_(loop), state_(std::move(state)) {
    loop_.timers_.insert(state_.get());
  }

  SimTimer(const SimTimer&) = delete;
  SimTimer& operator=(const SimTimer&) = delete;

  ~SimTimer() override {
    loop_.Disarm(*state_);
    loop_.timers_.erase(state_.get());
  }

  void SetInterval(int milliseconds) override {
    state_->interval = std::max(milliseconds, 1);
    if (state_->enabled) loop_.Arm(state_, loop_.Now() + state_->interval);
  }
  int Interval() const override { return state_->interval; }

  void SetEnabled(bool enabled) override {
    loop_.Disarm(*state_);
    state_->enabled = enabled;
    if (enabled) loop_.Arm(state_, loop_.Now() + state_->interval);
  }
  bool Enabled() const override { return state_->enabled; }

 private:
  SimLoop& loop_;
  std::shared_ptr<TimerState> state_;
};

/// Keeps a tick from being entered again, and arms the next one when it has ended, be it by an exception.
class SimLoop::RunningTick {
 public:
  RunningTick(SimLoop& loop, std::shared_ptr<TimerState> timer) : loop_(loop), timer_(std::move(timer)) {
    timer_->running = true;
    timer_->due += timer_->interval;
  }

  RunningTick(const RunningTick&) = delete;
  RunningTick& operator=(const RunningTick&) = delete;

  ~RunningTick() {
    timer_->running = false;
    if (!timer_->enabled) return;
    const std::int64_t late = loop_.Now() - timer_->due;
    if (late >= 0) timer_->due += (late / timer_->interval + 1) * timer_->interval;
    loop_.Arm(timer_, timer_->due);
  }

 private:
  SimLoop& loop_;
  std::shared_ptr<TimerState> timer_;  // the tick may destroy its timer
};

SimLoop::SimLoop(SimClock& clock) : clock_(clock) {}

// What was posted may hold timers, which leave through the lists of this loop.
SimLoop::~SimLoop() {
  const std::map<Place, Event> dropped = std::exchange(events_, {});
}

void SimLoop::Yield(std::chrono::milliseconds atMost) {
  clock_.NoteProgress();
  CountTurn();
  if (RunDue()) return;
  if (events_.empty() && atMost == kForever) {
    throw std::logic_error("SimLoop: nothing is pending, the program would sleep for ever");
  }
  const std::int64_t patience = std::max<std::int64_t>(atMost.count(), 0);
  // With an event further away than the patience lasts, and with none at all, only time passes.
  const bool isNear = !events_.empty() && events_.begin()->first.first - Now() <= patience;
  clock_.AdvanceTo(isNear ? events_.begin()->first.first : Now() + patience);
  if (isNear) RunDue();
}

void SimLoop::Post(std::function<void()> call) {
  events_[{Now(), nextSequence_++}] = {std::move(call), nullptr, true};
}

std::unique_ptr<Timer> SimLoop::MakeTimer(std::function<void()> onTick) {
  return AddTimer(true, std::move(onTick));
}

void SimLoop::At(std::int64_t when, std::function<void()> call) {
  events_[{std::max(when, Now()), nextSequence_++}] = {std::move(call), nullptr, false};
}

void SimLoop::After(std::chrono::milliseconds wait, std::function<void()> call) {
  At(Now() + wait.count(), std::move(call));
}

std::unique_ptr<Timer> SimLoop::MakeWorldTimer(std::function<void()> onTick) {
  return AddTimer(false, std::move(onTick));
}

void SimLoop::RunFor(std::chrono::milliseconds span) {
  const std::int64_t end = Now() + span.count();
  while (Now() < end) Yield(std::chrono::milliseconds(end - Now()));
  while (!events_.empty() && events_.begin()->first.first <= end) Yield(std::chrono::milliseconds(0));
}

bool SimLoop::RunUntil(const std::function<bool()>& reached, std::chrono::milliseconds limit) {
  const std::int64_t end = Now() + limit.count();
  while (!reached()) {
    if (Now() >= end) return false;
    Yield(std::chrono::milliseconds(end - Now()));
  }
  return true;
}

void SimLoop::ForgetProcess() {
  for (TimerState* timer : timers_) {
    if (timer->ofProcess) Disarm(*timer);
  }
  std::vector<Event> dropped;  // destroyed last: what they hold may use the loop as it goes
  for (auto event = events_.begin(); event != events_.end();) {
    const auto here = event++;
    if (here->second.ofProcess) dropped.push_back(std::move(events_.extract(here).mapped()));
  }
}

std::unique_ptr<Timer> SimLoop::AddTimer(bool ofProcess, std::function<void()> onTick) {
  auto state = std::make_shared<TimerState>();
  state->onTick = std::move(onTick);
  state->ofProcess = ofProcess;
  return std::make_unique<SimTimer>(*this, std::move(state));
}

void SimLoop::Arm(const std::shared_ptr<TimerState>& timer, std::int64_t due) {
  events_.erase(timer->queued);
  timer->due = due;
  if (timer->running) return;  // the end of the tick queues it
  timer->queued = {due, nextSequence_++};
  events_[timer->queued] = {nullptr, timer, timer->ofProcess};
}

void SimLoop::Disarm(TimerState& timer) {
  timer.enabled = false;
  events_.erase(timer.queued);
}

// One turn: what is asked for inside it waits for a later one, even when it is due at once.
bool SimLoop::RunDue() {
  const std::uint64_t firstOfLaterTurn = nextSequence_;
  bool ran = false;
  while (!events_.empty() && events_.begin()->first.first <= Now() &&
         events_.begin()->first.second < firstOfLaterTurn) {
    RunNext();
    ran = true;
  }
  return ran;
}

void SimLoop::RunNext() {
  const auto next = events_.extract(events_.begin());
  const std::shared_ptr<TimerState> timer = next.mapped().timer;
  for (const std::uint64_t part :
       {static_cast<std::uint64_t>(Now()), next.key().second, timer ? std::uint64_t{1} : std::uint64_t{0}}) {
    fingerprint_ = (fingerprint_ ^ part) * 0x100000001B3u;
  }
  if (timer) {
    const RunningTick tick(*this, timer);
    timer->onTick();
  } else {
    next.mapped().call();
  }
  clock_.NoteProgress();
}

void SimLoop::CountTurn() {
  if (instant_ != Now()) {
    instant_ = Now();
    turnsInInstant_ = 0;
  }
  if (++turnsInInstant_ > kTurnsInOneInstant) {
    throw std::logic_error("SimLoop: the loop turns for ever without time passing");
  }
}

}  // namespace tarvolt
