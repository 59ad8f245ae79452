#include "sim/sim_network.h"

#include <algorithm>
#include <stdexcept>

namespace tarvolt {

SimPeer::SimPeer(std::shared_ptr<SimPipe> toProgram, std::shared_ptr<SimPipe> fromProgram, SimRandom& random,
                 const SimWeather& weather)
    : out_(std::move(toProgram)), in_(std::move(fromProgram)), random_(random), weather_(weather) {
  in_->onBytes = [this](const std::string& bytes) {
    if (const auto handler = onData) handler(bytes);
  };
  in_->onEnd = [this] { EndedByProgram(); };
  in_->onBreak = [this](const std::string&) { EndedByProgram(); };
}

SimPeer::~SimPeer() {
  Close();
}

void SimPeer::Send(std::string_view bytes) {
  if (!open_) return;
  if (random_.Chance(weather_.breakChance)) {
    out_->Break("Connection reset by peer");
    in_->Break("Connection reset by peer");
  } else {
    out_->Send(bytes);
  }
}

void SimPeer::Close() {
  if (!open_) return;
  open_ = false;
  out_->End();
  in_->Abandon();
}

void SimPeer::Break(const std::string& why) {
  if (!open_) return;
  open_ = false;
  out_->Break(why);
  in_->Abandon();
}

void SimPeer::EndedByProgram() {
  open_ = false;
  in_->Abandon();
  if (const auto handler = onClose) handler();
}

/// The program's end of a connection. Every handler may do anything, also destroy the socket, so that after each one
/// the socket is touched only when it still lives and still means the same connection.
class SimNetwork::SimSocket final : public SocketControl {
 public:
  explicit SimSocket(SimNetwork& network) : network_(network) {}
  ~SimSocket() override { Disconnect(); }

  SimSocket(const SimSocket&) = delete;
  SimSocket& operator=(const SimSocket&) = delete;

  void Bind(const std::string& localAddress, std::uint16_t localPort) override {
    boundAddress_ = localAddress;
    boundPort_ = localPort;
  }

  void Connect(const std::string& remoteAddress, std::uint16_t remotePort) override {
    Disconnect();
    ++network_.attempts_;
    connection_ = std::make_shared<int>();
    const Key key = KeyOf(remoteAddress, remotePort);
    network_.loop_.After(network_.weather.delay, [this, life = Life(), key] {
      if (!life.expired()) Answered(key);
    });
  }

  bool IsConnected() const override { return out_ != nullptr; }

  void Write(std::string_view bytes) override {
    if (out_ == nullptr) return;
    if (network_.random_.Chance(network_.weather.breakChance)) {
      out_->Break("Connection reset by peer");
      in_->Break("Connection reset by peer");
    } else {
      out_->Send(bytes);
    }
  }

  std::string ReadAvailable() override {
    std::string bytes = std::exchange(received_, {});
    TakeWaiting();
    if (!received_.empty()) {
      furtherArrivalPending_ = true;
      network_.loop_.After(std::chrono::milliseconds(0), [this, life = Life()] {
        if (!life.expired()) TellFurtherArrival();
      });
    }
    return bytes;
  }

  void Disconnect() override {
    if (out_ != nullptr) out_->End();
    CloseConnection();
    connection_ = nullptr;
    received_.clear();
    waiting_.clear();
    waitingFrom_ = 0;
    ended_ = false;
    furtherArrivalPending_ = false;
  }

 private:
  /// Expires with this connection: at Disconnect, at the next Connect and with the socket.
  std::weak_ptr<int> Life() const { return connection_; }

  void Answered(const Key& key) {
    if (network_.unreachable_.contains(key)) return;
    const auto listener = network_.listeners_.find(key);
    if (listener == network_.listeners_.end()) return Fail("Connection refused");
    const std::uint16_t port = network_.TakePort(boundPort_);
    if (port == 0) return Fail("Address already in use");
    localPort_ = port;
    const Accept accept = listener->second;
    const std::weak_ptr<int> life = Life();
    accept(MakePeer());
    if (!life.expired()) Tell(onConnected);
  }

