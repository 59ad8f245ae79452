// SPDX-License-Identifier: GPL-3.0-or-later
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

/// What stays the same in the listed name of a sound card: "USB,0" of "USB,0: Receiver, Line". The description behind
/// it may change with the system's drivers. A name without one is the whole of it.
std::string_view LastingName(std::string_view card);

/// The persistent store: one text value a section and key, in one file of the station's home. Names of keys
/// compare without case. A change is written at once: the whole file is written beside the old one, synced and renamed
/// over it, so a crash at any byte leaves the old values or the new ones.
class SettingsStore {
 public:
  /// Called with words when the file cannot be read or written; the values in memory stay in force.
  using Problem = std::function<void(const std::string&)>;

  SettingsStore(FileSystem& files, std::filesystem::path file);

  void OnProblem(Problem problem);

  /// Reads the file. A missing one is an empty store. A line that cannot be understood is reported and left out; a file
  /// that cannot be read at all, or holds not one such line, is set aside under another name, reported, and the store
  /// starts empty. If it cannot even be set aside it is never written over: changes then last for this run alone.
  void Load();

  /// The stored text, or the key's default from the table of settings when it is absent.
  std::string GetSetting(Section section, std::string_view key) const;
  std::string GetSetting(Section section, std::string_view key, std::string_view fallback) const;

  /// The same from the section of a sound card, which bears its LastingName.
  std::string GetCardSetting(std::string_view card, std::string_view key, std::string_view fallback) const;
  void SaveCardSetting(std::string_view card, std::string_view key, std::string_view text);

  /// Stores and writes. Any bytes inside a value are kept. When the write fails the next change tries it again.
  void SaveSetting(Section section, std::string_view key, std::string_view text);

  /// Stores many with one write: the writes between the two calls are held back, EndBatch makes one when anything has
  /// changed. Calls do not nest.
  void BeginBatch();
  void EndBatch();

 private:
  /// Orders names without looking at their case.
  struct NameOrder {
    bool operator()(const std::string& a, const std::string& b) const;
  };
  using Values = std::map<std::string, std::string, NameOrder>;

  std::string Get(const std::string& section, std::string_view key, std::string_view fallback) const;
  void Save(const std::string& section, std::string_view key, std::string_view text);
  void Tell(const std::string& words) const;
  void ReadLines(std::string_view text);
  bool ReadLine(std::string_view line, Values*& section);
  void SetAside(const std::string& reason);
  std::string Render() const;
  void WriteIfChanged();

  FileSystem& files_;
  std::filesystem::path file_;
  Problem problem_;
  std::map<std::string, Values, NameOrder> values_;  ///< sections of other programs' versions are kept as well
  bool batching_ = false;
  bool changed_ = false;  ///< the file lacks something that is in memory
  bool writable_ = true;  ///< false when the file on disk holds what could neither be read nor set aside
};

}  // namespace tarvolt
