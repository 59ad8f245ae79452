// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/qt_event_loop.h"

#include <QAbstractEventDispatcher>
#include <QEventLoop>
#include <QThread>
#include <QTimer>
#include <algorithm>
#include <limits>
#include <utility>

namespace tarvolt {
namespace {

int QtInterval(std::chrono::milliseconds interval) {
  return static_cast<int>(std::min<std::int64_t>(interval.count(), std::numeric_limits<int>::max()));
}

/// What a timer's tick needs; it outlives the timer when the tick destroys it.
struct TickState {
  std::function<void()> onTick;
  bool ticking = false;
};

class QtTimer final : public Timer {
 public:
  explicit QtTimer(std::function<void()> onTick)
      : state_(std::make_shared<TickState>(TickState{std::move(onTick)})), timer_(std::make_unique<QTimer>()) {
    timer_->setTimerType(Qt::PreciseTimer);
    timer_->setInterval(1);
    QObject::connect(timer_.get(), &QTimer::timeout, timer_.get(), [state = state_] { Tick(state); });
  }

  ~QtTimer() override {
    timer_->stop();
    if (state_->ticking) timer_.release()->deleteLater();  // Qt's timer is still at work below the tick
  }

  void SetInterval(int milliseconds) override { timer_->setInterval(std::max(1, milliseconds)); }
  int Interval() const override { return timer_->interval(); }

  void SetEnabled(bool enabled) override {
    if (enabled) {
      timer_->start();
    } else {
      timer_->stop();
    }
  }

  bool Enabled() const override { return timer_->isActive(); }

 private:
  static void Tick(std::shared_ptr<TickState> state) {
    if (state->ticking) return;
    state->ticking = true;
    state->onTick();
    state->ticking = false;
  }

  std::shared_ptr<TickState> state_;
  std::unique_ptr<QTimer> timer_;
};

}  // namespace

bool QtEventLoop::EventCounter::eventFilter(QObject* /*receiver*/, QEvent* /*event*/) {
  ++count_;
  return false;
}

QtEventLoop::QtEventLoop(QCoreApplication& application) : application_(application) {
  application_.installEventFilter(&events_);
  QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, &events_,
                   [this] { DoNotBlockAfterAnEvent(); });
}

QtEventLoop::~QtEventLoop() {
  application_.removeEventFilter(&events_);
}

void QtEventLoop::Yield(std::chrono::milliseconds atMost) {
  const auto before = events_.Count();
  QCoreApplication::processEvents();
  if (events_.Count() != before || atMost.count() <= 0) return;
  QTimer deadline;
  deadline.setTimerType(Qt::PreciseTimer);
  if (atMost != kForever) deadline.start(QtInterval(atMost));
  SleepUntilEvent();
}

void QtEventLoop::SleepUntilEvent() {
  const auto outerEvents = std::exchange(eventsAtSleep_, events_.Count());
  const auto outerLevel = std::exchange(loopLevelAtSleep_, QThread::currentThread()->loopLevel());
  QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  eventsAtSleep_ = outerEvents;
  loopLevelAtSleep_ = outerLevel;
}

// One of Qt's dispatchers first runs the posted events and then sleeps in the same call, although one of them may
// have been what the caller waits for. It tells when it is about to, and can be stopped there. Loops of Qt's own
// that an event has opened (a dialog) stand on a higher level and may sleep.
void QtEventLoop::DoNotBlockAfterAnEvent() {
  if (QThread::currentThread()->loopLevel() != loopLevelAtSleep_) return;
  if (events_.Count() != eventsAtSleep_) QAbstractEventDispatcher::instance()->interrupt();
}

void QtEventLoop::Post(std::function<void()> call) {
  QMetaObject::invokeMethod(&events_, std::move(call), Qt::QueuedConnection);
}

std::unique_ptr<Timer> QtEventLoop::MakeTimer(std::function<void()> onTick) {
  return std::make_unique<QtTimer>(std::move(onTick));
}

}  // namespace tarvolt
