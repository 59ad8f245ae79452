// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <string>
#include <string_view>

#include "config/settings_row.h"
#include "config/settings_table.h"
#include "require.h"
#include "sim/sim_disk.h"

namespace tarvolt {
namespace {

void RequireSame(const Settings& a, const Settings& b) {
  for (const auto& rows : SettingTable()) {
    for (const SettingRow& row : rows) {
      for (int index = 0; index < row.count; ++index) Require(row.Text(a, index) == row.Text(b, index));
    }
  }
}

// Every key of the table there and back takes a thousand times as long as reading the file: one input in fifty.
bool IsChosen(std::string_view bytes) {
  return std::hash<std::string_view>()(bytes) % 50 == 0;
}

void RequireSettingsKept(SimDisk& files, SettingsStore& store) {
  Settings settings;
  LoadRegistrySettings(store, {}, "/home", settings);
  SaveRegistrySettings(store, {}, "/home", settings);
  SettingsStore again(files, "store");
  again.OnProblem([](const std::string&) { std::abort(); });
  again.Load();
  Settings reread;
  LoadRegistrySettings(again, {}, "/home", reread);
  RequireSame(settings, reread);
}

}  // namespace
}  // namespace tarvolt

/// Whatever stands in the file of the settings, what was read of it is stored and read again as the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tarvolt;
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  SimDisk files(1);
  files.Put("store", bytes);
  SettingsStore store(files, "store");
  store.Load();
  store.SaveSetting(Section::Settings, "LocalName", bytes);
  const auto written = files.Contents("store");

  SettingsStore again(files, "store");
  again.OnProblem([](const std::string&) { std::abort(); });
  again.Load();
  Require(again.GetSetting(Section::Settings, "LocalName") == bytes);
  again.SaveSetting(Section::Settings, "LocalName", bytes);
  Require(files.Contents("store") == written);
  if (IsChosen(bytes)) RequireSettingsKept(files, store);
  return 0;
}
