// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "config/profile.h"
#include "require.h"
#include "sim/sim_disk.h"

namespace tarvolt {
namespace {

/// Saves and gives the number of lines, each of which ends as a setting does.
std::ptrdiff_t SavedLines(SimDisk& files, const Settings& settings) {
  Require(static_cast<bool>(SaveProfileFile(files, "saved", settings)));
  const std::string text = files.Contents("saved").value();
  for (std::size_t end = text.find('\n'); end != std::string::npos; end = text.find('\n', end + 1)) {
    Require(end >= 2 && text[end - 1] == '\r' && text[end - 2] == ';');
  }
  return std::count(text.begin(), text.end(), '\n');
}

// All keys of a profile there and back take a thousand times as long as one look-up: one input in fifty.
bool IsChosen(std::string_view bytes) {
  return std::hash<std::string_view>()(bytes) % 50 == 0;
}

std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines;
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    lines.push_back(text.substr(begin, end - begin));
    begin = end + 1;
  }
  return lines;
}

void RequireLookUp(const std::vector<std::string>& lines, const std::string& key) {
  const std::string value = GetProfileValue(lines, key, "fallback");
  Require(!value.empty());
  const auto holds = [&](const std::string& line) { return line.find(value) != std::string::npos; };
  Require(value == "fallback" || std::any_of(lines.begin(), lines.end(), holds));
}

void RequireWholeProfile(const std::string& text) {
  SimDisk files(1);
  files.Put("loaded", text);
  Settings settings;
  const std::ptrdiff_t lines = SavedLines(files, settings);
  const bool isProfile = static_cast<bool>(LoadProfileFile(files, "loaded", {}, "/home", settings));
  Require(isProfile || settings.timing.vAvg == Settings().timing.vAvg);
  Require(SavedLines(files, settings) == lines);
  Require(static_cast<bool>(LoadProfileFile(files, "saved", {}, "/home", settings)));
}

}  // namespace
}  // namespace tarvolt

/// Whatever stands in a profile, it loads or changes nothing, and no value of it makes lines of its own in a profile
/// saved from it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tarvolt;
  const std::string text(reinterpret_cast<const char*>(data), size);
  const std::vector<std::string> lines = LinesOf(text);
  for (const char* key : {"vAvg", "UDSip", "Channel0Label", "LocalName"}) RequireLookUp(lines, key);
  if (IsChosen(text)) RequireWholeProfile(text);
  return 0;
}
