// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/settings_row.h"

#include "text/ansi.h"
#include "text/number.h"

namespace tarvolt {
namespace {

// Only the exact word is true, as everywhere a stored boolean is compared.
void Read(bool& value, std::string_view text, bool cast) {
  value = text == "True" || (cast && (EqualNoCase(text, "True") || Val(text) != 0));
}

void Read(std::int16_t& value, std::string_view text, bool) {
  value = RoundToInt16(Val(text));
}

void Read(std::int32_t& value, std::string_view text, bool) {
  value = ValLong(text);
}

void Read(double& value, std::string_view text, bool) {
  value = Val(text);
}

void Read(std::string& value, std::string_view text, bool) {
  value = text;
}

std::string Write(bool value) {
  return value ? "True" : "False";
}

std::string Write(std::int16_t value) {
  return NumberText(std::int64_t{value});
}

std::string Write(std::int32_t value) {
  return NumberText(std::int64_t{value});
}

std::string Write(double value) {
  return NumberText(value);
}

std::string Write(const std::string& value) {
  return value;
}

template <class T>
T& At(T& value, int) {
  return value;
}

template <class T, std::size_t size>
T& At(std::array<T, size>& values, int index) {
  return values.at(static_cast<std::size_t>(index));
}

template <class T, std::size_t size>
const T& At(const std::array<T, size>& values, int index) {
  return values.at(static_cast<std::size_t>(index));
}

template <class T>
constexpr SettingKind KindOf(const T&) {
  if constexpr (std::is_same_v<T, bool>) return SettingKind::Flag;
  return std::is_arithmetic_v<T> ? SettingKind::Number : SettingKind::Text;
}

template <class T, std::size_t size>
constexpr SettingKind KindOf(const std::array<T, size>&) {
  return KindOf(T{});
}

template <class Access>
inline constexpr bool kIsMember = !std::is_same_v<Access, std::monostate>;

std::string WithNumber(std::string_view name, int number) {
  return ReplaceAll(name, "#", NumberText(std::int64_t{number}));
}

}  // namespace

std::string SettingRow::Key(int index) const {
  return WithNumber(key, firstNumber + index);
}

std::string SettingRow::ProfileKey(int index) const {
  return WithNumber(profileKey.empty() ? key : profileKey, firstNumber + index);
}

std::string_view SettingRow::Fallback(int index) const {
  if (!IsIndexed()) return fallback;
  std::string_view rest = fallback;
  std::size_t bar = rest.find('|');
  for (int i = 0; i < index && bar != std::string_view::npos; ++i) {
    rest.remove_prefix(bar + 1);
    bar = rest.find('|');
  }
  return rest.substr(0, bar);
}

int SettingRow::IndexOf(std::string_view name) const {
  if (!IsIndexed()) return EqualNoCase(name, key) ? 0 : -1;
  for (int index = 0; index < count; ++index) {
    if (EqualNoCase(name, Key(index))) return index;
  }
  return -1;
}

SettingKind SettingRow::Kind() const {
  return std::visit(
      [](const auto& access) {
        if constexpr (kIsMember<std::decay_t<decltype(access)>>) {
          return KindOf(std::decay_t<decltype(access.read(std::declval<const Settings&>()))>{});
        } else {
          return SettingKind::Text;
        }
      },
      member);
}

void SettingRow::Set(Settings& settings, int index, std::string_view text) const {
  std::visit(
      [&](const auto& access) {
        if constexpr (kIsMember<std::decay_t<decltype(access)>>) Read(At(access.write(settings), index), text, cast);
      },
      member);
}

std::string SettingRow::Text(const Settings& settings, int index) const {
  return std::visit(
      [&](const auto& access) -> std::string {
        if constexpr (kIsMember<std::decay_t<decltype(access)>>) {
          return Write(At(access.read(settings), index));
        } else {
          return {};
        }
      },
      member);
}

}  // namespace tarvolt
