// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <utility>

#include "platform/file_system.h"

namespace tarvolt::bench {

/// A disk on which one file costs nothing: of what is written to it only the length is kept. All else is the disk
/// below.
class WeightlessDisk final : public FileSystem {
 public:
  WeightlessDisk(FileSystem& below, std::string fileName) : below_(below), fileName_(std::move(fileName)) {}

  /// Bytes that the weightless file would hold.
  std::uint64_t Appended() const { return size_; }

  std::unique_ptr<File> Open(const std::filesystem::path& path, OpenMode mode, std::error_code& error) override {
    if (!path.native().ends_with(fileName_)) return below_.Open(path, mode, error);
    error.clear();
    if (mode == OpenMode::Create) size_ = 0;
    return std::make_unique<WeightlessFile>(size_);
  }
  bool FileExists(const std::filesystem::path& path) override { return below_.FileExists(path); }
  bool FolderExists(const std::filesystem::path& path) override { return below_.FolderExists(path); }
  void MakeFolders(const std::filesystem::path& path, std::error_code& error) override {
    below_.MakeFolders(path, error);
  }
  void Rename(const std::filesystem::path& from, const std::filesystem::path& to, std::error_code& error) override {
    below_.Rename(from, to, error);
  }
  void Remove(const std::filesystem::path& path, std::error_code& error) override { below_.Remove(path, error); }
  std::vector<std::filesystem::path> ListFiles(const std::filesystem::path& folder, std::error_code& error) override {
    return below_.ListFiles(folder, error);
  }

 private:
  class WeightlessFile final : public File {
   public:
    explicit WeightlessFile(std::uint64_t& size) : size_(size) {}
    std::size_t Read(void*, std::size_t, std::error_code& error) override {
      error.clear();
      return 0;
    }
    void Write(std::string_view bytes, std::error_code& error) override {
      error.clear();
      size_ += bytes.size();
    }
    void Seek(std::uint64_t, std::error_code& error) override { error.clear(); }
    std::uint64_t Size(std::error_code& error) override {
      error.clear();
      return size_;
    }
    void Truncate(std::uint64_t size, std::error_code& error) override {
      error.clear();
      size_ = size;
    }
    void Sync(std::error_code& error) override { error.clear(); }

   private:
    std::uint64_t& size_;
  };

  FileSystem& below_;
  std::string fileName_;
  std::uint64_t size_ = 0;
};

}  // namespace tarvolt::bench
