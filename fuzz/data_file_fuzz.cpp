// Any bytes as a data file: opened, read through, and loaded into columns as a chart would be.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "files/format/data_file_reader.h"

namespace {

using namespace tarvolt;

/// One file, which stays in memory.
class OneFile final : public File {
 public:
  explicit OneFile(std::string_view bytes) : bytes_(bytes) {}

  std::size_t Read(void* to, std::size_t size, std::error_code& error) override {
    error.clear();
    if (position_ >= bytes_.size()) return 0;
    const std::string_view piece = bytes_.substr(position_, size);
    std::memcpy(to, piece.data(), piece.size());
    position_ += piece.size();
    return piece.size();
  }
  void Write(std::string_view, std::error_code& error) override { Refuse(error); }
  void Seek(std::uint64_t position, std::error_code& error) override {
    error.clear();
    position_ = position;
  }
  std::uint64_t Size(std::error_code& error) override {
    error.clear();
    return bytes_.size();
  }
  void Truncate(std::uint64_t, std::error_code& error) override { Refuse(error); }
  void Sync(std::error_code& error) override { Refuse(error); }

 private:
  static void Refuse(std::error_code& error) { error = std::make_error_code(std::errc::read_only_file_system); }

  std::string_view bytes_;
  std::size_t position_ = 0;
};

class OneFileDisk final : public FileSystem {
 public:
  explicit OneFileDisk(std::string_view bytes) : bytes_(bytes) {}

  std::unique_ptr<File> Open(const std::filesystem::path&, OpenMode, std::error_code& error) override {
    error.clear();
    return std::make_unique<OneFile>(bytes_);
  }
  bool FileExists(const std::filesystem::path&) override { return true; }
  bool FolderExists(const std::filesystem::path&) override { return false; }
  void MakeFolders(const std::filesystem::path&, std::error_code&) override {}
  void Rename(const std::filesystem::path&, const std::filesystem::path&, std::error_code&) override {}
  void Remove(const std::filesystem::path&, std::error_code&) override {}
  std::vector<std::filesystem::path> ListFiles(const std::filesystem::path&, std::error_code&) override { return {}; }

 private:
  std::string_view bytes_;
};

void Require(bool holds) {
  if (!holds) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  OneFileDisk disk(std::string_view(reinterpret_cast<const char*>(data), size));
  DataFileReader reader(disk);
  if (reader.Open("any.tvd") != OpenResult::Ok) return 0;
  Require(reader.SampleOffset() <= size);
  Require(reader.WholeCount() * reader.Layout().BytesPerSample() <= size - reader.SampleOffset());
  Require(reader.LastIndex() <= reader.WholeCount());
  FileSample sample;
  for (std::int32_t i = 0; i <= reader.LastIndex(); ++i)
    Require(reader.ReadSample(i, sample) || reader.WholeCount() == 0);
  Require(!reader.ReadSample(reader.LastIndex() + 1, sample));
  return 0;
}
