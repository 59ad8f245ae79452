// SPDX-License-Identifier: GPL-3.0-or-later
#include "apps/tv-uds/session.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

#include "apps/tv-uds/keep_alive.h"
#include "apps/tv-uds/link/messages.h"
#include "apps/tv-uds/tell.h"
#include "text/number.h"

namespace tarvolt::uds {
namespace {

// A recorder takes sets only when its run has begun, which is a moment after the opening exchange.
constexpr double kSettleSeconds = 0.5;

constexpr qint64 kMostUnsent = 64 * 1024;    // bytes waiting here above which no set is made
constexpr qint64 kReadBuffer = 64 * 1024;    // bytes of the recorder's that may wait here
constexpr qint64 kReadAtOnce = 4 * 1024;     // bytes acted upon before looking at the writing side again
constexpr int kMostSetsAtOnce = 1000;        // sets sent before other events have their turn
constexpr double kSecondsBetweenWords = 60;  // about late sets

double SecondsOf(auto timePoint) {
  return std::chrono::duration<double>(timePoint.time_since_epoch()).count();
}

double MonotonicSeconds() {
  return SecondsOf(std::chrono::steady_clock::now());
}

double UnixSeconds() {
  return SecondsOf(std::chrono::system_clock::now());
}

}  // namespace

Session::Session(std::unique_ptr<QTcpSocket> socket, const Source& source, const Options& options,
                 std::function<void()> onEnded)
    : socket_(std::move(socket)), source_(source), options_(options), pacer_(options.rate) {
  pushing_ = options.mode == Mode::Push;
  // A set must leave at once and by itself: the recorder drops a message that it finds cut in two.
  socket_->setSocketOption(QAbstractSocket::LowDelayOption, 1);
  socket_->setReadBufferSize(kReadBuffer);
  NoticeLostPeer(*socket_);
  timer_.setTimerType(Qt::PreciseTimer);
  timer_.setSingleShot(true);
  QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { PushDueSets(); });
  QObject::connect(socket_.get(), &QTcpSocket::readyRead, &timer_, [this] { ReadMessages(); });
  // Later, since a write may tell of itself at once, inside the answer to a message.
  QObject::connect(
      socket_.get(), &QTcpSocket::bytesWritten, &timer_, [this] { ReadMessages(); }, Qt::QueuedConnection);
  QObject::connect(socket_.get(), &QTcpSocket::disconnected, &timer_, std::move(onEnded));
  // The first words may have come before anyone listened for them.
  QTimer::singleShot(0, &timer_, [this] { ReadMessages(); });
}

Session::~Session() {
  socket_->disconnect(&timer_);
}

void Session::ReadMessages() {
  while (IsConnected() && !IsBackedUp()) {
    const QByteArray bytes = socket_->read(kReadAtOnce);
    if (bytes.isEmpty()) return;
    for (const std::string& message : reader_.Add({bytes.data(), static_cast<std::size_t>(bytes.size())})) {
      Act(message);
    }
  }
}

void Session::Act(const std::string& message) {
  if (message == "POLL") SetPushing(false);
  if (message == "PUSH") SetPushing(true);
  if (message == "STAT") SendStatus();
  if (message == "GETD") AnswerRequest();
}

void Session::SetPushing(bool pushing) {
  if (options_.mode != Mode::Auto) return;
  pushing_ = pushing;
  if (pushing_) return;
  pushStarted_ = false;
  timer_.stop();
}

void Session::SendStatus() {
  Send(StatusMessages(source_.Channels()));
  if (pushing_ && !pushStarted_) StartPushing();
}

void Session::AnswerRequest() {
  if (pushing_ || !IsConnected()) return;
  const double now = MonotonicSeconds();
  StartSets(now);
  SendNextSet(now);
}

void Session::StartPushing() {
  pushStarted_ = true;
  const double first = MonotonicSeconds() + kSettleSeconds;
  pacer_.StartAt(first);
  StartSets(first);
  ArmTimer();
}

void Session::PushDueSets() {
  const double now = MonotonicSeconds();
  GiveUpLateSets(now);
  for (int sent = 0; sent < kMostSetsAtOnce && pacer_.NextTime() <= now && !IsBackedUp(); ++sent) {
    if (!SendNextSet(pacer_.NextTime())) return;
  }
  ArmTimer();
}

void Session::GiveUpLateSets(double now) {
  if (source_.KeepsEverySet()) {
    if (pacer_.PutOffLate(now)) TellLate("the replay is more than 10 seconds late and waits for the recorder");
    return;
  }
  const std::int64_t late = pacer_.LeaveOutLate(now);
  if (late == 0) return;
  leftOut_ += late;
  TellLate("more than 10 seconds late: " + NumberText(leftOut_) + " data sets left out so far");
}

void Session::TellLate(const std::string& text) {
  const double now = MonotonicSeconds();
  if (toldLate_ && now - *toldLate_ < kSecondsBetweenWords) return;
  toldLate_ = now;
  Tell(text);
}

void Session::ArmTimer() {
  constexpr double kRetryMilliseconds = 50;
  double wait = std::max(0.0, 1000 * (pacer_.NextTime() - MonotonicSeconds()));
  if (IsBackedUp()) wait = std::max(wait, kRetryMilliseconds);
  timer_.start(static_cast<int>(std::ceil(wait)));
}

bool Session::SendNextSet(double monotonicTime) {
  const std::optional<std::vector<double>> values = source_.Set(pacer_.Next());
  if (!values) {
    timer_.stop();
    socket_->disconnectFromHost();
    return false;
  }
  const std::string messages = DataSetMessages(*values, StampOfNextSet(monotonicTime));
  pacer_.Take();
  Send(messages);
  return IsConnected();
}

std::optional<double> Session::StampOfNextSet(double monotonicTime) const {
  if (!options_.timeStamps) return std::nullopt;
  if (source_.KeepsEverySet()) {
    return StampOfUnixSeconds(*firstSetTime_ + static_cast<double>(pacer_.Next()) / options_.rate);
  }
  // A set that goes out late still bears the time at which it was due.
  return StampOfUnixSeconds(UnixSeconds() + monotonicTime - MonotonicSeconds());
}

void Session::StartSets(double monotonicTime) {
  if (!firstSetTime_) firstSetTime_ = UnixSeconds() + monotonicTime - MonotonicSeconds();
}

void Session::Send(const std::string& text) {
  if (!IsConnected()) return;
  socket_->write(text.data(), static_cast<qint64>(text.size()));
  socket_->flush();
}

bool Session::IsConnected() const {
  return socket_->state() == QAbstractSocket::ConnectedState;
}

bool Session::IsBackedUp() const {
  return socket_->bytesToWrite() > kMostUnsent;
}

}  // namespace tarvolt::uds
