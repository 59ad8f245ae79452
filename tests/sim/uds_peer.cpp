#include "sim/uds_peer.h"

#include <algorithm>
#include <utility>

#include "text/number.h"

namespace tarvolt {

namespace {

constexpr char kTerminator = '\xFF';
constexpr std::chrono::milliseconds kBetweenHalves{5};
constexpr std::size_t kEndlessPiece = 64 * 1024;
constexpr std::size_t kEndlessBacklog = 4 * SocketControl::kReadLimit;

std::string Message(std::string_view text) {
  return std::string(text) + kTerminator;
}

}  // namespace

UdsPeer::UdsPeer(SimLoop& loop, SimNetwork& network, std::uint64_t seed, std::uint16_t port, const std::string& address)
    : loop_(loop),
      random_(seed),
      listener_(network.Listen(address, port, [this](std::shared_ptr<SimPeer> peer) { Accept(std::move(peer)); })),
      pushTimer_(loop.MakeWorldTimer([this] { Tick(); })),
      values_([](std::int64_t set) { return std::vector<double>{static_cast<double>(set)}; }) {
  pushTimer_->SetInterval(100);
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

UdsPeer& UdsPeer::Misbehaves(UdsFault fault, std::int64_t fromSet) {
  fault_ = fault;
  faultFrom_ = fromSet;
  return *this;
}

void UdsPeer::Send(std::string_view message) {
  SendRaw(Message(message));
}

void UdsPeer::SendRaw(std::string_view bytes) {
  if (peer_ != nullptr) peer_->Send(bytes);
}

void UdsPeer::HangUp() {
  pushTimer_->SetEnabled(false);
  if (peer_ != nullptr) peer_->Close();
}

void UdsPeer::BreakLink() {
  pushTimer_->SetEnabled(false);
  if (peer_ != nullptr) peer_->Break();
}

void UdsPeer::Accept(std::shared_ptr<SimPeer> peer) {
  HangUp();
  peer_ = std::move(peer);
  peer_->onData = [this](std::string_view bytes) { Take(bytes); };
  peer_->onClose = [this] { pushTimer_->SetEnabled(false); };
  ++connections_;
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
  loop_.After(answersAfter_, [this, action, asker = std::weak_ptr<SimPeer>(peer_)] {
    if (!asker.expired()) (this->*action)();
  });
}

void UdsPeer::Tick() {
  if (pushes_ || Faulty(UdsFault::EndlessMessage)) {
    SendSet();
  } else {
    pushTimer_->SetEnabled(false);
  }
}

void UdsPeer::SendStatus() {
  if (Faulty(UdsFault::Silent)) return;
  const int declared = Faulty(UdsFault::TooManyChannels) ? 9 : channels_;
  const std::string status = Message("^^2013" + NumberText(std::int64_t{declared})) + Message("^^1001");
  if (Faulty(UdsFault::HalfMessages)) {
    SendInHalves(status);
  } else {
    SendRaw(status);
  }
  if (pushes_) pushTimer_->SetEnabled(true);
}

void UdsPeer::SendSet() {
  if (!IsConnected() || Faulty(UdsFault::Silent)) return;
  if (Faulty(UdsFault::EndlessMessage)) {
    if (peer_->Waiting() < kEndlessBacklog) SendRaw(std::string(kEndlessPiece, 'x'));
    if (!pushTimer_->Enabled()) pushTimer_->SetEnabled(true);
    return;
  }
  if (Faulty(UdsFault::DropMidSet)) {
    const std::string set = SetText();
    SendRaw(std::string_view(set).substr(0, set.find(kTerminator) + 1));
    HangUp();
    return;
  }
  if (Faulty(UdsFault::Garbage)) SendGarbage();
  SendWholeSet();
}

void UdsPeer::SendWholeSet() {
  const std::string set = SetText();
  if (Faulty(UdsFault::HalfMessages)) {
    SendInHalves(set);
  } else {
    SendRaw(set);
  }
  ++sets_;
}

void UdsPeer::SendInHalves(std::string_view messages) {
  std::size_t middle = 1 + random_.Below(messages.size() - 1);
  if (messages[middle - 1] == kTerminator) --middle;  // a cut between two messages would harm neither
  SendRaw(messages.substr(0, middle));
  loop_.After(kBetweenHalves, [rest = std::string(messages.substr(middle)), receiver = std::weak_ptr<SimPeer>(peer_)] {
    if (const auto peer = receiver.lock()) peer->Send(rest);
  });
}

void UdsPeer::SendGarbage() {
  std::string bytes(1 + random_.Below(200), ' ');
  for (char& byte : bytes) byte = static_cast<char>(random_.Below(256));
  SendRaw(bytes + kTerminator);
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
