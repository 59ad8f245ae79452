// SPDX-License-Identifier: GPL-3.0-or-later
#include "sim/sim_socket.h"

#include <algorithm>
#include <utility>

namespace tarvolt {
namespace {

bool IsAny(const std::string& address) {
  return address.find_first_not_of("0.:") == std::string::npos;
}

void Tell(std::function<void()> handler) {
  if (handler) handler();
}

}  // namespace

bool IsSimAddress(const std::string& address) {
  return address.find_first_not_of("0123456789abcdef.:") == std::string::npos;
}

void SimNetwork::SimSocket::Bind(const std::string& localAddress, std::uint16_t localPort) {
  bound_ = {localAddress, localPort};
}

void SimNetwork::SimSocket::Connect(const std::string& remoteAddress, std::uint16_t remotePort) {
  Disconnect();
  connection_ = std::make_shared<int>();
  const Key key = KeyOf(remoteAddress, remotePort);
  network_.loop_.After(network_.weather.delay, [this, life = Life(), key] {
    if (!life.expired()) Answered(key);
  });
}

void SimNetwork::SimSocket::Answered(const Key& key) {
  if (!IsSimAddress(bound_.address)) return Fail("The local address is not valid");
  if (network_.unreachable_.contains(key)) return;
  const auto* listener = network_.FindListener(key);
  if (listener == nullptr) return Fail("Connection refused");
  takenPort_ = network_.TakePort(bound_.port);
  if (takenPort_ == 0) return Fail("Address already in use");
  local_ = {IsAny(bound_.address) ? key.first : bound_.address, takenPort_};
  remote_ = {key.first, key.second};
  const std::weak_ptr<int> life = Life();
  auto farEnd = MakeFarEnd();
  if (const auto accept = listener->onAccept) accept(std::move(farEnd));
  farEnd = nullptr;  // with nobody to take it the connection ends
  if (!life.expired()) Tell(onConnected);
}

std::unique_ptr<SimNetwork::SimSocket> SimNetwork::SimSocket::MakeFarEnd() {
  const auto toHere = std::make_shared<SimPipe>(network_.loop_, network_.weather, network_.random_);
  const auto fromHere = std::make_shared<SimPipe>(network_.loop_, network_.weather, network_.random_);
  Join(toHere, fromHere);
  auto farEnd = std::make_unique<SimSocket>(network_);
  farEnd->connection_ = std::make_shared<int>();
  farEnd->local_ = remote_;
  farEnd->remote_ = local_;
  farEnd->Join(fromHere, toHere);
  return farEnd;
}

void SimNetwork::SimSocket::Join(std::shared_ptr<SimPipe> in, std::shared_ptr<SimPipe> out) {
  in_ = std::move(in);
  out_ = std::move(out);
  in_->onBytes = [this](std::string bytes) { Receive(bytes); };
  in_->onEnd = [this] {
    ended_ = true;
    CloseWhenDrained();
  };
  in_->onBreak = [this](const std::string& why) { Fail(why); };
}

void SimNetwork::SimSocket::Later(void (SimSocket::*event)()) {
  network_.loop_.After(std::chrono::milliseconds(0), [this, event, life = Life()] {
    if (!life.expired()) (this->*event)();
  });
}

void SimNetwork::SimSocket::Write(std::string_view bytes) {
  if (out_ == nullptr || givenUp_) return;
  if (out_->Unread() + bytes.size() > kWriteLimit) {
    givenUp_ = true;
    Later(&SimSocket::GiveUp);
  } else {
    out_->Send(bytes);
  }
}

void SimNetwork::SimSocket::GiveUp() {
  if (out_ == nullptr) return;
  out_->Break("Connection reset by peer");
  Fail("The remote end does not take the data sent to it");
}

std::string SimNetwork::SimSocket::ReadAvailable() {
  std::string bytes = std::exchange(received_, {});
  TakeWaiting();
  if (!received_.empty()) {
    furtherArrivalPending_ = true;
    Later(&SimSocket::TellFurtherArrival);
  }
  return bytes;
}

void SimNetwork::SimSocket::Disconnect() {
  if (out_ != nullptr) out_->End();
  CloseConnection();
  connection_ = nullptr;
  received_.clear();
  ended_ = false;
}

void SimNetwork::SimSocket::Break(const std::string& why) {
  if (out_ != nullptr) out_->Break(why);
  Disconnect();
}

void SimNetwork::SimSocket::Receive(std::string_view bytes) {
  waiting_.append(bytes);
  const std::size_t before = received_.size();
  TakeWaiting();
  if (received_.size() > before) Tell(onDataArrival);
}

void SimNetwork::SimSocket::TakeWaiting() {
  if (in_ == nullptr) return;
  const std::size_t room = kReadLimit - received_.size();
  const std::size_t count = std::min(room, waiting_.size() - waitingFrom_);
  received_.append(waiting_, waitingFrom_, count);
  waitingFrom_ += count;
  if (waitingFrom_ == waiting_.size()) {
    waiting_.clear();
    waitingFrom_ = 0;
  }
  in_->waiting = waiting_.size() - waitingFrom_;
}

void SimNetwork::SimSocket::TellFurtherArrival() {
  if (!furtherArrivalPending_) return;
  furtherArrivalPending_ = false;
  const std::weak_ptr<int> life = Life();
  if (!received_.empty()) Tell(onDataArrival);
  if (!life.expired()) CloseWhenDrained();
}

// Data before close: a reader who does not read is not told of the end either.
void SimNetwork::SimSocket::CloseWhenDrained() {
  if (!ended_ || furtherArrivalPending_ || !waiting_.empty()) return;
  ended_ = false;
  CloseConnection();
  Tell(onClose);
}

void SimNetwork::SimSocket::Fail(const std::string& why) {
  CloseConnection();
  const std::weak_ptr<int> life = Life();
  if (const auto handler = onError) handler(why);
  if (!life.expired()) Tell(onClose);
}

void SimNetwork::SimSocket::CloseConnection() {
  if (in_ != nullptr) in_->Abandon();
  in_ = nullptr;
  out_ = nullptr;
  waiting_.clear();
  waitingFrom_ = 0;
  furtherArrivalPending_ = false;
  givenUp_ = false;
  network_.portsInUse_.erase(std::exchange(takenPort_, 0));
}

bool SimNetwork::SimListener::Listen(const std::string& localAddress, std::uint16_t localPort, std::string& why) {
  Close();
  if (!IsSimAddress(localAddress)) {
    why = "The local address is not valid";
    return false;
  }
  if (localPort == 0) takenPort_ = network_.TakePort(0);
  const Key place = KeyOf(IsAny(localAddress) ? "" : localAddress, localPort == 0 ? takenPort_ : localPort);
  if (network_.IsListenedTo(place)) {
    why = "Address already in use";
    return false;
  }
  place_ = place;
  network_.listeners_.emplace(place_, this);
  return true;
}

void SimNetwork::SimListener::Close() {
  if (LocalPort() != 0) network_.listeners_.erase(std::exchange(place_, {}));
  network_.portsInUse_.erase(std::exchange(takenPort_, 0));
}

}  // namespace tarvolt
