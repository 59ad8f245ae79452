// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

#include "platform/file_system.h"
#include "platform/wave_in_device.h"

namespace tarvolt {

/// Reads the samples of a RIFF wave file of plain 8 or 16-bit samples, mono or stereo. Chunks that it does not know are
/// passed over; a length that is wrong, as after a recorder that was cut off, counts to the end of the file.
class WavFileReader {
 public:
  /// Null, with the reason in `why`, for a file that cannot be read or is of another kind.
  static std::unique_ptr<WavFileReader> Open(FileSystem& files, const std::filesystem::path& path, std::string& why);

  const WaveFormat& Format() const { return format_; }

  /// Whole frames in the file.
  std::int64_t Frames() const { return frames_; }

  /// Reads the next frames, at most `most`, in their file's form; fewer only at the end.
  std::int64_t ReadFrames(void* destination, std::int64_t most);

  /// Goes back to the first frame.
  void Rewind();

 private:
  bool ReadChunks(std::string& why);
  bool ReadFormat(std::uint64_t position, std::uint32_t size, std::string& why);
  void TakeData(std::uint64_t position, std::uint32_t size);
  std::size_t ReadAt(std::uint64_t position, void* bytes, std::size_t count);

  std::unique_ptr<File> file_;
  std::uint64_t fileSize_ = 0;
  WaveFormat format_;
  bool hasFormat_ = false;
  bool hasData_ = false;
  std::uint64_t dataBegin_ = 0;
  std::uint64_t dataBytes_ = 0;
  std::int64_t frames_ = 0;
  std::int64_t next_ = 0;
};

}  // namespace tarvolt
