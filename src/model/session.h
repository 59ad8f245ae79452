// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string>

#include "config/recent_files.h"
#include "config/settings.h"
#include "config/settings_store.h"
#include "config/settings_table.h"
#include "logs/session_log.h"
#include "platform/host.h"

namespace tarvolt {

/// What all windows of the process share.
struct Session {
  /// Opens nothing yet: the store is read by its Load. What the store has to complain of goes to the session log.
  Session(const Host& hostRecord, std::filesystem::path homeFolder);
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  Host host;
  std::filesystem::path home;  ///< the program folder: everything the station owns is under it
  Settings settings;
  SettingOverrides overrides;  ///< settings of this run alone
  SettingsStore store;
  RecentFiles recent;
  SessionLog log;
  std::string notes;  ///< the observer's notes, free text, put into every file

  /// One session log line.
  void Add2SLog(std::string_view text) { log.Add2SLog(text); }

  /// Shows a message where a person may be looking: only with ShowMsgBox. Never waits.
  void Tell(const std::string& title, const std::string& text);

  /// Both with one text.
  void LogAndTell(const std::string& title, const std::string& text) {
    Add2SLog(text);
    Tell(title, text);
  }

  /// Sets an override for the rest of this run, replacing one of the same key.
  void Override(std::string_view key, std::string_view value);
  bool IsOverridden(std::string_view key) const;

  /// The folder of the data files, without trailing separators; under home while the setting is empty.
  std::filesystem::path DataFolder() const;
};

}  // namespace tarvolt
