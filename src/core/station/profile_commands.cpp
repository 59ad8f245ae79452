// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/station/profile_commands.h"

#include <filesystem>
#include <utility>

#include "config/profile.h"
#include "core/station/observer_notes.h"

namespace tarvolt {
namespace {

constexpr const char* kProfileFilter = "Tarvolt Profile|*.tvp";

}  // namespace

ProfileCommands::ProfileCommands(Session& session, std::function<void()> taken)
    : session_(session), taken_(std::move(taken)) {}

bool ProfileCommands::Load(const std::string& path) {
  const Outcome loaded =
      LoadProfileFile(session_.host.files, path, session_.overrides, session_.home.string(), session_.settings);
  if (loaded) {
    ReadNotes(session_);
    taken_();
    AddProfileFile(session_.recent, path);
    session_.Add2SLog("Loaded Profile " + std::filesystem::path(path).filename().string());
    return true;
  }
  const std::string refusal = "Could not load the profile " + path + ": " + loaded.Words();
  session_.LogAndTell("Tarvolt", refusal);
  return false;
}

void ProfileCommands::mnuLoadProfile() {
  const auto file =
      session_.host.dialogs.AskOpenFile({"Load Profile File", session_.home.string(), "", ".tvp", kProfileFilter});
  if (file) Load(*file);
}

void ProfileCommands::mnuSaveProfile() {
  const auto file =
      session_.host.dialogs.AskSaveFile({"Save Profile File", session_.home.string(), "", ".tvp", kProfileFilter});
  if (!file) return;
  const Outcome saved = SaveProfileFile(session_.host.files, *file, session_.settings);
  if (!saved) session_.LogAndTell("Tarvolt", "Could not save the profile " + *file + ": " + saved.Words());
}

void ProfileCommands::mnuProfile(int place) {
  if (place < 0 || place >= static_cast<int>(session_.recent.profiles.size())) return;
  const std::string path = session_.recent.profiles[place];
  if (!path.empty()) Load(path);
}

}  // namespace tarvolt
