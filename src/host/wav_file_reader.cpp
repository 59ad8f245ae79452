// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/wav_file_reader.h"

#include <algorithm>
#include <cstring>

namespace tarvolt {
namespace {

constexpr std::uint32_t kHeaderBytes = 12;
constexpr std::uint32_t kChunkHeaderBytes = 8;
constexpr std::uint32_t kFormatBytes = 16;
constexpr int kMostChunks = 1000;
constexpr unsigned kPlainSamples = 1;
constexpr unsigned kExtended = 0xFFFE;  // the samples of such a file are reported by their width all the same
constexpr std::uint32_t kHighestRate = 1'000'000;

unsigned Word(const unsigned char* bytes) {
  return bytes[0] | bytes[1] << 8;
}

std::uint32_t Long(const unsigned char* bytes) {
  return Word(bytes) | static_cast<std::uint32_t>(Word(bytes + 2)) << 16;
}

bool Is(const unsigned char* bytes, const char* name) {
  return std::memcmp(bytes, name, 4) == 0;
}

}  // namespace

std::unique_ptr<WavFileReader> WavFileReader::Open(FileSystem& files, const std::filesystem::path& path,
                                                   std::string& why) {
  std::error_code error;
  std::unique_ptr<WavFileReader> reader(new WavFileReader);
  reader->file_ = files.Open(path, OpenMode::Read, error);
  if (reader->file_) reader->fileSize_ = reader->file_->Size(error);
  if (error) {
    why = error.message();
    return nullptr;
  }
  if (!reader->ReadChunks(why)) return nullptr;
  reader->frames_ = static_cast<std::int64_t>(reader->dataBytes_ / reader->format_.FrameBytes());
  return reader;
}

bool WavFileReader::ReadChunks(std::string& why) {
  unsigned char header[kHeaderBytes];
  if (ReadAt(0, header, sizeof header) < sizeof header || !Is(header, "RIFF") || !Is(header + 8, "WAVE")) {
    why = "it is no wave file";
    return false;
  }
  std::uint64_t position = kHeaderBytes;
  for (int chunks = 0; chunks < kMostChunks && !(hasFormat_ && hasData_); ++chunks) {
    unsigned char chunk[kChunkHeaderBytes];
    if (ReadAt(position, chunk, sizeof chunk) < sizeof chunk) break;
    const std::uint32_t size = Long(chunk + 4);
    position += kChunkHeaderBytes;
    if (Is(chunk, "fmt ") && !ReadFormat(position, size, why)) return false;
    if (Is(chunk, "data")) TakeData(position, size);
    position += std::uint64_t{size} + size % 2;
  }
  if (hasFormat_ && hasData_) return true;
  why = "it is not a whole wave file";
  return false;
}

bool WavFileReader::ReadFormat(std::uint64_t position, std::uint32_t size, std::string& why) {
  unsigned char bytes[kFormatBytes];
  if (size < kFormatBytes || ReadAt(position, bytes, sizeof bytes) < sizeof bytes) {
    why = "it is not a whole wave file";
    return false;
  }
  const unsigned kind = Word(bytes);
  const unsigned channels = Word(bytes + 2);
  const std::uint32_t rate = Long(bytes + 4);
  const unsigned bits = Word(bytes + 14);
  const bool plain = kind == kPlainSamples || kind == kExtended;
  if (!plain || channels < 1 || channels > 2 || (bits != 8 && bits != 16) || rate < 1 || rate > kHighestRate) {
    why = "it does not hold plain samples of 8 or 16 bits, mono or stereo";
    return false;
  }
  format_ = {static_cast<int>(rate), static_cast<int>(bits), channels == 2};
  hasFormat_ = true;
  return true;
}

void WavFileReader::TakeData(std::uint64_t position, std::uint32_t size) {
  const std::uint64_t left = fileSize_ > position ? fileSize_ - position : 0;
  dataBegin_ = position;
  dataBytes_ = size == 0 ? left : std::min<std::uint64_t>(size, left);
  hasData_ = true;
}

std::size_t WavFileReader::ReadAt(std::uint64_t position, void* bytes, std::size_t count) {
  std::error_code error;
  file_->Seek(position, error);
  return error ? 0 : file_->Read(bytes, count, error);
}

std::int64_t WavFileReader::ReadFrames(void* destination, std::int64_t most) {
  const auto frameBytes = static_cast<std::size_t>(format_.FrameBytes());
  const std::int64_t wanted = std::clamp<std::int64_t>(frames_ - next_, 0, most);
  const std::size_t bytes =
      ReadAt(dataBegin_ + static_cast<std::uint64_t>(next_) * frameBytes, destination, wanted * frameBytes);
  const auto read = static_cast<std::int64_t>(bytes / frameBytes);
  next_ += read;
  return read;
}

void WavFileReader::Rewind() {
  next_ = 0;
}

}  // namespace tarvolt
