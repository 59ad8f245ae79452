// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <variant>

#include "config/settings.h"
#include "config/settings_store.h"
#include "config/settings_table.h"

namespace tarvolt {

/// How a member of Settings is read and written.
template <class T>
struct MemberAccess {
  const T& (*read)(const Settings&);
  T& (*write)(Settings&);
  bool operator==(const MemberAccess&) const = default;
};

/// Where a setting is kept in memory; nothing for a key that only the store holds.
using SettingMember =
    std::variant<std::monostate, MemberAccess<bool>, MemberAccess<std::int16_t>, MemberAccess<std::int32_t>,
                 MemberAccess<double>, MemberAccess<std::string>, MemberAccess<std::array<bool, kChannels>>,
                 MemberAccess<std::array<std::int16_t, kChannels>>, MemberAccess<std::array<std::int32_t, kChannels>>,
                 MemberAccess<std::array<std::string, kChannels>>, MemberAccess<std::array<double, kChannels + 1>>,
                 MemberAccess<std::array<std::int16_t, kMixerInputs>>>;

/// The group of settings that has the type of `member`'s class; each type of group stands in Settings once.
template <class Group>
constexpr Group& GroupOf(Settings& s) {
  return std::get<Group&>(std::tie(s.channels, s.timing, s.place, s.station, s.files, s.observerLog, s.uds, s.lpt,
                                   s.sound, s.card, s.wav, s.chart, s.net, s.images, s.program));
}
template <class Group>
constexpr const Group& GroupOf(const Settings& settings) {
  return GroupOf<Group>(const_cast<Settings&>(settings));
}

/// The access to a member such as &TimingSettings::SampleRate.
template <class Group, class T>
constexpr auto AccessOf(auto member, T Group::*) {
  return MemberAccess<T>{
      [](const Settings& settings) -> const T& { return GroupOf<Group>(settings).*decltype(member)::value; },
      [](Settings& settings) -> T& { return GroupOf<Group>(settings).*decltype(member)::value; }};
}

/// Numbers that the members of an array, and so its keys, can have.
inline constexpr std::size_t CountOf(const auto&) {
  return 0;
}
template <class T, std::size_t size>
constexpr std::size_t CountOf(const MemberAccess<std::array<T, size>>&) {
  return size;
}

/// One row of the table of settings: all that is known of a key.
struct SettingRow {
  std::string_view key;  ///< as the store spells it; "#" stands where an indexed key has its number
  std::string_view
      fallback;  ///< the default; with an indexed key "|" parts those of its numbers, the last for the rest
  SettingMember member;
  Section section = Section::Settings;
  std::string_view profileKey{};  ///< spelling in a profile when it differs
  std::string_view fixedLine{};   ///< the whole line that a profile gets, whatever the value is
  int firstNumber = 0;
  int count = 1;          ///< how many numbers an indexed key has, else 1
  bool cast = false;      ///< a boolean that also takes a number, 0 for false
  bool ofCard = false;    ///< kept for each sound card by itself
  bool lineOnly = false;  ///< a further line of a profile for a setting with a row of its own; never read

  /// The same row in another section than Settings.
  constexpr SettingRow In(Section other) const {
    SettingRow row = *this;
    row.section = other;
    return row;
  }

  /// The same row with its spelling in profiles.
  constexpr SettingRow As(std::string_view spelling) const {
    SettingRow row = *this;
    row.profileKey = spelling;
    return row;
  }

  /// The same row with a fixed line in profiles.
  constexpr SettingRow WrittenAs(std::string_view line) const {
    SettingRow row = *this;
    row.fixedLine = line;
    return row;
  }

  /// The same row for an indexed key that has no member.
  constexpr SettingRow Numbered(int first, int numbers) const {
    SettingRow row = *this;
    row.firstNumber = first;
    row.count = numbers;
    return row;
  }

  /// The same row for a boolean that also takes a number.
  constexpr SettingRow Cast() const {
    SettingRow row = *this;
    row.cast = true;
    return row;
  }

  /// The same row for a setting that each sound card has of its own.
  constexpr SettingRow OfCard() const {
    SettingRow row = *this;
    row.ofCard = true;
    return row;
  }

  /// What the member's values are; Text for a row without one.
  SettingKind Kind() const;

  bool HasMember() const { return !std::holds_alternative<std::monostate>(member); }
  bool IsIndexed() const { return key.find('#') != std::string_view::npos; }

  /// A path whose default begins with a backslash lies under the station's home as long as it begins with one.
  bool IsUnderHome() const { return fallback.starts_with('\\'); }

  /// The key with its number; `index` counts from 0.
  std::string Key(int index) const;

  /// The key as a profile spells it.
  std::string ProfileKey(int index) const;

  /// The default text.
  std::string_view Fallback(int index) const;

  /// The index of the key that `name` (case not looked at) spells, -1 when it spells none of this row.
  int IndexOf(std::string_view name) const;

  /// Sets the member from text by the lenient conversions. A row without a member does nothing.
  void Set(Settings& settings, int index, std::string_view text) const;

  /// The member as it is stored; empty for a row without one.
  std::string Text(const Settings& settings, int index) const;
};

/// A row of the section Settings for a key that only the store holds.
constexpr SettingRow Row(std::string_view key, std::string_view fallback) {
  return {.key = key, .fallback = fallback, .member = {}};
}

/// A row of the section Settings for a member such as &TimingSettings::SampleRate.
template <auto member>
constexpr SettingRow Row(std::string_view key, std::string_view fallback) {
  const auto access = AccessOf(std::integral_constant<decltype(member), member>{}, member);
  SettingRow row{.key = key, .fallback = fallback, .member = access};
  if (CountOf(access) > 0) row.count = static_cast<int>(CountOf(access));
  return row;
}

/// A further line in a profile for a setting that has its own row.
template <auto member>
constexpr SettingRow WrittenAgain(std::string_view profileKey) {
  SettingRow row = Row<member>(profileKey, {});
  row.lineOnly = true;
  return row;
}

/// The rows that make a profile, in the order of its lines.
std::span<const SettingRow> ProfileRows();

/// The other rows of the section Settings.
std::span<const SettingRow> StationRows();

/// The rows of the other sections.
std::span<const SettingRow> SectionRows();

/// The whole table.
inline std::array<std::span<const SettingRow>, 3> SettingTable() {
  return {ProfileRows(), StationRows(), SectionRows()};
}

}  // namespace tarvolt
