#include "sim/sim_loop.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace tarvolt {

/// A timer has one current entry in the heap. Starting its period anew only moves `due`; the entry is renewed when it
/// comes to the top, so that a watchdog restarted with every sample does not fill the heap.
struct SimLoop::TimerState {
  std::function<void()> onTick;
  int interval = 1;
  bool enabled = false;
  bool running = false;
  bool ofProcess = false;
  std::uint32_t slot = 0;
  std::int64_t due = 0;
  std::uint64_t sequence = 0;
  std::int64_t queuedDue = 0;
  std::uint64_t queuedSequence = 0;  // 0: no entry in the heap
};

class SimLoop::SimTimer final : public Timer {
 public:
  SimTimer(SimLoop& loop, std::shared_ptr<TimerState> state) : loop_(loop), state_(std::move(state)) {}

  SimTimer(const SimTimer&) = delete;
  SimTimer& operator=(const SimTimer&) = delete;

  ~SimTimer() override {
    state_->enabled = false;
    loop_.timers_[state_->slot] = nullptr;
    loop_.freeTimers_.push_back(state_->slot);
  }

  void SetInterval(int milliseconds) override {
    state_->interval = std::max(milliseconds, 1);
    if (state_->enabled) loop_.Arm(*state_, loop_.Now() + state_->interval);
  }
  int Interval() const override { return state_->interval; }

  void SetEnabled(bool enabled) override {
    state_->enabled = enabled;
    if (enabled) loop_.Arm(*state_, loop_.Now() + state_->interval);
  }
  bool Enabled() const override { return state_->enabled; }

 private:
  SimLoop& loop_;
  std::shared_ptr<TimerState> state_;
};

/// Keeps a tick from being entered again, and arms the next one when it has ended, be it by an exception.
class SimLoop::RunningTick {
 public:
  RunningTick(SimLoop& loop, TimerState& timer) : loop_(loop), timer_(timer) {
    timer_.running = true;
    timer_.due += timer_.interval;
  }

  RunningTick(const RunningTick&) = delete;
  RunningTick& operator=(const RunningTick&) = delete;

  ~RunningTick() {
    timer_.running = false;
    if (!timer_.enabled) return;
    const std::int64_t late = loop_.Now() - timer_.due;
    if (late >= 0) timer_.due += (late / timer_.interval + 1) * timer_.interval;
    loop_.Arm(timer_, timer_.due);
  }

 private:
  SimLoop& loop_;
  TimerState& timer_;
};

SimLoop::SimLoop(SimClock& clock) : clock_(clock) {}

// What was posted may hold timers, which leave through the lists of this loop.
SimLoop::~SimLoop() {
  const std::vector<Call> dropped = std::move(calls_);
}

void SimLoop::Yield(std::chrono::milliseconds atMost) {
  clock_.NoteProgress();
  CountTurn();
  if (RunDue()) return;
  const Entry* next = Next();
  if (next == nullptr && atMost == kForever) {
    throw std::logic_error("SimLoop: nothing is pending, the program would sleep for ever");
  }
  const std::int64_t patience = std::max<std::int64_t>(atMost.count(), 0);
  // With an event further away than the patience lasts, and with none at all, only time passes.
  if (next == nullptr || next->due - Now() > patience) {
    clock_.AdvanceTo(Now() + patience);
    return;
  }
  clock_.AdvanceTo(next->due);
  RunDue();
}

void SimLoop::Post(std::function<void()> call) {
  AddCall(Now(), true, std::move(call));
}

std::unique_ptr<Timer> SimLoop::MakeTimer(std::function<void()> onTick) {
  return AddTimer(true, std::move(onTick));
}

void SimLoop::At(std::int64_t when, std::function<void()> call) {
  AddCall(std::max(when, Now()), false, std::move(call));
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
  for (const Entry* next = Next(); next != nullptr && next->due <= end; next = Next()) {
    Yield(std::chrono::milliseconds(0));
  }
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
  std::vector<std::function<void()>> dropped;  // destroyed last: what they hold may use the loop as it goes
  for (Call& call : calls_) {
    if (call.ofProcess && call.run != nullptr) dropped.push_back(std::exchange(call.run, nullptr));
  }
  for (const std::shared_ptr<TimerState>& timer : timers_) {
    if (timer != nullptr && timer->ofProcess) timer->enabled = false;
  }
}

// The heap's order: std::push_heap keeps the largest on top, and the earliest is wanted there.
bool SimLoop::Later(const Entry& a, const Entry& b) {
  if (a.due != b.due) return a.due > b.due;
  return a.sequence > b.sequence;
}

