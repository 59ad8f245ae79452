#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "platform/file_system.h"

namespace tarvolt {

/// The six sections of the store.
enum class Section { Settings, Colors, TickGrid, Recent, LogEntries, Export };

/// The persistent store: one text value a section and key, in one file of the station's home. Names of keys
/// compare without case. A change is written at once: the whole file is written beside the old one, synced and renamed
/// over it, so a crash at any byte leaves the old values or the new ones.
class SettingsStore {
 public:
  /// Called with words when the file cannot be read or written; the values in memory stay in force.
  using Problem = std::function<void(const std::string&)>;

  SettingsStore(FileSystem& files, std::filesystem::path file);

  void OnProblem(Problem problem);

  /// Reads the file. A missing one is an empty store. A line that cannot be understood is told and left out; a
  /// file that cannot be read at all is set aside under another name, told, and the store starts empty.
  void Load();

  /// The stored text, or the key's default from the table of settings when it is absent.
  std::string GetSetting(Section section, std::string_view key) const;
  std::string GetSetting(Section section, std::string_view key, std::string_view fallback) const;

  /// Stores and writes. Line ends inside a value are kept.
  void SaveSetting(Section section, std::string_view key, std::string_view text);

  /// Stores many with one write: the writes between the two calls are held back. Calls do not nest.
  void BeginBatch();
  void EndBatch();

 private:
  std::string Render() const;
  void WriteFile();

  FileSystem& files_;
  std::filesystem::path file_;
  Problem problem_;
  std::map<std::string, std::map<std::string, std::string>> values_;
  bool batching_ = false;
  bool changed_ = false;
};

}  // namespace tarvolt
