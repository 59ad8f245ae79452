#include "host/disk_path.h"

#include <cstddef>
#include <string_view>

#include "text/ansi.h"

namespace tarvolt {
namespace {

struct LeadByte {
  std::size_t following = 0;
  unsigned lowestNext = 0x80;  // the bounds of the second byte shut out overlong forms, surrogates and overflow
  unsigned highestNext = 0xBF;
};

std::optional<LeadByte> ReadLeadByte(unsigned byte) {
  if (byte < 0x80) return LeadByte{0};
  if (byte >= 0xC2 && byte <= 0xDF) return LeadByte{1};
  if (byte == 0xE0) return LeadByte{2, 0xA0, 0xBF};
  if (byte == 0xED) return LeadByte{2, 0x80, 0x9F};
  if (byte >= 0xE1 && byte <= 0xEF) return LeadByte{2};
  if (byte == 0xF0) return LeadByte{3, 0x90, 0xBF};
  if (byte >= 0xF1 && byte <= 0xF3) return LeadByte{3};
  if (byte == 0xF4) return LeadByte{3, 0x80, 0x8F};
  return std::nullopt;
}

bool IsUtf8(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size()) {
    const auto lead = ReadLeadByte(static_cast<unsigned char>(text[i++]));
    if (!lead || lead->following > text.size() - i) return false;
    for (std::size_t k = 0; k < lead->following; ++k) {
      const auto byte = static_cast<unsigned char>(text[i++]);
      if (byte < (k == 0 ? lead->lowestNext : 0x80) || byte > (k == 0 ? lead->highestNext : 0xBF)) return false;
    }
  }
  return true;
}

std::string DiskName(const std::string& name) {
  return IsUtf8(name) ? name : Utf8FromAnsi(name);
}

}  // namespace

std::filesystem::path DiskPath(const std::filesystem::path& path) {
  if (IsUtf8(path.native())) return path;
  std::filesystem::path result;
  for (const auto& part : path) result /= DiskName(part.native());
  return result;
}

std::optional<std::string> NameFromDisk(const std::string& diskName) {
  std::string name = AnsiFromUtf8(diskName);
  if (DiskName(name) == diskName) return name;
  if (IsUtf8(diskName)) return diskName;
  return std::nullopt;
}

}  // namespace tarvolt