void SimLoop::AddCall(std::int64_t due, bool ofProcess, std::function<void()> run) {
  std::uint32_t slot = static_cast<std::uint32_t>(calls_.size());
  if (freeCalls_.empty()) {
    calls_.emplace_back();
  } else {
    slot = freeCalls_.back();
    freeCalls_.pop_back();
  }
  calls_[slot] = {std::move(run), ofProcess};
  Push({due, nextSequence_++, slot, Kind::Call});
}

std::unique_ptr<Timer> SimLoop::AddTimer(bool ofProcess, std::function<void()> onTick) {
  auto state = std::make_shared<TimerState>();
  state->onTick = std::move(onTick);
  state->ofProcess = ofProcess;
  if (freeTimers_.empty()) {
    state->slot = static_cast<std::uint32_t>(timers_.size());
    timers_.push_back(state);
  } else {
    state->slot = freeTimers_.back();
    freeTimers_.pop_back();
    timers_[state->slot] = state;
  }
  return std::make_unique<SimTimer>(*this, std::move(state));
}

void SimLoop::Arm(TimerState& timer, std::int64_t due) {
  timer.due = due;
  timer.sequence = nextSequence_++;
  if (timer.running) return;  // the end of the tick queues it
  if (timer.queuedSequence == 0 || due < timer.queuedDue) Queue(timer);
}

void SimLoop::Queue(TimerState& timer) {
  timer.queuedDue = timer.due;
  timer.queuedSequence = timer.sequence;
  Push({timer.due, timer.sequence, timer.slot, Kind::Timer});
}

void SimLoop::Push(const Entry& entry) {
  heap_.push_back(entry);
  std::push_heap(heap_.begin(), heap_.end(), Later);
}

void SimLoop::Pop() {
  std::pop_heap(heap_.begin(), heap_.end(), Later);
  heap_.pop_back();
}

// The next event that will really run, with what stopped, moved or died before it cleared away.
const SimLoop::Entry* SimLoop::Next() {
  while (!heap_.empty()) {
    const Entry top = heap_.front();
    if (IsCurrent(top)) return &heap_.front();
    Pop();
    if (top.kind == Kind::Call) {
      freeCalls_.push_back(top.slot);
      continue;
    }
    const std::shared_ptr<TimerState> timer = timers_[top.slot];
    if (timer == nullptr || timer->queuedSequence != top.sequence) continue;
    timer->queuedSequence = 0;
    if (timer->enabled && !timer->running) Queue(*timer);
  }
  return nullptr;
}

bool SimLoop::IsCurrent(const Entry& entry) const {
  if (entry.kind == Kind::Call) return calls_[entry.slot].run != nullptr;
  const TimerState* timer = timers_[entry.slot].get();
  return timer != nullptr && timer->enabled && !timer->running && timer->sequence == entry.sequence;
}

// One turn: what is asked for inside it waits for a later one, even when it is due at once.
bool SimLoop::RunDue() {
  const std::uint64_t firstOfLaterTurn = nextSequence_;
  bool ran = false;
  for (const Entry* next = Next(); next != nullptr; next = Next()) {
    if (next->due > Now() || next->sequence >= firstOfLaterTurn) break;
    RunNext();
    ran = true;
  }
  return ran;
}

void SimLoop::RunNext() {
  const Entry entry = heap_.front();
  Pop();
  NoteEvent(entry);
  if (entry.kind == Kind::Call) {
    RunCall(entry.slot);
  } else {
    RunTick(entry.slot);
  }
  clock_.NoteProgress();
}

void SimLoop::RunCall(std::uint32_t slot) {
  const std::function<void()> run = std::exchange(calls_[slot].run, nullptr);
  freeCalls_.push_back(slot);
  run();
}

void SimLoop::RunTick(std::uint32_t slot) {
  const std::shared_ptr<TimerState> timer = timers_[slot];  // the tick may destroy its timer
  timer->queuedSequence = 0;
  const RunningTick tick(*this, *timer);
  timer->onTick();
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

void SimLoop::NoteEvent(const Entry& entry) {
  const std::uint64_t kind = entry.kind == Kind::Timer ? 1 : 0;
  for (const std::uint64_t part : {static_cast<std::uint64_t>(Now()), entry.sequence, kind}) {
    fingerprint_ = (fingerprint_ ^ part) * 0x100000001B3u;
  }
}

}  // namespace tarvolt
