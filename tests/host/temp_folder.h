// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <system_error>

namespace tarvolt {

/// A fresh folder on the real disk, removed with all that is in it.
class TempFolder {
 public:
  TempFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "tarvolt-host-XXXXXX").native();
    if (::mkdtemp(name.data()) == nullptr) throw std::system_error(errno, std::generic_category());
    path_ = name;
  }
  ~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  const std::filesystem::path& Path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace tarvolt
