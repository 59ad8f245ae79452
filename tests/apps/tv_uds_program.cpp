#include "apps/tv_uds_program.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fstream>

#include "text/number.h"

namespace tarvolt::uds {
namespace {

constexpr int kPatience = 10000;  // milliseconds

bool IsReady(int descriptor, short event, int milliseconds) {
  pollfd wanted{descriptor, event, 0};
  return poll(&wanted, 1, milliseconds) > 0;
}

}  // namespace

RunningSource::RunningSource(const std::vector<std::string>& arguments) {
  std::vector<std::string> words = {TARVOLT_PROGRAM_FOLDER "/tv-uds"};
  if (std::find(arguments.begin(), arguments.end(), "--port") == arguments.end())
    words.insert(words.end(), {"--port", "0"});
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> pointers;
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);

  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) return;
  process_ = fork();
  if (process_ == 0) {
    dup2(ends[1], STDERR_FILENO);
    execv(pointers[0], pointers.data());
    _exit(127);
  }
  close(ends[1]);
  errorPipe_ = ends[0];
}

RunningSource::~RunningSource() {
  if (process_ > 0) {
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
  }
  if (errorPipe_ >= 0) close(errorPipe_);
}

bool RunningSource::ReadErrors() {
  std::array<char, 4096> bytes;
  if (!IsReady(errorPipe_, POLLIN, kPatience)) return false;
  const ssize_t count = read(errorPipe_, bytes.data(), bytes.size());
  if (count <= 0) return false;
  errors_.append(bytes.data(), static_cast<std::size_t>(count));
  return true;
}

std::uint16_t RunningSource::Port() {
  const std::string words = "listening on 127.0.0.1 port ";
  for (;;) {
    const std::size_t place = errors_.find(words);
    if (place != std::string::npos && errors_.find('\n', place) != std::string::npos) {
      return static_cast<std::uint16_t>(std::strtoul(errors_.c_str() + place + words.size(), nullptr, 10));
    }
    if (!ReadErrors()) return 0;
  }
}

void RunningSource::Signal(int signal) const {
  kill(process_, signal);
}

std::optional<int> RunningSource::ExitStatus() {
  while (ReadErrors()) {
  }
  int status = 0;
  for (int waited = 0; waited < kPatience; waited += 10) {
    if (waitpid(process_, &status, WNOHANG) == process_) {
      process_ = -1;
      return WIFEXITED(status) ? std::optional(WEXITSTATUS(status)) : std::nullopt;
    }
    poll(nullptr, 0, 10);
  }
  return std::nullopt;
}

std::string RunningSource::Errors() {
  while (ReadErrors()) {
  }
  return errors_;
}

std::vector<std::string> RunningSource::ShownArguments() const {
  std::ifstream file("/proc/" + NumberText(static_cast<std::int64_t>(process_)) + "/cmdline", std::ios::binary);
  std::vector<std::string> words;
  for (std::string word; words.size() < 100 && std::getline(file, word, '\0');) words.push_back(word);
  return words;
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