  std::shared_ptr<SimPeer> MakePeer() {
    in_ = std::make_shared<SimPipe>(network_.loop_, network_.weather, network_.random_);
    out_ = std::make_shared<SimPipe>(network_.loop_, network_.weather, network_.random_);
    in_->onBytes = [this](std::string bytes) { Receive(bytes); };
    in_->onEnd = [this] {
      ended_ = true;
      CloseWhenDrained();
    };
    in_->onBreak = [this](const std::string& why) { Fail(why); };
    auto peer = std::make_shared<SimPeer>(in_, out_, network_.random_, network_.weather);
    peer->programAddress = boundAddress_;
    peer->programPort = localPort_;
    return peer;
  }

  void Receive(std::string_view bytes) {
    waiting_.append(bytes);
    const std::size_t before = received_.size();
    TakeWaiting();
    if (received_.size() > before) Tell(onDataArrival);
  }

  void TakeWaiting() {
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

  void TellFurtherArrival() {
    if (!furtherArrivalPending_) return;
    furtherArrivalPending_ = false;
    const std::weak_ptr<int> life = Life();
    if (!received_.empty()) Tell(onDataArrival);
    if (!life.expired()) CloseWhenDrained();
  }

  // Data before close: a reader who does not read is not told of the end either.
  void CloseWhenDrained() {
    if (!ended_ || furtherArrivalPending_ || !waiting_.empty()) return;
    ended_ = false;
    CloseConnection();
    Tell(onClose);
  }

  void Fail(const std::string& why) {
    CloseConnection();
    waiting_.clear();
    waitingFrom_ = 0;
    furtherArrivalPending_ = false;
    const std::weak_ptr<int> life = Life();
    if (const auto handler = onError) handler(why);
    if (!life.expired()) Tell(onClose);
  }

  void CloseConnection() {
    if (in_ != nullptr) in_->Abandon();
    in_ = nullptr;
    out_ = nullptr;
    network_.portsInUse_.erase(std::exchange(localPort_, 0));
  }

  static void Tell(std::function<void()> handler) {
    if (handler) handler();
  }

  SimNetwork& network_;
  std::shared_ptr<int> connection_;
  std::shared_ptr<SimPipe> in_;
  std::shared_ptr<SimPipe> out_;
  std::string boundAddress_;
  std::uint16_t boundPort_ = 0;
  std::uint16_t localPort_ = 0;
  std::string received_;
  std::string waiting_;  // from waitingFrom_ on: beyond what the socket holds for a reader
  std::size_t waitingFrom_ = 0;
  bool ended_ = false;
  bool furtherArrivalPending_ = false;
};

SimNetwork::SimNetwork(SimLoop& loop, std::uint64_t seed) : loop_(loop), random_(seed) {}

std::unique_ptr<SocketControl> SimNetwork::MakeSocket() {
  return std::make_unique<SimSocket>(*this);
}

std::unique_ptr<SimListener> SimNetwork::Listen(const std::string& address, std::uint16_t port, Accept onAccept) {
  const Key key = KeyOf(address, port);
  if (!listeners_.emplace(key, std::move(onAccept)).second) {
    throw std::logic_error("SimNetwork: somebody listens there already");
  }
  return std::make_unique<SimListener>([this, key] { listeners_.erase(key); });
}

void SimNetwork::SetUnreachable(const std::string& address, std::uint16_t port, bool unreachable) {
  if (unreachable) {
    unreachable_.insert(KeyOf(address, port));
  } else {
    unreachable_.erase(KeyOf(address, port));
  }
}

SimNetwork::Key SimNetwork::KeyOf(const std::string& address, std::uint16_t port) {
  return {address == "localhost" ? "127.0.0.1" : address, port};
}

// A free port, or the one wanted; 0 when that is taken.
std::uint16_t SimNetwork::TakePort(std::uint16_t wanted) {
  constexpr std::uint16_t kFirstFree = 49152;
  if (wanted != 0) return portsInUse_.insert(wanted).second ? wanted : std::uint16_t{0};
  while (!portsInUse_.insert(nextPort_).second) nextPort_ = nextPort_ == 65535 ? kFirstFree : nextPort_ + 1;
  const std::uint16_t taken = nextPort_;
  nextPort_ = nextPort_ == 65535 ? kFirstFree : nextPort_ + 1;
  return taken;
}

}  // namespace tarvolt
