#pragma once

#include <algorithm>
#include <map>
#include <string>

#include "platform/file_system.h"

namespace tarvolt {

/// Files in memory that never fail, for targets that feed a reader of files.
class MemoryFiles final : public FileSystem {
 public:
  std::map<std::string, std::string> contents;  ///< by full name

  std::unique_ptr<File> Open(const std::filesystem::path& path, OpenMode mode, std::error_code& error) override {
    error.clear();
    const bool mustExist = mode != OpenMode::Create && mode != OpenMode::Append;
    if (mustExist && !FileExists(path)) {
      error = std::make_error_code(std::errc::no_such_file_or_directory);
      return nullptr;
    }
    std::string& bytes = contents[path.string()];
    if (mode == OpenMode::Create) bytes.clear();
    return std::make_unique<MemoryFile>(bytes, mode == OpenMode::Append || mode == OpenMode::AppendExisting);
  }
  bool FileExists(const std::filesystem::path& path) override { return contents.contains(path.string()); }
  bool FolderExists(const std::filesystem::path&) override { return true; }
  void MakeFolders(const std::filesystem::path&, std::error_code& error) override { error.clear(); }
  void Rename(const std::filesystem::path& from, const std::filesystem::path& to, std::error_code& error) override {
    error.clear();
    contents[to.string()] = contents[from.string()];
    contents.erase(from.string());
  }
  void Remove(const std::filesystem::path& path, std::error_code& error) override {
    error.clear();
    contents.erase(path.string());
  }
  std::vector<std::filesystem::path> ListFiles(const std::filesystem::path&, std::error_code& error) override {
    error.clear();
    return {};
  }

 private:
  class MemoryFile final : public File {
   public:
    MemoryFile(std::string& bytes, bool append) : bytes_(bytes), append_(append) {}

    std::size_t Read(void* bytes, std::size_t size, std::error_code& error) override {
      error.clear();
      const std::size_t count = std::min(size, bytes_.size() - std::min(position_, bytes_.size()));
      bytes_.copy(static_cast<char*>(bytes), count, std::min(position_, bytes_.size()));
      position_ += count;
      return count;
    }
    void Write(std::string_view bytes, std::error_code& error) override {
      error.clear();
      if (append_) position_ = bytes_.size();
      if (bytes_.size() < position_ + bytes.size()) bytes_.resize(position_ + bytes.size());
      bytes_.replace(position_, bytes.size(), bytes);
      position_ += bytes.size();
    }
    void Seek(std::uint64_t position, std::error_code& error) override {
      error.clear();
      position_ = static_cast<std::size_t>(position);
    }
    std::uint64_t Size(std::error_code& error) override {
      error.clear();
      return bytes_.size();
    }
    void Truncate(std::uint64_t size, std::error_code& error) override {
      error.clear();
      bytes_.resize(static_cast<std::size_t>(size));
    }
    void Sync(std::error_code& error) override { error.clear(); }

   private:
    std::string& bytes_;
    bool append_;
    std::size_t position_ = 0;
  };
};

}  // namespace tarvolt
