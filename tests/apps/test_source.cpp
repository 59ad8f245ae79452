// SPDX-License-Identifier: GPL-3.0-or-later
#include "apps/test_source.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>

#include "apps/tv-uds/link/messages.h"

namespace tarvolt {
namespace {

constexpr int kPatience = 10000;  // milliseconds
constexpr int kSettle = 500;      // milliseconds

bool IsReady(int descriptor) {
  pollfd wanted{descriptor, POLLIN, 0};
  return poll(&wanted, 1, kPatience) > 0;
}

}  // namespace

TestSource::TestSource() {
  listener_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  const bool listens = bind(listener_, reinterpret_cast<sockaddr*>(&address), size) == 0 && listen(listener_, 5) == 0;
  if (listens && getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size) == 0) {
    port_ = ntohs(address.sin_port);
  }
}

TestSource::~TestSource() {
  HangUp();
  close(listener_);
}

bool TestSource::Accept() {
  HangUp();
  if (!IsReady(listener_)) return false;
  socket_ = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
  const int atOnce = 1;
  setsockopt(socket_, IPPROTO_TCP, TCP_NODELAY, &atOnce, sizeof atOnce);
  std::string words;
  std::array<char, 256> bytes;
  while (words.find("STAT\xFF") == std::string::npos) {
    const ssize_t count = IsReady(socket_) ? recv(socket_, bytes.data(), bytes.size(), 0) : 0;
    if (count <= 0) return false;
    words.append(bytes.data(), static_cast<std::size_t>(count));
  }
  return true;
}

void TestSource::BeginRun(int channels) {
  Send(uds::StatusMessages(channels));
  poll(nullptr, 0, kSettle);
}

void TestSource::Send(const std::string& bytes) const {
  send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
}

void TestSource::SendSet(const std::vector<double>& values, std::optional<TimeStamp> stamp) const {
  Send(uds::DataSetMessages(values, stamp));
}

void TestSource::HangUp() {
  if (socket_ >= 0) close(socket_);
  socket_ = -1;
}

std::uint16_t FreePort() {
  return TestSource().Port();
}

}  // namespace tarvolt
