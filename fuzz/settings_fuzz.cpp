#include <cstdint>
#include <cstdlib>

#include "config/settings_row.h"
#include "config/settings_table.h"
#include "memory_files.h"

namespace tarvolt {
namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

void RequireSame(const Settings& a, const Settings& b) {
  for (const auto& rows : SettingTable()) {
    for (const SettingRow& row : rows) {
      for (int index = 0; index < row.count; ++index) Require(row.Text(a, index) == row.Text(b, index));
    }
  }
}

}  // namespace
}  // namespace tarvolt

/// Whatever stands in the file of the settings, what was read of it is stored and read again as the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tarvolt;
  MemoryFiles files;
  files.contents["store"] = std::string(reinterpret_cast<const char*>(data), size);
  SettingsStore store(files, "store");
  store.Load();
  Settings settings;
  LoadRegistrySettings(store, {}, "/home", settings);
  SaveRegistrySettings(store, {}, "/home", settings);

  SettingsStore again(files, "store");
  again.OnProblem([](const std::string&) { std::abort(); });
  again.Load();
  Settings reread;
  LoadRegistrySettings(again, {}, "/home", reread);
  RequireSame(settings, reread);
  return 0;
}
