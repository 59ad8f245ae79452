// SPDX-License-Identifier: GPL-3.0-or-later
#include "apps/program.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>

namespace tarvolt {
namespace {

constexpr auto kPatience = std::chrono::seconds(10);
constexpr int kLook = 10;  // milliseconds between two looks at a program

std::chrono::steady_clock::time_point Deadline() {
  return std::chrono::steady_clock::now() + kPatience;
}

bool IsOver(std::chrono::steady_clock::time_point deadline) {
  return std::chrono::steady_clock::now() > deadline;
}

}  // namespace

RunningProgram::RunningProgram(const std::string& name, const std::vector<std::string>& arguments,
                               const std::vector<std::string>& variables) {
  std::vector<std::string> words = {name.starts_with('/') ? name : TARVOLT_PROGRAM_FOLDER "/" + name};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<std::string> ownVariables = variables;
  std::vector<char*> pointers;
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);

  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) return;
  process_ = fork();
  if (process_ == 0) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    dup2(ends[1], STDOUT_FILENO);
    dup2(ends[1], STDERR_FILENO);
    for (std::string& variable : ownVariables) putenv(variable.data());
    execv(pointers[0], pointers.data());
    _exit(127);
  }
  close(ends[1]);
  pipe_ = ends[0];
}

RunningProgram::~RunningProgram() {
  if (process_ > 0 && !status_) {
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
  }
  if (pipe_ >= 0) close(pipe_);
}

void RunningProgram::Signal(int signal) const {
  if (process_ > 0 && !status_) kill(process_, signal);
}

bool RunningProgram::WaitFor(const std::string& text) {
  for (const auto deadline = Deadline(); !Printed(text) && !IsOver(deadline);) {
    if (ReadMore(kLook) || !HasEnded()) continue;
    Drain();
    break;
  }
  return Printed(text);
}

std::optional<int> RunningProgram::ExitStatus() {
  for (const auto deadline = Deadline(); !HasEnded() && !IsOver(deadline);) ReadMore(kLook);
  Drain();
  return status_ && WIFEXITED(*status_) ? std::optional(WEXITSTATUS(*status_)) : std::nullopt;
}

// The end of the pipe says nothing: a program that this one has started may hold it open.
bool RunningProgram::HasEnded() {
  int status = 0;
  if (!status_ && waitpid(process_, &status, WNOHANG) == process_) status_ = status;
  return status_.has_value();
}

void RunningProgram::Drain() {
  while (ReadMore(0)) {
  }
}

bool WaitUntil(const std::function<bool()>& condition) {
  for (const auto deadline = Deadline(); !condition() && !IsOver(deadline);) poll(nullptr, 0, kLook);
  return condition();
}

bool RunningProgram::ReadMore(int milliseconds) {
  pollfd wanted{pipe_, POLLIN, 0};
  if (poll(&wanted, 1, milliseconds) <= 0) return false;
  std::array<char, 4096> bytes;
  const ssize_t count = read(pipe_, bytes.data(), bytes.size());
  if (count > 0) {
    output_.append(bytes.data(), static_cast<std::size_t>(count));
  } else {
    poll(nullptr, 0, milliseconds);  // a pipe at its end never makes anyone wait
  }
  return count > 0;
}

}  // namespace tarvolt
