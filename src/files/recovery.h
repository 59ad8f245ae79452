#pragma once

#include "model/session.h"

namespace tarvolt {

/// At start-up: copies the backups of runs that were not ended properly to the recovery folder, resets their
/// markers and shows "Recovery Alert". True when any was found. A copy that fails is told and its marker stays set.
bool RecoverBackups(Session& session);

}  // namespace tarvolt
