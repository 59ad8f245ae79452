// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/recovery.h"

#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include "files/format/part_file.h"
#include "files/naming.h"
#include "files/recovery_folder.h"
#include "text/number.h"
#include "timebase/time_base.h"

namespace tarvolt {
namespace {

constexpr int kClientWindows = 9;
constexpr const char* kLocalMarker = "LocalRun";
constexpr const char* kLocalEnding = "local.tvd";
constexpr const char* kPlaceKey = "LocalBackupFile";  ///< the backup that the marker speaks of
constexpr const char* kLeftKey = "LocalBackupLeft";   ///< one that could not be rescued; survives later runs

/// One backup that a run may have left behind.
struct Candidate {
  std::string marker;    ///< key of the run marker
  std::string fileName;  ///< of the backup
  std::string ending;    ///< of the copy, behind the digits
};

std::vector<Candidate> AllCandidates() {
  std::vector<Candidate> all{{kLocalMarker, "localdatabackup.tvd", kLocalEnding}};
  for (std::int64_t n = 1; n <= kClientWindows; ++n) {
    const std::string number = NumberText(n);
    all.push_back({"ClientRun" + number, "clientdatabackup" + number + ".tvd", "client" + number + ".tvd"});
  }
  return all;
}

std::error_code CopyFile(FileSystem& files, const std::filesystem::path& from, const std::filesystem::path& to) {
  std::error_code error;
  const std::unique_ptr<File> source = files.Open(from, OpenMode::Read, error);
  if (!source) return error;
  const std::uint64_t size = source->Size(error);
  if (error) return error;
  PartFile copy(files, to);
  copy.CopyFrom(*source, 0, size);
  return copy.Commit();
}

std::filesystem::path StoredPath(const Session& session, const char* key) {
  return session.store.GetSetting(Section::Settings, key);
}

bool IsMarked(const Session& session, const std::string& marker) {
  return session.store.GetSetting(Section::Settings, marker) == "Running";
}

void SetLeft(Session& session, const std::filesystem::path& backup) {
  if (StoredPath(session, kLeftKey) == backup) return;
  session.store.SaveSetting(Section::Settings, kLeftKey, backup.string());
}

void TellFailure(Session& session, const std::filesystem::path& backup, const std::error_code& error) {
  const std::string text = "Could Not Copy " + backup.string() + " to the recovery folder: " + error.message();
  session.Add2SLog(" " + text);
  session.Tell("Recovery Alert", text);
}

// Where it was begun; where backups are now, when that was never noted or only there is one.
std::filesystem::path PlaceOf(Session& session, const Candidate& candidate) {
  FileSystem& files = session.host.files;
  const std::filesystem::path usual = session.DataFolder() / candidate.fileName;
  if (candidate.marker != kLocalMarker) return usual;
  const std::filesystem::path noted = StoredPath(session, kPlaceKey);
  if (noted.empty()) return usual;
  const bool gone = files.FolderExists(noted.parent_path()) && !files.FileExists(noted);
  return gone && files.FileExists(usual) ? usual : noted;
}

// Copies one backup, or moves it where there is no room for a copy, adding its new name to `rescued`. False when the
// disk refused or is not there.
bool Rescue(Session& session, const std::filesystem::path& backup, const std::string& ending,
            std::vector<std::string>& rescued) {
  FileSystem& files = session.host.files;
  if (!files.FolderExists(backup.parent_path())) {
    session.Add2SLog(" Not There, Will Be Recovered When It Is: " + backup.string());
    return false;
  }
  if (!files.FileExists(backup)) return true;
  std::filesystem::path copy = RescueName(session, RecoveryFolder(session), ending);
  std::error_code error = CopyFile(files, backup, copy);
  if (error) copy = MoveToRecovery(session, backup, ending, error);
  if (error) {
    TellFailure(session, backup, error);
    return false;
  }
  rescued.push_back(copy.string());
  session.Add2SLog(" Recovered " + copy.string());
  return true;
}

void NoteOutcome(Session& session, const std::filesystem::path& backup, bool rescued) {
  if (!rescued) {
    SetLeft(session, backup);
  } else if (StoredPath(session, kLeftKey) == backup) {
    SetLeft(session, {});
  }
}

// True when nothing that could be lost is there any more. A folder that is not there may come back.
bool MoveAway(Session& session, const std::filesystem::path& backup) {
  FileSystem& files = session.host.files;
  if (!files.FileExists(backup)) return files.FolderExists(backup.parent_path());
  std::error_code error;
  const std::filesystem::path moved = MoveToRecovery(session, backup, kLocalEnding, error);
  if (error) {
    TellFailure(session, backup, error);
    return false;
  }
  session.Add2SLog(" Backup of an Earlier Run: " + moved.string());
  return true;
}

// Only those of data files: another program may call its own files so.
void RemovePartsIn(Session& session, const std::filesystem::path& folder) {
  const std::string ending = std::string(".tvd") + kPartEnding;
  std::error_code error;  // one that is not there, or stays, does no harm
  for (const std::filesystem::path& name : session.host.files.ListFiles(folder, error)) {
    if (!name.string().ends_with(ending)) continue;
    session.host.files.Remove(folder / name, error);
    if (!error) session.Add2SLog(" Removed What a Crash Left of a Save: " + (folder / name).string());
  }
}

void ShowAlert(Session& session, const std::vector<std::string>& rescued) {
  std::string text =
      "Tarvolt was not properly shutdown when last used.\n\n"
      "If Back Up was optioned then unsaved data may be recovered in the files: \n\n";
  for (const std::string& name : rescued) text += name + "\n\n";
  session.Tell("Recovery Alert", text + "Use File/Load to check these files.");
}

}  // namespace

void RemoveLeftParts(Session& session) {
  if (!session.settings.files.DiskBackUp) return;
  const TimeStamp now = NowPrecise(session.host.clock);
  for (const std::filesystem::path& folder :
       {session.DataFolder(), RecoveryFolder(session), FolderOfDate(session, now - 1), FolderOfDate(session, now),
        FolderOfDate(session, now + 1)}) {
    RemovePartsIn(session, folder);
  }
}

bool RecoverBackups(Session& session) {
  FileSystem& files = session.host.files;
  RemoveLeftParts(session);
  std::error_code error;  // a failure shows when a copy is made
  // Where the data folder is missing, as that of a disk not mounted, nothing is made in its place.
  if (files.FolderExists(session.DataFolder())) files.MakeFolders(RecoveryFolder(session), error);
  std::filesystem::path left = StoredPath(session, kLeftKey);
  std::vector<std::string> rescued;
  for (const Candidate& candidate : AllCandidates()) {
    if (!IsMarked(session, candidate.marker)) continue;
    const std::filesystem::path backup = PlaceOf(session, candidate);
    const bool safe = Rescue(session, backup, candidate.ending, rescued);
    if (safe) session.store.SaveSetting(Section::Settings, candidate.marker, "OK");
    if (candidate.marker == kLocalMarker) NoteOutcome(session, backup, safe);
    if (backup == left) left.clear();
  }
  if (!left.empty()) NoteOutcome(session, left, Rescue(session, left, kLocalEnding, rescued));
  if (!rescued.empty()) ShowAlert(session, rescued);
  return !rescued.empty();
}

void MarkLocalRun(Session& session, const std::filesystem::path& file) {
  SettingsStore& store = session.store;
  if (IsMarked(session, kLocalMarker) && StoredPath(session, kPlaceKey) == file) return;
  store.BeginBatch();
  store.SaveSetting(Section::Settings, kPlaceKey, file.string());
  store.SaveSetting(Section::Settings, kLocalMarker, "Running");
  store.EndBatch();
}

bool FreeBackupPlace(Session& session, const std::filesystem::path& file, const std::filesystem::path& own) {
  std::filesystem::path left = StoredPath(session, kLeftKey);
  if (!left.empty() && (left == own || MoveAway(session, left))) left.clear();
  if (IsMarked(session, kLocalMarker)) {
    for (const std::filesystem::path& place : {StoredPath(session, kPlaceKey), file}) {
      if (place.empty() || place == own || place == left) continue;
      if (!MoveAway(session, place)) left = place;
    }
  }
  SetLeft(session, left);
  return left != file || !session.host.files.FileExists(file);
}

}  // namespace tarvolt
