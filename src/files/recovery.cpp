#include "files/recovery.h"

#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include "files/part_file.h"
#include "files/recovery_folder.h"
#include "text/number.h"
#include "timebase/time_base.h"

namespace tarvolt {
namespace {

constexpr int kClientWindows = 9;

/// One backup that a run may have left behind.
struct Candidate {
  std::string marker;    ///< key of the run marker
  std::string fileName;  ///< of the backup
  std::string ending;    ///< of the copy, behind the digits
};

std::vector<Candidate> AllCandidates() {
  std::vector<Candidate> all{{"LocalRun", "localdatabackup.tvd", "local.tvd"}};
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

void TellFailure(Session& session, const std::filesystem::path& backup, const std::error_code& error) {
  const std::string text = "Could Not Copy " + backup.string() + " to the recovery folder: " + error.message();
  session.Add2SLog(" " + text);
  session.Tell("Recovery Alert", text);
}

// Copies one backup, adding the name of the copy to `copied`. False when the disk refused.
bool Rescue(Session& session, const Candidate& candidate, std::vector<std::string>& copied) {
  FileSystem& files = session.host.files;
  const std::filesystem::path backup = session.DataFolder() / candidate.fileName;
  if (!files.FileExists(backup)) return true;
  const std::string digits = FileNameFromDate(NowPrecise(session.host.clock));
  const std::filesystem::path copy = FreeName(files, RecoveryFolder(session) / (digits + candidate.ending));
  const std::error_code error = CopyFile(files, backup, copy);
  if (error) {
    TellFailure(session, backup, error);
    return false;
  }
  copied.push_back(copy.string());
  session.Add2SLog(" Recovered " + copy.string());
  return true;
}

void ShowAlert(Session& session, const std::vector<std::string>& copied) {
  std::string text =
      "Tarvolt was not properly shutdown when last used.\n\n"
      "If Back Up was optioned then unsaved data may be recovered in the files: \n\n";
  for (const std::string& name : copied) text += name + "\n\n";
  session.Tell("Recovery Alert", text + "Use File/Load to check these files.");
}

}  // namespace

bool RecoverBackups(Session& session) {
  std::error_code error;
  session.host.files.MakeFolders(RecoveryFolder(session), error);  // a failure shows when the copy is made
  std::vector<std::string> copied;
  for (const Candidate& candidate : AllCandidates()) {
    if (session.store.GetSetting(Section::Settings, candidate.marker) != "Running") continue;
    if (!Rescue(session, candidate, copied)) continue;
    session.store.SaveSetting(Section::Settings, candidate.marker, "OK");
  }
  if (!copied.empty()) ShowAlert(session, copied);
  return !copied.empty();
}

}  // namespace tarvolt
