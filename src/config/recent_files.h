// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "config/settings_store.h"

namespace tarvolt {

/// The recent lists: the newest name first; a name already in a list moves to its front.
struct RecentFiles {
  std::array<std::string, 5> saved;
  std::array<std::string, 5> loaded;
  std::array<std::string, 4> profiles;
};

void GetRecentFiles(const SettingsStore& store, RecentFiles& recent);    ///< reads saved and loaded
void SaveRecentFiles(SettingsStore& store, const RecentFiles& recent);   ///< writes saved and loaded
void GetProfileFiles(const SettingsStore& store, RecentFiles& recent);   ///< reads the four profiles
void SaveProfileFiles(SettingsStore& store, const RecentFiles& recent);  ///< writes the four profiles

void AddRecentSaved(RecentFiles& recent, std::string_view name);
void AddRecentLoaded(RecentFiles& recent, std::string_view name);
void AddProfileFile(RecentFiles& recent, std::string_view path);

}  // namespace tarvolt
