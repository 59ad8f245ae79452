#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "config/profile.h"
#include "memory_files.h"

namespace tarvolt {
namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

/// Saves and gives the number of lines, each of which ends as a setting does.
std::ptrdiff_t SavedLines(MemoryFiles& files, const Settings& settings) {
  std::string problem;
  Require(SaveProfileFile(files, "saved", settings, problem));
  const std::string& text = files.contents["saved"];
  for (std::size_t end = text.find('\n'); end != std::string::npos; end = text.find('\n', end + 1)) {
    Require(end >= 2 && text[end - 1] == '\r' && text[end - 2] == ';');
  }
  return std::count(text.begin(), text.end(), '\n');
}

}  // namespace
}  // namespace tarvolt

/// Whatever stands in a profile, it loads, and no value of it makes lines of its own in a profile saved from it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tarvolt;
  MemoryFiles files;
  files.contents["loaded"] = std::string(reinterpret_cast<const char*>(data), size);
  std::string problem;
  Settings settings;
  const std::ptrdiff_t lines = SavedLines(files, settings);
  Require(LoadProfileFile(files, "loaded", {}, "/home", settings, problem));
  Require(SavedLines(files, settings) == lines);
  Require(LoadProfileFile(files, "saved", {}, "/home", settings, problem));
  return 0;
}
