// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/session.h"

#include <algorithm>
#include <utility>

#include "text/ansi.h"

namespace tarvolt {

Session::Session(const Host& hostRecord, std::filesystem::path homeFolder)
    : host(hostRecord),
      home(std::move(homeFolder)),
      store(host.files, home / "settings.ini"),
      log(host.clock, host.files, settings) {
  store.OnProblem([this](const std::string& words) { log.Add2SLog(words); });
}

void Session::Tell(const std::string& title, const std::string& text) {
  if (settings.program.ShowMsgBox) host.dialogs.ShowMessage(title, text);
}

std::filesystem::path Session::DataFolder() const {
  if (settings.files.DataDirectory.empty()) return home / "Data";
  const std::size_t last = settings.files.DataDirectory.find_last_not_of("\\/");
  if (last == std::string::npos) return settings.files.DataDirectory;  // the root itself
  return settings.files.DataDirectory.substr(0, last + 1);
}

void Session::Override(std::string_view key, std::string_view value) {
  std::erase_if(overrides, [&](const auto& entry) { return EqualNoCase(entry.first, key); });
  overrides.emplace_back(key, value);
  ApplySetting(settings, key, value);
}

bool Session::IsOverridden(std::string_view key) const {
  return std::any_of(overrides.begin(), overrides.end(),
                     [&](const auto& entry) { return EqualNoCase(entry.first, key); });
}

}  // namespace tarvolt
