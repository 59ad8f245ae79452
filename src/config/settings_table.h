// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "config/settings.h"
#include "config/settings_store.h"

namespace tarvolt {

/// Overrides for this run, key and text, as given on the command line. They are laid over every load and never stored.
using SettingOverrides = std::vector<std::pair<std::string, std::string>>;

/// Fills `settings` from the store, then lays the overrides on top. A bad value gives what the lenient conversions
/// give. `home` is put in front of a path that begins with one backslash, where the default of its key does.
void LoadRegistrySettings(const SettingsStore& store, const SettingOverrides& overrides, const std::string& home,
                          Settings& settings);

/// Fills what each sound card has of its own from the section of SoundCardName, then lays the overrides on top; to be
/// called whenever that name has changed. Without a card the section is Settings.
void LoadCardSettings(const SettingsStore& store, const SettingOverrides& overrides, const std::string& home,
                      Settings& settings);

/// True when SoundCardName names a card.
bool HasSoundCard(const Settings& settings);
bool HasSoundCard(const SoundSettings& sound);

/// True for a setting that names a file, a folder or a program.
bool IsPathSetting(std::string_view key);

/// Lays the overrides over `settings`. Unknown keys are passed over: they are refused where they are given.
void ApplyOverrides(const SettingOverrides& overrides, const std::string& home, Settings& settings);

/// Writes the settings back in the same form with one write of the file, paths under `home` relative to it. Overridden
/// keys are left as they are stored.
void SaveRegistrySettings(SettingsStore& store, const SettingOverrides& overrides, const std::string& home,
                          const Settings& settings);

/// Writes one member back in the same way; does nothing for a key that is unknown, overridden or a
/// path.
void SaveRegistrySetting(SettingsStore& store, const SettingOverrides& overrides, const Settings& settings,
                         std::string_view key);

/// The default text of a key, with its channel number when it is an indexed one; empty when it has none.
std::string DefaultText(Section section, std::string_view key);

/// True when `key` (case not looked at) is a setting that can be overridden for a run.
bool IsSettingKey(std::string_view key);

/// What the values of a setting are.
enum class SettingKind { Flag, Number, Text };

/// The kind of a setting; nothing when the key is unknown or has no member.
std::optional<SettingKind> KindOfSetting(std::string_view key);

/// The known key whose spelling is nearest to `key`, for the error about an unknown one.
std::string NearestSettingKey(std::string_view key);

/// Sets one member from text by its key, a path as it stands; false when the key is unknown or has no member.
bool ApplySetting(Settings& settings, std::string_view key, std::string_view text);

/// The text of one member as it would be stored; nothing when the key is unknown or has no member.
std::optional<std::string> SettingText(const Settings& settings, std::string_view key);

}  // namespace tarvolt
