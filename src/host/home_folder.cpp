// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/home_folder.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <system_error>

#include "host/disk_path.h"
#include "host/posix_file_system.h"
#include "text/ansi.h"
#include "text/number.h"

namespace tarvolt {
namespace {

std::filesystem::path Variable(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

std::filesystem::path UserFolder() {
  const auto home = Variable("HOME");
  if (!home.empty()) return home;
  const passwd* user = ::getpwuid(::getuid());
  return user == nullptr ? "/" : user->pw_dir;
}

std::filesystem::path DataFolder() {
  const auto folder = Variable("XDG_DATA_HOME");
  return folder.is_absolute() ? folder : UserFolder() / ".local" / "share";  // a relative one is to be ignored
}

std::string LastReason() {
  return std::error_code(errno, std::generic_category()).message();
}

std::string HolderOf(int fd) {
  std::array<char, 32> text{};
  const auto size = ::pread(fd, text.data(), text.size(), 0);
  if (size <= 0) return "another program";
  return "the program with the process id " + NumberText(Val(std::string_view(text.data(), size)));
}

void WriteProcessId(int fd) {
  const std::string text = NumberText(std::int64_t{::getpid()}) + "\n";
  const bool written = ::ftruncate(fd, 0) == 0 && ::pwrite(fd, text.data(), text.size(), 0) > 0;
  static_cast<void>(written);  // the id is for people; on a full disk the lock holds without it
}

}  // namespace

std::filesystem::path FindHome(const std::optional<std::string>& option) {
  if (option && !option->empty()) return std::filesystem::absolute(*option);
  const auto home = Variable("TARVOLT_HOME");
  if (!home.empty()) return std::filesystem::absolute(home);
  return DataFolder() / "tarvolt";
}

HomeLock::~HomeLock() {
  if (fd_ != -1) ::close(fd_);
}

bool HomeLock::Take(const std::filesystem::path& home, std::string& why) {
  std::error_code error;
  PosixFileSystem().MakeFolders(home, error);
  if (error) {
    why = "The home folder " + home.native() + " cannot be made: " + error.message();
    return false;
  }
  fd_ = ::open(DiskPath(home / "lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
  if (fd_ == -1) {
    why = "The home folder " + home.native() + " cannot be used: " + LastReason();
    return false;
  }
  if (::flock(fd_, LOCK_EX | LOCK_NB) != 0) {
    why = errno == EWOULDBLOCK
              ? "The station is already running: the home folder " + home.native() + " is in use by " + HolderOf(fd_)
              : "The home folder " + home.native() + " cannot be locked: " + LastReason();
    return false;
  }
  WriteProcessId(fd_);
  return true;
}

}  // namespace tarvolt
