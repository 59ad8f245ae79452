// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/text_file.h"

namespace tarvolt {
namespace {

constexpr const char* kTooLarge = "it is over 16 MiB";

}  // namespace

std::optional<std::string> ReadTextFile(FileSystem& files, const std::filesystem::path& path, std::string& problem) {
  std::error_code error;
  const auto file = files.Open(path, OpenMode::Read, error);
  const std::uint64_t size = file ? file->Size(error) : 0;
  if (!error && size > kTextFileLimit) {
    problem = kTooLarge;
    return std::nullopt;
  }
  std::string text(static_cast<std::size_t>(size), '\0');
  if (!error) text.resize(file->Read(text.data(), text.size(), error));
  if (!error) return text;
  problem = error.message();
  return std::nullopt;
}

bool ReplaceTextFile(FileSystem& files, const std::filesystem::path& path, std::string_view text,
                     std::string& problem) {
  if (text.size() > kTextFileLimit) {
    problem = kTooLarge;
    return false;
  }
  std::filesystem::path beside = path;
  beside += ".new";
  std::error_code error;
  {
    const auto file = files.Open(beside, OpenMode::Create, error);
    if (!error) file->Write(text, error);
    if (!error) file->Sync(error);
  }
  if (!error) files.Rename(beside, path, error);
  if (!error) return true;
  problem = error.message();
  files.Remove(beside, error);  // gives the room back on a full disk
  return false;
}

std::string_view TakeLine(std::string_view& text) {
  const std::size_t end = text.find('\n');
  std::string_view line = text.substr(0, end);
  if (line.ends_with('\r')) line.remove_suffix(1);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  return line;
}

}  // namespace tarvolt
