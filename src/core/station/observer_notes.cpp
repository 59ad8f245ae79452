// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/station/observer_notes.h"

namespace tarvolt {

void ReadNotes(Session& session) {
  constexpr std::size_t kLimit = 1 << 20;
  session.notes.clear();
  std::error_code error;
  const std::unique_ptr<File> file =
      session.host.files.Open(session.settings.files.NotesFileName, OpenMode::Read, error);
  if (!file) return;
  std::string notes(kLimit, '\0');
  notes.resize(file->Read(notes.data(), notes.size(), error));
  session.notes = notes;
}

}  // namespace tarvolt
