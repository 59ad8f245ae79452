// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <utility>

#include "platform/event_loop.h"
#include "sim/sim_clock.h"

namespace tarvolt {

/// The event loop of a simulated machine. Events run in order of (time, the order they were asked for in); between two
/// of them the clock jumps. What the program asked for through EventLoop dies with it; what the world around it
/// asked for (At, After, MakeWorldTimer) goes on.
class SimLoop final : public EventLoop {
 public:
  /// So many turns without time passing are taken for a fault of the program: std::logic_error.
  static constexpr int kTurnsInOneInstant = 1'000'000;

  explicit SimLoop(SimClock& clock);
  ~SimLoop() override;

  /// Runs all events due now; when there are none moves the clock to the next one, at most `atMost`, and runs what is
  /// due then. std::logic_error when that would sleep for ever.
  void Yield(std::chrono::milliseconds atMost = kForever) override;
  void Post(std::function<void()> call) override;
  std::unique_ptr<Timer> MakeTimer(std::function<void()> onTick) override;

  /// Runs `call` when the clock's Now() is `when`, or at the next turn when that has passed.
  void At(std::int64_t when, std::function<void()> call);
  void After(std::chrono::milliseconds wait, std::function<void()> call);

  /// A timer of the world's side, which a dying program leaves alone.
  std::unique_ptr<Timer> MakeWorldTimer(std::function<void()> onTick);

  /// Runs the machine for so long, with everything that falls due at the end of it.
  void RunFor(std::chrono::milliseconds span);

  /// Runs the machine until `reached` holds, looked at after every turn. False when `limit` passed before.
  bool RunUntil(const std::function<bool()>& reached, std::chrono::milliseconds limit);

  /// Drops the posted calls and stops the timers of a program that has died.
  void ForgetProcess();

  /// Clock's Now(): milliseconds since the machine was switched on.
  std::int64_t Now() const { return clock_.Now(); }

  /// Depends on the time, the kind and the order of every event that has run: equal for two equal runs.
  std::uint64_t Fingerprint() const { return fingerprint_; }

 private:
  using Place = std::pair<std::int64_t, std::uint64_t>;  ///< when it is due, and the order it was asked for in
  struct TimerState;
  class SimTimer;
  class RunningTick;

  /// A call, or the tick of a timer.
  struct Event {
    std::function<void()> call;
    std::shared_ptr<TimerState> timer;
    bool ofProcess = false;
  };

  std::unique_ptr<Timer> AddTimer(bool ofProcess, std::function<void()> onTick);
  void Arm(const std::shared_ptr<TimerState>& timer, std::int64_t due);
  void Disarm(TimerState& timer);
  bool RunDue();
  void RunNext();
  void CountTurn();

  SimClock& clock_;
  std::map<Place, Event> events_;
  std::set<TimerState*> timers_;
  std::uint64_t nextSequence_ = 1;
  std::uint64_t fingerprint_ = 0xCBF29CE484222325u;
  std::int64_t instant_ = -1;
  int turnsInInstant_ = 0;
};

}  // namespace tarvolt
