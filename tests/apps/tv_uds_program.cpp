// SPDX-License-Identifier: GPL-3.0-or-later
#include "apps/tv_uds_program.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <utility>

#include "text/number.h"

namespace tarvolt::uds {
namespace {

constexpr int kPatience = 10000;  // milliseconds

bool IsReady(int descriptor, short event, int milliseconds) {
  pollfd wanted{descriptor, event, 0};
  return poll(&wanted, 1, milliseconds) > 0;
}

std::vector<std::string> OnAFreePort(std::vector<std::string> arguments) {
  if (std::find(arguments.begin(), arguments.end(), "--port") == arguments.end())
    arguments.insert(arguments.begin(), {"--port", "0"});
  return arguments;
}

}  // namespace

RunningSource::RunningSource(std::vector<std::string> arguments)
    : RunningProgram("tv-uds", OnAFreePort(std::move(arguments))) {}

std::uint16_t RunningSource::Port() {
  const std::string words = "listening on 127.0.0.1 port ";
  if (!WaitFor(words) || !WaitFor("\n")) return 0;
  const std::string& said = Output();
  return static_cast<std::uint16_t>(std::strtoul(said.c_str() + said.find(words) + words.size(), nullptr, 10));
}

Recorder::Recorder(std::uint16_t port, int bufferSize) {
  socket_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (bufferSize > 0) {
    setsockopt(socket_, SOL_SOCKET, SO_RCVBUF, &bufferSize, sizeof bufferSize);
    setsockopt(socket_, SOL_SOCKET, SO_SNDBUF, &bufferSize, sizeof bufferSize);
  }
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  closed_ = connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0;
}

Recorder::~Recorder() {
  close(socket_);
}

void Recorder::Send(const std::string& bytes) const {
  send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
}

std::size_t Recorder::Flood(const std::string& bytes, std::size_t most) const {
  std::size_t taken = 0;
  while (taken < most && IsReady(socket_, POLLOUT, 500)) {
    const std::size_t from = taken % bytes.size();
    const ssize_t count = send(socket_, bytes.data() + from, bytes.size() - from, MSG_NOSIGNAL | MSG_DONTWAIT);
    if (count < 0 && errno != EAGAIN) break;
    if (count > 0) taken += static_cast<std::size_t>(count);
  }
  return taken;
}

bool Recorder::Receive(int milliseconds) {
  std::array<char, 65536> bytes;
  if (closed_ || !IsReady(socket_, POLLIN, milliseconds)) return false;
  const ssize_t count = recv(socket_, bytes.data(), bytes.size(), 0);
  closed_ = count <= 0;
  if (closed_) return false;
  buffer_.erase(0, at_);
  at_ = 0;
  buffer_.append(bytes.data(), static_cast<std::size_t>(count));
  return true;
}

std::optional<std::string> Recorder::Message() {
  for (;;) {
    const std::size_t end = buffer_.find('\xFF', at_);
    if (end != std::string::npos) {
      std::string message = buffer_.substr(at_, end - at_);
      at_ = end + 1;
      return message;
    }
    if (!Receive(kPatience)) return std::nullopt;
  }
}

std::vector<double> Recorder::Set() {
  std::vector<double> values;
  while (const std::optional<std::string> message = Message()) {
    if (message->rfind("^^3001", 0) == 0) return values;
    const bool isStamp = message->rfind("^^3000", 0) == 0;
    if (!isStamp && message->rfind('#' + NumberText(static_cast<std::int64_t>(values.size())), 0) != 0) return {};
    values.push_back(std::strtod(message->c_str() + (isStamp ? 6 : 2), nullptr));
    if (isStamp) return values;
  }
  return {};
}

bool Recorder::IsClosed() {
  while (at_ == buffer_.size() && !closed_) {
    if (!Receive(kPatience)) break;
  }
  return closed_ && at_ == buffer_.size();
}

bool Recorder::IsSilent(int milliseconds) {
  return at_ == buffer_.size() && !closed_ && !Receive(milliseconds) && !closed_;
}

}  // namespace tarvolt::uds
