#include "files/recovery_folder.h"

#include <cstdint>

#include "text/number.h"

namespace tarvolt {

std::filesystem::path RecoveryFolder(const Session& session) {
  return session.DataFolder() / "recovery";
}

std::filesystem::path FreeName(FileSystem& files, const std::filesystem::path& name) {
  constexpr std::int64_t kTries = 10000;
  std::filesystem::path free = name;
  for (std::int64_t n = 2; n < kTries && files.FileExists(free); ++n) {
    free = name.parent_path() / (name.stem().string() + "_" + NumberText(n) + name.extension().string());
  }
  return free;
}

}  // namespace tarvolt
