#pragma once

#include <filesystem>

#include "model/session.h"

namespace tarvolt {

/// Where backups go that must outlive the next run.
std::filesystem::path RecoveryFolder(const Session& session);

/// `name`, or with "_2", "_3" and so on before its extension when such a file exists already.
std::filesystem::path FreeName(FileSystem& files, const std::filesystem::path& name);

}  // namespace tarvolt
