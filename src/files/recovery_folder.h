// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string_view>
#include <system_error>

#include "model/session.h"

namespace tarvolt {

/// Where backups go that must outlive the next run.
std::filesystem::path RecoveryFolder(const Session& session);

/// `name`, or with "_2", "_3" and so on before its extension when such a file exists already.
std::filesystem::path FreeName(FileSystem& files, const std::filesystem::path& name);

/// The free name for a backup in that recovery folder: the date now, then `ending`.
std::filesystem::path RescueName(Session& session, const std::filesystem::path& folder, std::string_view ending);

/// Moves a backup into the recovery folder beside it, which needs no room on the disk. Gives its new name; empty, with
/// `error` set and the backup where it was, when the disk refused.
std::filesystem::path MoveToRecovery(Session& session, const std::filesystem::path& backup, std::string_view ending,
                                     std::error_code& error);

}  // namespace tarvolt
