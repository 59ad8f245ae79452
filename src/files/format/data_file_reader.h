// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>

#include "files/format/forced_values.h"
#include "files/format/notes_block.h"
#include "files/format/sample_layout.h"
#include "model/data_file_header.h"
#include "platform/file_system.h"

namespace tarvolt {

/// Longest notes block that is read, in bytes.
inline constexpr std::int32_t kNotesLimit = 16 << 20;

/// What opening a data file came to.
enum class OpenResult {
  Ok,
  Missing,    ///< there is no such file, or it cannot be opened
  TooShort,   ///< shorter than a header, but it begins as one
  Corrupted,  ///< no beginning of a header, one without 1 to 9 channels, or notes beyond all bounds
  Unreadable  ///< the disk refused to give the header or the notes
};

/// Reads a data file front to back or at any sample, in large pieces. Nothing in the file is trusted: a length in it is
/// held to the length of the file.
class DataFileReader {
 public:
  /// Opens nothing yet.
  explicit DataFileReader(FileSystem& files) : files_(files) {}

  /// Opens the file and reads header and notes. Only after Ok do the other calls mean anything.
  OpenResult Open(const std::filesystem::path& name);

  /// Reads the samples of an opened file by these values instead of its own; more channels than kMaxFileChannels are as
  /// many. Header() then describes the forced times and channels.
  void Force(const ForcedValues& forced);

  /// What the platform said about the last failure.
  const std::error_code& Error() const { return error_; }

  /// The header as the file has it.
  const DataFileHeader& Header() const { return header_; }

  /// The notes block, as far as it stands in the file.
  const std::string& RawNotes() const { return rawNotes_; }

  /// The same, taken apart.
  const NotesBlock& Notes() const { return notes_; }

  /// How the samples lie, from header and notes.
  const SampleLayout& Layout() const { return layout_; }

  /// Bytes of the file when it was opened.
  std::uint64_t FileSize() const { return fileSize_; }

  /// Where the samples begin.
  std::uint64_t SampleOffset() const { return sampleOffset_; }

  /// Samples that stand whole in the file.
  std::int32_t WholeCount() const { return wholeCount_; }

  /// True when bytes behind the last whole sample make no other.
  bool EndsWithinSample() const;

  /// Index of the last sample as all readers count it: one more than the file holds in a layout of doubles without
  /// stamps. Below 2 the file has no usable data.
  std::int32_t LastIndex() const { return lastIndex_; }

  /// Reads sample 0..LastIndex(). One behind the end of the file has the values of the sample before it. False when
  /// the disk refused, or for an index outside.
  bool ReadSample(std::int32_t index, FileSample& sample);

 private:
  OpenResult ReadFrontInMemory();
  OpenResult ReadFront();
  void CountSamples();
  bool FillBuffer(std::int32_t index);
  void ReadAll(char* to, std::size_t size, std::size_t& read);

  FileSystem& files_;
  std::unique_ptr<File> file_;
  std::error_code error_;
  DataFileHeader header_;
  std::string rawNotes_;
  NotesBlock notes_;
  SampleLayout layout_;
  std::uint64_t fileSize_ = 0;
  std::uint64_t sampleOffset_ = 0;
  std::int32_t wholeCount_ = 0;
  std::int32_t lastIndex_ = -1;
  double step_ = 0;  ///< days between two samples of a file without stamps
  std::string buffer_;
  std::int32_t bufferFirst_ = 0;
  std::int32_t bufferCount_ = 0;
};

}  // namespace tarvolt
