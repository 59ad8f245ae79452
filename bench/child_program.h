// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <string>
#include <string_view>
#include <vector>

namespace tarvolt::bench {

/// One of the real programs as a child of this one, with its output and its errors in one pipe. Killed when destroyed.
class ChildProgram {
 public:
  ChildProgram() = default;

  /// `words`: the program's name and its arguments.
  explicit ChildProgram(std::vector<std::string> words) { Start(std::move(words)); }
  ~ChildProgram() {
    if (process_ > 0) {
      ::kill(process_, SIGKILL);
      ::waitpid(process_, nullptr, 0);
    }
    if (output_ >= 0) ::close(output_);
  }
  ChildProgram(const ChildProgram&) = delete;
  ChildProgram& operator=(const ChildProgram&) = delete;

  /// Called once.
  void Start(std::vector<std::string> words) {
    words.front() = TARVOLT_PROGRAM_FOLDER "/" + words.front();
    std::vector<char*> pointers;
    for (std::string& word : words) pointers.push_back(word.data());
    pointers.push_back(nullptr);
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) return;
    process_ = ::vfork();
    if (process_ == 0) {
      ::dup2(ends[1], STDOUT_FILENO);
      ::dup2(ends[1], STDERR_FILENO);
      ::execv(pointers[0], pointers.data());
      ::_exit(127);
    }
    ::close(ends[1]);
    output_ = ends[0];
  }

  /// The line in which `words` came first, from behind them on, with its end; empty when it has not come in ten seconds
  /// or the program ended without.
  std::string WaitForOutput(std::string_view words) {
    for (;;) {
      const std::size_t place = text_.find(words);
      const std::size_t end = place == std::string::npos ? place : text_.find('\n', place);
      if (end != std::string::npos) return text_.substr(place + words.size(), end + 1 - place - words.size());
      if (!ReadMore()) return {};
    }
  }

  /// Asks it to end. True when it did so with success.
  bool EndsWell() {
    if (process_ <= 0) return false;
    ::kill(process_, SIGTERM);
    while (ReadMore()) {
    }
    int status = 0;
    const bool ended = ::waitpid(process_, &status, 0) == process_;
    process_ = -1;
    return ended && WIFEXITED(status) && WEXITSTATUS(status) == 0;
  }

 private:
  static constexpr int kPatience = 10000;  // milliseconds

  bool ReadMore() {
    std::array<char, 4096> bytes;
    pollfd wanted{output_, POLLIN, 0};
    if (::poll(&wanted, 1, kPatience) <= 0) return false;
    const ssize_t got = ::read(output_, bytes.data(), bytes.size());
    if (got <= 0) return false;
    text_.append(bytes.data(), static_cast<std::size_t>(got));
    return true;
  }

  pid_t process_ = -1;
  int output_ = -1;
  std::string text_;
};

}  // namespace tarvolt::bench
