// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/session.h"

namespace tarvolt {

/// Reads the observer's notes from NotesFileName, at most a megabyte; a file that cannot be opened leaves them empty.
void ReadNotes(Session& session);

}  // namespace tarvolt
