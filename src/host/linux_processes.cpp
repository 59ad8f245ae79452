// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/linux_processes.h"

#include <sched.h>
#include <sys/resource.h>
#include <unistd.h>

#include <QProcess>
#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>
#include <system_error>
#include <utility>

#include "host/disk_path.h"
#include "text/ansi.h"
#include "text/number.h"

namespace tarvolt {
namespace {

constexpr std::size_t kKernelNameLength = 15;
constexpr std::streamsize kLongestTitle = 4096;

std::string LeadingBytes(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::string bytes(static_cast<std::size_t>(kLongestTitle), '\0');
  stream.read(bytes.data(), kLongestTitle);
  bytes.resize(static_cast<std::size_t>(stream.gcount()));
  return bytes;
}

std::string WithoutFolder(const std::string& argument0) {
  const bool isPath = argument0.starts_with('/') || argument0.starts_with("./") || argument0.starts_with("../");
  return isPath ? argument0.substr(argument0.rfind('/') + 1) : argument0;
}

bool BearsName(const std::filesystem::path& processFolder, std::string_view words) {
  const std::string arguments = LeadingBytes(processFolder / "cmdline");
  if (arguments.empty()) return false;  // ended and not yet reaped, or a thread of the kernel
  if (WithoutFolder(arguments.substr(0, arguments.find('\0'))).find(words) != std::string::npos) return true;
  std::string kernelName = LeadingBytes(processFolder / "comm");
  if (kernelName.ends_with('\n')) kernelName.pop_back();
  if (kernelName.find(words) != std::string::npos) return true;
  return kernelName.size() == kKernelNameLength && words.starts_with(kernelName);
}

bool IsProcessId(const std::string& name) {
  return !name.empty() && std::all_of(name.begin(), name.end(), [](char c) { return c >= '0' && c <= '9'; });
}

bool IsFile(const std::string& name) {
  std::error_code missing;
  return std::filesystem::is_regular_file(DiskPath(name), missing);
}

QString ShellText(const std::string& word) {
  return QString::fromStdString(DiskPath(word).native());
}

bool SetClass(int policy, int level) {
  sched_param parameters{};
  parameters.sched_priority = level;
  return ::sched_setscheduler(0, policy | SCHED_RESET_ON_FORK, &parameters) == 0;
}

bool SetNice(int nice) {
  return SetClass(SCHED_OTHER, 0) && ::setpriority(PRIO_PROCESS, 0, nice) == 0;
}

bool ApplyPriority(PriorityClass priority) {
  switch (priority) {
    case PriorityClass::Normal:
      return SetNice(0);
    case PriorityClass::AboveNormal:
      return SetNice(-6);
    case PriorityClass::High:
      return SetNice(-11);
    case PriorityClass::RealTime:
      return SetClass(SCHED_FIFO, 10) || SetNice(-19);
  }
  errno = EINVAL;
  return false;
}

}  // namespace

std::vector<std::string> SplitCommandLine(std::string_view commandLine) {
  std::vector<std::string> words;
  std::optional<std::string> word;
  bool quoted = false;
  for (const char c : commandLine) {
    if (c == '"') {
      quoted = !quoted;
      if (!word) word.emplace();
    } else if (!quoted && (c == ' ' || c == '\t')) {
      if (word) words.push_back(*std::exchange(word, std::nullopt));
    } else {
      if (!word) word.emplace();
      *word += c;
    }
  }
  if (word) words.push_back(*word);
  return words;
}

bool LinuxProcesses::IsRunning(std::string_view words) {
  if (words.empty()) return false;
  const std::string wanted = Utf8FromAnsi(words);
  const std::string self = NumberText(std::int64_t{::getpid()});
  std::error_code error;
  std::filesystem::directory_iterator entry("/proc", error);
  for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
    const std::string id = entry->path().filename().native();
    if (IsProcessId(id) && id != self && BearsName(entry->path(), wanted)) return true;
  }
  return false;
}

bool LinuxProcesses::StartMinimised(const std::string& commandLine, std::string& why) {
  const std::string whole = Trim(commandLine);
  const auto words = IsFile(whole) ? std::vector{whole} : SplitCommandLine(whole);
  if (words.empty() || words.front().empty()) {
    why = "There is no program to start";
    return false;
  }
  QStringList arguments;
  for (auto word = words.begin() + 1; word != words.end(); ++word) arguments << ShellText(*word);
  QProcess process;
  process.setProgram(ShellText(words.front()));
  process.setArguments(arguments);
  process.setStandardInputFile(QProcess::nullDevice());
  process.setStandardOutputFile(QProcess::nullDevice());
  if (process.startDetached()) return true;
  why = AnsiFromUtf8(process.errorString().toStdString());
  return false;
}

bool LinuxProcesses::SetPriority(PriorityClass priority, std::string& why) {
  if (ApplyPriority(priority)) return true;
  why = "The system refuses this priority: " + std::error_code(errno, std::generic_category()).message();
  return false;
}

}  // namespace tarvolt
