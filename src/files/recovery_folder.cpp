// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/recovery_folder.h"

#include <cstdint>
#include <string>

#include "text/number.h"
#include "timebase/time_base.h"

namespace tarvolt {
namespace {

constexpr const char* kFolderName = "recovery";

}  // namespace

std::filesystem::path RecoveryFolder(const Session& session) {
  return session.DataFolder() / kFolderName;
}

std::filesystem::path FreeName(FileSystem& files, const std::filesystem::path& name) {
  constexpr std::int64_t kTries = 10000;
  std::filesystem::path free = name;
  for (std::int64_t n = 2; n < kTries && files.FileExists(free); ++n) {
    free = name.parent_path() / (name.stem().string() + "_" + NumberText(n) + name.extension().string());
  }
  return free;
}

std::filesystem::path RescueName(Session& session, const std::filesystem::path& folder, std::string_view ending) {
  return FreeName(session.host.files, folder / FileNameFromDate(NowPrecise(session.host.clock)).append(ending));
}

std::filesystem::path MoveToRecovery(Session& session, const std::filesystem::path& backup, std::string_view ending,
                                     std::error_code& error) {
  const std::filesystem::path folder = backup.parent_path() / kFolderName;
  session.host.files.MakeFolders(folder, error);
  if (error) return {};
  const std::filesystem::path moved = RescueName(session, folder, ending);
  session.host.files.Rename(backup, moved, error);
  return error ? std::filesystem::path() : moved;
}

}  // namespace tarvolt
