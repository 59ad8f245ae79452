// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/recent_files.h"

#include <algorithm>

#include "text/number.h"

namespace tarvolt {
namespace {

std::string NumberedKey(std::string_view name, std::size_t index) {
  return std::string(name) + NumberText(static_cast<std::int64_t>(index + 1));
}

template <std::size_t size>
void Get(const SettingsStore& store, std::string_view name, std::array<std::string, size>& list) {
  for (std::size_t i = 0; i < size; ++i) list[i] = store.GetSetting(Section::Recent, NumberedKey(name, i));
}

template <std::size_t size>
void Save(SettingsStore& store, std::string_view name, const std::array<std::string, size>& list) {
  for (std::size_t i = 0; i < size; ++i) store.SaveSetting(Section::Recent, NumberedKey(name, i), list[i]);
}

template <std::size_t size>
void PutFirst(std::array<std::string, size>& list, std::string_view name) {
  if (name.empty()) return;
  auto place = std::find(list.begin(), list.end(), name);
  if (place == list.end()) --place;  // a new name drops the last
  *place = name;
  std::rotate(list.begin(), place, place + 1);
}

}  // namespace

void GetRecentFiles(const SettingsStore& store, RecentFiles& recent) {
  Get(store, "RecentSaved", recent.saved);
  Get(store, "RecentLoaded", recent.loaded);
}

void SaveRecentFiles(SettingsStore& store, const RecentFiles& recent) {
  store.BeginBatch();
  Save(store, "RecentSaved", recent.saved);
  Save(store, "RecentLoaded", recent.loaded);
  store.EndBatch();
}

void GetProfileFiles(const SettingsStore& store, RecentFiles& recent) {
  Get(store, "ProfileFile", recent.profiles);
}

void SaveProfileFiles(SettingsStore& store, const RecentFiles& recent) {
  store.BeginBatch();
  Save(store, "ProfileFile", recent.profiles);
  store.EndBatch();
}

void AddRecentSaved(RecentFiles& recent, std::string_view name) {
  PutFirst(recent.saved, name);
}

void AddRecentLoaded(RecentFiles& recent, std::string_view name) {
  PutFirst(recent.loaded, name);
}

void AddProfileFile(RecentFiles& recent, std::string_view path) {
  PutFirst(recent.profiles, path);
}

}  // namespace tarvolt
