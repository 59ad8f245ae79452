// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/settings_table.h"

#include <algorithm>
#include <numeric>

#include "config/home_path.h"
#include "config/settings_row.h"
#include "text/ansi.h"

namespace tarvolt {
namespace {

struct FoundKey {
  const SettingRow& row;
  int index;
};

/// The first row that `accepts` and whose key is `key`.
template <class Accepts>
std::optional<FoundKey> FindKey(std::string_view key, Accepts accepts) {
  for (const auto& rows : SettingTable()) {
    for (const SettingRow& row : rows) {
      if (row.lineOnly || !accepts(row)) continue;
      const int index = row.IndexOf(key);
      if (index >= 0) return FoundKey{row, index};
    }
  }
  return std::nullopt;
}

std::optional<FoundKey> FindMember(std::string_view key) {
  return FindKey(key, [](const SettingRow& row) { return row.HasMember(); });
}

/// Calls `visit(row, index)` for each key that has a member.
template <class Visit>
void ForEachMember(Visit visit) {
  for (const auto& rows : SettingTable()) {
    for (const SettingRow& row : rows) {
      if (row.lineOnly || !row.HasMember()) continue;
      for (int index = 0; index < row.count; ++index) visit(row, index);
    }
  }
}

/// The text of a setting in the store: a value that is its default keeps the default's own spelling, such as "00".
std::string StoredText(const SettingRow& row, const Settings& settings, int index) {
  static const Settings defaults;
  std::string text = row.Text(settings, index);
  return text == row.Text(defaults, index) ? std::string(row.Fallback(index)) : text;
}

bool IsOverridden(const SettingOverrides& overrides, std::string_view key) {
  return std::any_of(overrides.begin(), overrides.end(),
                     [&](const auto& entry) { return EqualNoCase(entry.first, key); });
}

/// Insertions, deletions and exchanges that make one text of the other.
std::size_t EditDistance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> previous(b.size() + 1);
  std::iota(previous.begin(), previous.end(), std::size_t{0});
  for (std::size_t i = 0; i < a.size(); ++i) {
    std::vector<std::size_t> current(b.size() + 1, i + 1);
    for (std::size_t j = 0; j < b.size(); ++j) {
      const std::size_t exchanged = previous[j] + (a[i] == b[j] ? 0 : 1);
      current[j + 1] = std::min({exchanged, previous[j + 1] + 1, current[j] + 1});
    }
    previous = std::move(current);
  }
  return previous.back();
}

}  // namespace

Settings::Settings() {
  ForEachMember([this](const SettingRow& row, int index) { row.Set(*this, index, row.Fallback(index)); });
}

void LoadRegistrySettings(const SettingsStore& store, const SettingOverrides& overrides, const std::string& home,
                          Settings& settings) {
  ForEachMember([&](const SettingRow& row, int index) {
    const std::string text = store.GetSetting(row.section, row.Key(index), row.Fallback(index));
    row.Set(settings, index, row.IsUnderHome() ? PathFromStored(text, home) : text);
  });
  ApplyOverrides(overrides, home, settings);
  LoadCardSettings(store, overrides, home, settings);
}

bool HasSoundCard(const SoundSettings& sound) {
  return !sound.SoundCardName.empty() && sound.SoundCardName != kNoSoundCard;
}

bool HasSoundCard(const Settings& settings) {
  return HasSoundCard(settings.sound);
}

void LoadCardSettings(const SettingsStore& store, const SettingOverrides& overrides, const std::string& home,
                      Settings& settings) {
  const std::string card = settings.sound.SoundCardName;
  const bool hasCard = HasSoundCard(settings);
  ForEachMember([&](const SettingRow& row, int index) {
    if (!row.ofCard) return;
    const std::string key = row.Key(index);
    row.Set(settings, index,
            hasCard ? store.GetCardSetting(card, key, row.Fallback(index))
                    : store.GetSetting(row.section, key, row.Fallback(index)));
  });
  ApplyOverrides(overrides, home, settings);
}

bool IsPathSetting(std::string_view key) {
  constexpr std::string_view kPaths[] = {"DataDirectory", "DefaultLogDirectory", "UDSexe"};
  const auto found = FindMember(key);
  return (found && found->row.IsUnderHome()) ||
         std::find(std::begin(kPaths), std::end(kPaths), key) != std::end(kPaths);
}

void ApplyOverrides(const SettingOverrides& overrides, const std::string& home, Settings& settings) {
  for (const auto& [key, text] : overrides) {
    const auto found = FindMember(key);
    if (found) found->row.Set(settings, found->index, found->row.IsUnderHome() ? PathFromStored(text, home) : text);
  }
}

void SaveRegistrySettings(SettingsStore& store, const SettingOverrides& overrides, const std::string& home,
                          const Settings& settings) {
  store.BeginBatch();
  ForEachMember([&](const SettingRow& row, int index) {
    const std::string key = row.Key(index);
    if (IsOverridden(overrides, key)) return;
    const std::string text = StoredText(row, settings, index);
    if (key == "SoundCardName" && !HasSoundCard(settings)) return;  // the card that is away stays the one chosen
    if (row.ofCard && HasSoundCard(settings)) return store.SaveCardSetting(settings.sound.SoundCardName, key, text);
    store.SaveSetting(row.section, key, row.IsUnderHome() ? StoredFromPath(text, home) : text);
  });
  store.EndBatch();
}

void SaveRegistrySetting(SettingsStore& store, const SettingOverrides& overrides, const Settings& settings,
                         std::string_view key) {
  const auto found = FindMember(key);
  if (!found || found->row.IsUnderHome() || IsOverridden(overrides, key)) return;
  const std::string text = StoredText(found->row, settings, found->index);
  if (found->row.ofCard && HasSoundCard(settings))
    return store.SaveCardSetting(settings.sound.SoundCardName, key, text);
  store.SaveSetting(found->row.section, key, text);
}

std::string DefaultText(Section section, std::string_view key) {
  const auto found = FindKey(key, [section](const SettingRow& row) { return row.section == section; });
  return found ? std::string(found->row.Fallback(found->index)) : std::string();
}

bool IsSettingKey(std::string_view key) {
  return FindMember(key).has_value();
}

std::optional<SettingKind> KindOfSetting(std::string_view key) {
  const auto found = FindMember(key);
  if (!found) return std::nullopt;
  return found->row.Kind();
}

std::string NearestSettingKey(std::string_view key) {
  constexpr std::size_t kLongestKey = 64;
  const std::string wanted = Upper(key.substr(0, kLongestKey));
  std::string nearest;
  std::size_t least = std::string::npos;
  ForEachMember([&](const SettingRow& row, int index) {
    const std::string candidate = row.Key(index);
    const std::size_t distance = EditDistance(wanted, Upper(candidate));
    if (distance >= least) return;
    least = distance;
    nearest = candidate;
  });
  return nearest;
}

bool ApplySetting(Settings& settings, std::string_view key, std::string_view text) {
  const auto found = FindMember(key);
  if (found) found->row.Set(settings, found->index, text);
  return found.has_value();
}

std::optional<std::string> SettingText(const Settings& settings, std::string_view key) {
  const auto found = FindMember(key);
  if (!found) return std::nullopt;
  return found->row.Text(settings, found->index);
}

}  // namespace tarvolt
