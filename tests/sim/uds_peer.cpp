// SPDX-License-Identifier: GPL-3.0-or-later
#include "sim/uds_peer.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "text/number.h"

namespace tarvolt {

namespace {

constexpr char kTerminator = '\xFF';

std::string Message(std::string_view text) {
  return std::string(text) + kTerminator;
}

}  // namespace

UdsPeer::UdsPeer(SimLoop& loop, SimNetwork& network)
    : loop_(loop),
      network_(network),
      listener_(network.MakeListener()),
      pushTimer_(loop.MakeWorldTimer([this] { Tick(); })),
      values_([](std::int64_t set) { return std::vector<double>{static_cast<double>(set)}; }) {
  pushTimer_->SetInterval(100);
  listener_->onAccept = [this](std::unique_ptr<SocketControl> peer) { Accept(std::move(peer)); };
  std::string why;
  if (!listener_->Listen("127.0.0.1", kDefaultPort, why)) throw std::logic_error(why);
}

UdsPeer::~UdsPeer() = default;

UdsPeer& UdsPeer::Channels(int count) {
  channels_ = count;
  return *this;
}

UdsPeer& UdsPeer::Measures(Values values) {
  values_ = std::move(values);
  return *this;
}

UdsPeer& UdsPeer::StampsWith(Stamps stamps) {
  stamps_ = std::move(stamps);
  return *this;
}

UdsPeer& UdsPeer::PushesEvery(std::chrono::milliseconds period) {
  pushTimer_->SetInterval(static_cast<int>(period.count()));
  return *this;
}

UdsPeer& UdsPeer::AnswersAfter(std::chrono::milliseconds wait) {
  answersAfter_ = wait;
  return *this;
}

UdsPeer& UdsPeer::FallsSilentAt(std::int64_t set) {
  silentFrom_ = set;
  return *this;
}

void UdsPeer::Send(std::string_view message) {
  if (peer_ != nullptr) peer_->Write(Message(message));
}

void UdsPeer::BreakLink() {
  pushTimer_->SetEnabled(false);
  if (peer_ != nullptr) network_.Break(*peer_);
}

void UdsPeer::Accept(std::unique_ptr<SocketControl> peer) {
  pushTimer_->SetEnabled(false);
  peer_ = std::move(peer);
  peer_->onDataArrival = [this] { Take(peer_->ReadAvailable()); };
  peer_->onClose = [this] { pushTimer_->SetEnabled(false); };
  pushes_ = false;
  unfinished_.clear();
}

void UdsPeer::Take(std::string_view bytes) {
  unfinished_.append(bytes);
  for (std::size_t end = unfinished_.find(kTerminator); end != std::string::npos; end = unfinished_.find(kTerminator)) {
    const std::string message = unfinished_.substr(0, end);
    unfinished_.erase(0, end + 1);
    received_.push_back(message);
    Obey(message);
  }
}

void UdsPeer::Obey(const std::string& message) {
  if (message == "PUSH") pushes_ = true;
  if (message == "POLL") pushes_ = false;
  if (message == "STAT") Answer(&UdsPeer::SendStatus);
  if (message == "GETD") Answer(&UdsPeer::SendSet);
}

// An answer that is still owed when the connection ends is owed to nobody.
void UdsPeer::Answer(void (UdsPeer::*action)()) {
  if (answersAfter_.count() == 0) {
    (this->*action)();
    return;
  }
  loop_.After(answersAfter_, [this, action, asker = std::weak_ptr<SocketControl>(peer_)] {
    if (!asker.expired()) (this->*action)();
  });
}

void UdsPeer::Tick() {
  if (pushes_) {
    SendSet();
  } else {
    pushTimer_->SetEnabled(false);
  }
}

void UdsPeer::SendStatus() {
  if (IsSilent()) return;
  peer_->Write(Message("^^2013" + NumberText(std::int64_t{channels_})) + Message("^^1001"));
  if (pushes_) pushTimer_->SetEnabled(true);
}

void UdsPeer::SendSet() {
  if (!IsConnected() || IsSilent()) return;
  peer_->Write(SetText());
  ++sets_;
}

std::string UdsPeer::SetText() const {
  std::string text;
  const std::vector<double> values = values_(sets_);
  for (std::size_t channel = 0; channel < values.size(); ++channel) {
    text += Message("#" + NumberText(static_cast<std::int64_t>(channel)) + NumberText(values[channel]));
  }
  return text + (stamps_ ? Message("^^3000" + NumberText(stamps_(sets_))) : Message("^^3001"));
}

}  // namespace tarvolt
