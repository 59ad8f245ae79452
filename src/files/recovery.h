// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>

#include "model/session.h"

namespace tarvolt {

/// At start-up, before this program writes any: removes the data files in the making that a crash left in the data
/// folder, in `recovery` and in the folders of yesterday's, today's and tomorrow's files, whatever base the stamps are
/// in. Without DiskBackUp they stay: such a file may be all that is left of a log.
void RemoveLeftParts(Session& session);

/// At start-up: removes left parts, copies the backups of runs that were not ended properly to the recovery folder,
/// resets their markers and shows "Recovery Alert". True when any was found. A backup that cannot be copied is moved;
/// when that fails too, or its folder is not there, this is reported and its marker stays set.
bool RecoverBackups(Session& session);

/// Sets the run marker of a backup that begins at `file`, and remembers where it is, whatever DataDirectory becomes.
void MarkLocalRun(Session& session, const std::filesystem::path& file);

/// Before a backup begins at `file`: moves what earlier runs left and nobody has rescued to the recovery folder beside
/// it. `own` is a backup that may be written over, empty for none. False when `file` is still in use and cannot be
/// moved.
bool FreeBackupPlace(Session& session, const std::filesystem::path& file, const std::filesystem::path& own);

}  // namespace tarvolt
